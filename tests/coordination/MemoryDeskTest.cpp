#include "AppCoordinator.h"
#include "support/Awaited.h"
#include "support/BorrowedProvider.h"
#include "support/FakeKeychain.h"
#include "support/ScriptedHTTPClient.h"
#include "support/ScriptedProvider.h"

#include <QDirIterator>
#include <QTemporaryDir>

namespace pobblewig {

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };
const auto secret = QStringLiteral("zanzibar");

MemoryToolCall findNotes(const QString& query)
{
    return { .name = QStringLiteral("memory_find_notes"),
        .args = { { QStringLiteral("query"), JSONValue(query) } } };
}

/// One of each kind of text that the memory holds.
void fill(MemoryTiers& memory)
{
    memory.notes.addNote({ .text = secret + QStringLiteral(" is the word") }, now);
    memory.reference.upsertItem({ .id = QUuid::createUuid(),
        .path = QStringLiteral("people"),
        .title = secret,
        .createdAt = now,
        .updatedAt = now });
    memory.reference.proposeSection(secret, secret, secret);
    memory.observations.add(
        { .id = QUuid::createUuid(), .occurredAt = now, .recordedAt = now, .summary = secret });
    memory.summaries.add({ .id = QUuid::createUuid(),
        .startDate = now,
        .endDate = now,
        .summary = secret,
        .createdAt = now });
    memory.sessions.finalizeActiveSession({ .summary = secret }, now);
    memory.sessions.ensureActiveSession(now, Calendar());
}

void write(const QString& path)
{
    QFile file(path);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly));
    file.write(secret.toUtf8());
}

/// Their names, sorted.
QStringList filesThatHold(const QString& text, const QString& directory)
{
    QStringList found;
    QDirIterator files(
        directory, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly) && file.readAll().contains(text.toUtf8()))
            found.append(files.fileName());
    }
    found.sort();
    return found;
}

} // namespace

class MemoryDeskTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_model = std::make_unique<ScriptedProvider>();
        restart();
    }

    void aNoteIsFoundAgainAfterARestart()
    {
        m->memory().notes.addNote({ .text = QStringLiteral("Likes oolong tea") }, now);
        restart();
        const auto result = awaited(m->toolExecutor().execute(findNotes(QStringLiteral("OOLONG"))));
        QVERIFY(result.ok);
        QVERIFY2(result.text.endsWith(u"(misc) Likes oolong tea"), qPrintable(result.text));
        QCOMPARE(m->state().memory.notes.size(), 1u);
    }

    void theExportHoldsWhatThePromptHolds()
    {
        fill(m->memory());
        ask(QStringLiteral("hello"));
        const auto prompt = m_model->requests().front().messages.front().content;
        const auto notes = m->memory().notes.residentMemory(MemoryStore::hardCapTokens, now);
        const auto exported = m->memoryDesk().exportMemoryText();
        QVERIFY(notes.contains(secret) && prompt.contains(notes) && exported.contains(notes));
        QVERIFY(prompt.contains(u"- people — People (1 items)"));
        QVERIFY(exported.contains(u"- people — People (1 items, updated 2026-03-01T08:15:00Z)"));
        QVERIFY(exported.endsWith(
            QStringLiteral("---\n\nObservations\n- 2026-03-01T08:15:00Z: ") + secret));
    }

    void aMemoryThatIsOffStaysOutOfThePrompt()
    {
        fill(m->memory());
        m->updateSettings([](auto& settings) { settings.memoryEnabled = false; });
        ask(QStringLiteral("hello"));
        const auto prompt = m_model->requests().front().messages.front().content;
        QVERIFY(prompt.contains(u"Remembered user context: none yet."));
        QVERIFY(prompt.contains(u"turned your memory off"));
        QVERIFY(!prompt.contains(secret + QStringLiteral(" is the word")));
    }

    void nothingDeletedIsLeftInAnyFile()
    {
        fill(m->memory());
        ask(secret);
        const QDir directory(m_scratch->path());
        for (const auto* name : { "chat-2026-02-28-5F0C7A2E.json", "intent.json",
                 ".chat-2026-02-28-5F0C7A2E.json.partial", ".reference.json.partial",
                 "memory.v1-backup-2026-02-01T08-00-00Z.json",
                 "observations.json.corrupt-2026-02-01T08-00-00Z", ".sync-pending/memory.json",
                 ".sync-backup-summaries-2026-02-01T08-00-00Z.json" })
            write(directory.filePath(QLatin1String(name)));
        const QStringList notMemory { QStringLiteral("memes.json"),
            QStringLiteral("settings.json.corrupt-2026-02-01T08-00-00Z") };
        write(directory.filePath(QStringLiteral("memes/") + notMemory[0]));
        write(directory.filePath(notMemory[1]));
        QCOMPARE(filesThatHold(secret, directory.path()).size(), 16);

        m->memoryDesk().deleteAllMemory();
        QCOMPARE(filesThatHold(secret, directory.path()), notMemory);
        QCOMPARE(m->state().memory.tocEntries.size(), 25u);
        QCOMPARE(m->state().memory.activeDailySession->turnCount, 0);
        QVERIFY(m->chat().messages().empty());
        restart();
        QVERIFY(m->state().memory.notes.empty());
    }

    void noProposalQuotesWhatIsDeleted()
    {
        fill(m->memory());
        const auto note = json::keyText(m->memory().notes.notes().front().id);
        const auto forgetNote = [&](const char* proposalId) {
            return RuleProposal { .proposalId = QString::fromLatin1(proposalId),
                .kind = RuleProposal::Kind::forgetMemory,
                .forget = ProposedForget { .target = ProposedForget::Target::note, .id = note } };
        };
        awaited(m->proposalDesk().apply({ forgetNote("answered"), forgetNote("waiting"),
            RuleProposal { .proposalId = QStringLiteral("another") } }));
        m->proposalDesk().rejectProposal(QStringLiteral("answered"));
        QCOMPARE(m->state().pendingProposals.size(), 2u);
        const QDir directory(m_scratch->path());
        QVERIFY(filesThatHold(secret, directory.path()).contains(QStringLiteral("proposals.json")));
        write(directory.filePath(QStringLiteral("proposals.json.corrupt-2026-02-01T08-00-00Z")));

        m->memoryDesk().deleteAllMemory();
        QCOMPARE(filesThatHold(secret, directory.path()), QStringList());
        restart();
        QCOMPARE(m->state().pendingProposals.size(), 1u);
        QCOMPARE(m->state().pendingProposals.front().proposalId, QStringLiteral("another"));
    }

    void aTurnDeletedWhileItRunsLeavesNothing()
    {
        m_model->enqueue({ .events = { LLMToken { secret } }, .isHeld = true });
        m->chat().submit(secret);
        QTRY_COMPARE(m_model->requests().size(), 1u);
        m->memoryDesk().deleteAllMemory();
        m_model->release();
        QTRY_COMPARE(m_model->droppedStreams(), 1);
        QCOMPARE(filesThatHold(secret, m_scratch->path()), QStringList());
    }

    void aTurnCountsOnItsSession()
    {
        ask(QStringLiteral("hello"));
        QCOMPARE(m->state().memory.activeDailySession->turnCount, 1);
        m->startNewSession();
        const auto& state = m->state().memory;
        QCOMPARE(state.activeDailySession->turnCount, 0);
        QCOMPARE(*state.activeDailySession->previousSessionID, state.previousDailySession->id);
        QCOMPARE(filesThatHold(QStringLiteral("hello"), m_scratch->path()).size(), 1);
    }

    void aConversationFromBeforeSessionsIsAdopted()
    {
        ask(QStringLiteral("from long ago"));
        QVERIFY(QFile::remove(m_scratch->filePath(QStringLiteral("sessions.json"))));
        restart();
        QVERIFY(m->state().memory.previousDailySession->isImported);
        QCOMPARE(m->chat().messages().size(), 2u);
    }

    void thePollForgetsWhatExpired()
    {
        const auto later = now + std::chrono::hours(1);
        m->memory().notes.addNote({ .text = secret, .isTemporary = true, .expiresAt = later }, now);
        awaited(m->pollOnce(now));
        QCOMPARE(m->state().memory.notes.size(), 1u);
        awaited(m->pollOnce(later));
        QVERIFY(m->state().memory.notes.empty());
        QCOMPARE(filesThatHold(secret, m_scratch->path()), QStringList());
    }

private:
    /// The program, started anew over the same directory.
    void restart()
    {
        m.reset();
        m = std::make_unique<AppCoordinator>(AppCoordinator::Parts {
            .directory = DataDirectory(QDir(m_scratch->path())),
            .http = std::make_unique<ScriptedHTTPClient>(),
            .keychain = std::make_unique<FakeKeychain>(),
            .environment = [] { return Environment(); },
            .calendar = [] { return Calendar(); },
            .clock = [] { return now; },
            .mainProviderOverride = [this]() { return BorrowedProvider::lent(m_model.get()); },
        });
        m->start();
        QTRY_VERIFY(m->state().memory.activeDailySession);
    }

    void ask(const QString& text)
    {
        m_model->enqueue(QStringLiteral("a reply"));
        const auto count = m->chat().messages().size();
        m->chat().submit(text);
        QTRY_COMPARE(m->chat().messages().size(), count + 2);
        QTRY_VERIFY(m->state().memory.activeDailySession->turnCount > 0);
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
    std::unique_ptr<ScriptedProvider> m_model;
    std::unique_ptr<AppCoordinator> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryDeskTest)
#include "MemoryDeskTest.moc"
