#include "coordination/World.h"

namespace pobblewig {

namespace {

constexpr auto now = World::morning;
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

} // namespace

class MemoryDeskTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_world = std::make_unique<World>(); }

    void aNoteIsFoundAgainAfterARestart()
    {
        (*m_world)->memory().notes.addNote({ .text = QStringLiteral("Likes oolong tea") }, now);
        m_world->restart();
        const auto result =
            awaited((*m_world)->toolExecutor().execute(findNotes(QStringLiteral("OOLONG"))));
        QVERIFY(result.ok);
        QVERIFY2(result.text.endsWith(u"(misc) Likes oolong tea"), qPrintable(result.text));
        QCOMPARE(m_world->state<MemorySnapshot>().notes.size(), 1u);
    }

    void theExportHoldsWhatThePromptHolds()
    {
        fill((*m_world)->memory());
        m_world->ask(QStringLiteral("hello"));
        const auto prompt = m_world->prompt();
        const auto notes =
            (*m_world)->memory().notes.residentMemory(MemoryStore::hardCapTokens, now);
        const auto exported = (*m_world)->memoryDesk().exportMemoryText();
        QVERIFY(notes.contains(secret) && prompt.contains(notes) && exported.contains(notes));
        QVERIFY(prompt.contains(u"- people — People (1 items)"));
        QVERIFY(exported.contains(u"- people — People (1 items, updated 2026-03-01T08:15:00Z)"));
        QVERIFY(exported.endsWith(
            QStringLiteral("---\n\nObservations\n- 2026-03-01T08:15:00Z: ") + secret));
    }

    void everyTierIsExported()
    {
        fill((*m_world)->memory());
        const auto& desk = (*m_world)->memoryDesk();
        // The proposed section has no entry to read.
        QCOMPARE(desk.exportMarkdown().count(secret.toUtf8()), 4);
        const auto everything = QJsonDocument::fromJson(desk.exportJSON()).object();
        for (const auto* key : { "notes", "referenceSections", "referenceItems", "sessions",
                 "summaries", "observations" }) {
            const auto tier = QJsonDocument(everything[QLatin1String(key)].toArray()).toJson();
            QVERIFY2(tier.contains(secret.toUtf8()), key);
        }
    }

    void aDeletedNoteReturnsToItsPlace()
    {
        auto& notes = (*m_world)->memory().notes;
        for (int minute = 0; minute < 3; ++minute)
            notes.addNote({ .text = QString::number(minute) }, now + std::chrono::minutes(minute));
        const auto before = notes.notes();
        for (const auto& note : before) {
            (*m_world)->memoryDesk().deleteNote(note.id);
            (*m_world)->memoryDesk().putBack(note);
            QCOMPARE(notes.notes(), before);
        }
    }

    void aMemoryThatIsOffStaysOutOfThePrompt()
    {
        fill((*m_world)->memory());
        (*m_world)->updateSettings([](auto& settings) { settings.memoryEnabled = false; });
        m_world->ask(QStringLiteral("hello"));
        const auto prompt = m_world->prompt();
        QVERIFY(prompt.contains(u"Remembered user context: none yet."));
        QVERIFY(prompt.contains(u"turned your memory off"));
        QVERIFY(!prompt.contains(secret + QStringLiteral(" is the word")));
    }

    void nothingDeletedIsLeftInAnyFile()
    {
        fill((*m_world)->memory());
        m_world->ask(secret);
        const auto directory = m_world->scratch.path();
        for (const auto* name : { "chat-2026-02-28-5F0C7A2E.json", "intent.json",
                 ".chat-2026-02-28-5F0C7A2E.json.partial", ".reference.json.partial",
                 "memory.v1-backup-2026-02-01T08-00-00Z.json", "draft.json",
                 "observations.json.corrupt-2026-02-01T08-00-00Z", ".sync-pending/memory.json",
                 ".sync-backup-summaries-2026-02-01T08-00-00Z.json" })
            write(directory.filePath(QLatin1String(name)));
        const QStringList notMemory { QStringLiteral("memes.json"),
            QStringLiteral("settings.json.corrupt-2026-02-01T08-00-00Z") };
        write(directory.filePath(QStringLiteral("memes/") + notMemory[0]));
        write(directory.filePath(notMemory[1]));
        QTRY_COMPARE(m_world->filesThatHold(secret).size(), 18);

        (*m_world)->memoryDesk().deleteAllMemory();
        QCOMPARE(m_world->filesThatHold(secret), notMemory);
        QCOMPARE(m_world->state<MemorySnapshot>().tocEntries.size(), 25u);
        QCOMPARE(m_world->state<MemorySnapshot>().activeDailySession->turnCount, 0);
        QVERIFY((*m_world)->chat().messages().empty());
        m_world->restart();
        QVERIFY(m_world->state<MemorySnapshot>().notes.empty());
    }

    void noProposalQuotesWhatIsDeleted()
    {
        fill((*m_world)->memory());
        const auto note = json::keyText((*m_world)->memory().notes.notes().front().id);
        const auto forgetNote = [&](const char* proposalId) {
            return RuleProposal { .proposalId = QString::fromLatin1(proposalId),
                .kind = RuleProposal::Kind::forgetMemory,
                .forget = ProposedForget { .target = ProposedForget::Target::note, .id = note } };
        };
        awaited((*m_world)->proposalDesk().apply({ forgetNote("answered"), forgetNote("waiting"),
            RuleProposal { .proposalId = QStringLiteral("another") } }));
        (*m_world)->proposalDesk().rejectProposal(QStringLiteral("answered"));
        QCOMPARE(m_world->state<ProposalState>().pendingProposals.size(), 2u);
        const auto directory = m_world->scratch.path();
        QVERIFY(m_world->filesThatHold(secret).contains(QStringLiteral("proposals.json")));
        write(directory.filePath(QStringLiteral("proposals.json.corrupt-2026-02-01T08-00-00Z")));

        (*m_world)->memoryDesk().deleteAllMemory();
        QCOMPARE(m_world->filesThatHold(secret), QStringList());
        m_world->restart();
        QCOMPARE(m_world->state<ProposalState>().pendingProposals.size(), 1u);
        QCOMPARE(m_world->state<ProposalState>().pendingProposals.front().proposalId,
            QStringLiteral("another"));
    }

    void aTurnDeletedWhileItRunsLeavesNothing()
    {
        m_world->model.enqueue({ .events = { LLMToken { secret } }, .isHeld = true });
        (*m_world)->chat().submit(secret);
        QTRY_COMPARE(m_world->model.requests().size(), 1u);
        (*m_world)->memoryDesk().deleteAllMemory();
        m_world->model.release();
        QTRY_COMPARE(m_world->model.droppedStreams(), 1);
        QCOMPARE(m_world->filesThatHold(secret), QStringList());
    }

    void aTurnCountsOnItsSession()
    {
        m_world->ask(QStringLiteral("hello"));
        QCOMPARE(m_world->state<MemorySnapshot>().activeDailySession->turnCount, 1);
        (*m_world)->startNewSession();
        const auto& state = m_world->state<MemorySnapshot>();
        QCOMPARE(state.activeDailySession->turnCount, 0);
        QCOMPARE(*state.activeDailySession->previousSessionID, state.previousDailySession->id);
        QCOMPARE(m_world->filesThatHold(QStringLiteral("hello")).size(), 1);
    }

    void aConversationFromBeforeSessionsIsAdopted()
    {
        m_world->ask(QStringLiteral("from long ago"));
        QVERIFY(QFile::remove(m_world->scratch.path(QStringLiteral("sessions.json"))));
        m_world->restart();
        QVERIFY(m_world->state<MemorySnapshot>().previousDailySession->isImported);
        QCOMPARE((*m_world)->chat().messages().size(), 2u);
    }

    void thePollForgetsWhatExpired()
    {
        const auto later = now + std::chrono::hours(1);
        (*m_world)->memory().notes.addNote(
            { .text = secret, .isTemporary = true, .expiresAt = later }, now);
        m_world->poll();
        QCOMPARE(m_world->state<MemorySnapshot>().notes.size(), 1u);
        m_world->time = later;
        m_world->poll();
        QVERIFY(m_world->state<MemorySnapshot>().notes.empty());
        QCOMPARE(m_world->filesThatHold(secret), QStringList());
    }

private:
    std::unique_ptr<World> m_world;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemoryDeskTest)
#include "MemoryDeskTest.moc"
