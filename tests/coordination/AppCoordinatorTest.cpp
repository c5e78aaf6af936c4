#include "conversation/SituationBuilder.h"
#include "coordination/World.h"
#include "memory/librarian/RolloverLogic.h"
#include "support/Joined.h"
#include "support/TableRow.h"

#include "foundation/ISO8601.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using std::chrono::days;

const auto nothing = u"{\"notes\": []}"_s;

void add(AppCoordinator& program, const QString& path, const QString& title, const QString& key,
    TimePoint date)
{
    program.memory().reference.upsertItem({ .id = QUuid::createUuid(),
        .path = path,
        .title = title,
        .details = { { key, JSONValue(ISO8601::format(date)) } } });
}

QString front(const World& world)
{
    const auto& session = world.state<ActivityState>().currentSession;
    return session ? session->applicationName : QString();
}

} // namespace

/// What the features do together, on a clock that moves whenever it is looked at.
class AppCoordinatorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<World>();
        m->step = 3s;
    }

    void thePollGoesOnByItself()
    {
        m->pollInterval = 1ms;
        m->restart();
        m->desktop.show(u"Writer"_s, u"org.writer"_s);
        QTRY_COMPARE(front(*m), u"Writer");
        m->desktop.show(u"Browser"_s, u"org.browser"_s);
        QTRY_COMPARE(front(*m), u"Browser");
    }

    void aConfirmedReminderIsKnownAtOnce()
    {
        (*m)->updateSettings([](auto& settings) { settings.remindersSyncEnabled = true; });
        m->poll();
        awaited((*m)->proposalDesk().apply({ RuleProposal { .proposalId = u"r"_s,
            .kind = RuleProposal::Kind::reminder,
            .name = u"Tea"_s,
            .reminder = ProposedReminder { .title = u"Tea"_s, .due = m->time + 1h } } }));
        const auto& reference = (*m)->memory().reference;
        QCOMPARE(reference.countItems(u"calendar.reminders"_s), 0);
        awaited((*m)->proposalDesk().confirmProposal(u"r"_s));
        QTRY_COMPARE(m->state<CalendarState>().sync.reminderCount, 1);
        QCOMPARE(reference.countItems(u"calendar.reminders"_s), 1);
    }

    void whatIsPausedOrExcludedIsNotSeen()
    {
        m->desktop.show(u"Writer"_s, u"org.writer"_s);
        m->poll();
        QCOMPARE(front(*m), u"Writer");
        (*m)->modes().pauseObservation(m->time + 1h);
        QVERIFY(m->state<SettingsState>().isPaused);
        m->desktop.show(u"Secret 1"_s, u"org.browser"_s);
        m->poll();
        QCOMPARE(front(*m), u"");
        m->time += 1h;
        m->desktop.show(u"Writer"_s, u"org.writer"_s);
        m->poll();
        QVERIFY(!m->state<SettingsState>().isPaused);
        QCOMPARE(front(*m), u"Writer");
        (*m)->updateSettings(
            [](auto& settings) { settings.excludedBundleIDs = { u"org.vault"_s }; });
        m->desktop.show(u"Secret 2"_s, u"org.vault"_s);
        m->poll();
        QCOMPARE(front(*m), u"");
        QCOMPARE(m->filesThatHold(u"Secret"_s), QStringList());
    }

    void aFileThatCannotBeReadForTheMomentLosesNothing()
    {
        m->ask(u"before"_s);
        record(u"before"_s);
        const QStringList names { u"chat.json"_s, u"observations.json"_s, u"sessions.json"_s,
            u"settings.json"_s };
        (*m)->updateSettings([](AppSettings& settings) { settings.mascot = u"axolotl"_s; });
        for (const auto& name : names) {
            QVERIFY(QFile::rename(m->scratch.path(name), m->scratch.path(name + u".away"_s)));
            QVERIFY(QFile::link(u"/proc/self/mem"_s, m->scratch.path(name)));
        }
        m->restart();
        QCOMPARE(m->state<StorageState>().unreadable.size(), 4u);
        QVERIFY(m->state<SettingsState>().isPaused);
        m->ask(u"meanwhile"_s);
        record(u"meanwhile"_s);
        for (const auto& name : names) {
            QVERIFY(QFile::remove(m->scratch.path(name)));
            QVERIFY(QFile::rename(m->scratch.path(name + u".away"_s), m->scratch.path(name)));
        }
        m->poll();
        for (int launch = 0; launch < 2; ++launch) {
            QVERIFY(m->state<StorageState>() == StorageState());
            QCOMPARE(joined((*m)->chat().messages(), &ChatMessage::text),
                u"before|a reply|meanwhile|a reply");
            QCOMPARE((*m)->memory().observations.count(), 2);
            QCOMPARE((*m)->memory().sessions.sessions().size(), 1u);
            QCOMPARE((*m)->memory().sessions.activeSession()->observationIDs.size(), 2u);
            QCOMPARE(m->state<SettingsState>().settings.mascot, u"axolotl");
            QVERIFY(!m->state<SettingsState>().isPaused);
            m->restart();
        }
    }

    void whatCannotBeReadIsDeletedWithTheRest()
    {
        record(u"secret"_s);
        const auto path = m->scratch.path(u"observations.json"_s);
        QVERIFY(QFile::remove(path) && QFile::link(u"/proc/self/mem"_s, path));
        m->restart();
        (*m)->memoryDesk().deleteAllMemory();
        QVERIFY(m->state<StorageState>().unreadable.empty());
        QCOMPARE(m->scratch.read(u"observations.json"_s), "[]\n");
    }

    void aCorruptFileIsToldOf()
    {
        m->scratch.write(u"rules.json"_s, "{");
        m->restart();
        QCOMPARE(m->state<StorageState>().setAside,
            QStringList(u"rules.json.corrupt-2026-03-01T08-15-00Z"_s));
        m->restart();
        QVERIFY(m->state<StorageState>() == StorageState());
    }

    void everyFeatureSaysItsLinesOfTheMomentInOrder()
    {
        const auto later = m->time + 24h;
        for (const auto& title : { u"a"_s, u"b"_s, u"c"_s, u"d"_s })
            add(**m, u"academics.deadlines"_s, title, u"dueAt"_s, later);
        add(**m, u"calendar.events"_s, u"Class"_s, u"startAt"_s, m->time + 2h);
        add(**m, u"calendar.reminders"_s, QString(200, u'x'), u"dueAt"_s, later);
        m->desktop.show(u"Writer"_s, u"org.writer"_s);
        m->poll();
        (*m)->updateSettings([](AppSettings& settings) {
            settings.mascot = u"axolotl"_s;
            settings.mascotColorScheme = u"pink"_s;
            settings.roles = { AssistantRole::tutor, AssistantRole::accountabilityPartner };
            settings.appDataSources = { { .name = u"Notes"_s }, { .name = u"Code"_s } };
            settings.memoryEnabled = false;
        });
        (*m)->modes().pauseObservation(std::nullopt);
        m->ask(u"hello"_s);
        const QStringList expected {
            u"The user's local time: Sunday, 1 March 2026, "_s,
            u"Your current desktop form: axolotl (pink color scheme) — "_s,
            u"Your settings (yours to change with update_settings when the user asks; the user "
            u"confirms each change): mode openEnded; roles [accountabilityPartner, tutor] — "_s,
            u"Current app: Writer (org.writer), active for 0 min"_s,
            u"Observation is currently paused by the user."_s,
            u"The user has turned your memory off (Settings → Memory & Privacy): "_s,
            u"Upcoming deadlines (Canvas): a | b | c"_s,
            u"Today's events: Class"_s,
            u"Upcoming events (Calendar): Class"_s,
            u"Due reminders: "_s + QString(160, u'x'),
            u"App data sources (read-only, via apps_list_files/apps_read_file): Notes | Code"_s,
        };
        const auto lines = m->prompt().split(u'\n');
        auto at = lines.begin();
        for (const auto& beginning : expected) {
            at = std::find_if(
                at, lines.end(), [&](const auto& line) { return line.startsWith(beginning); });
            QVERIFY2(at != lines.end(), qPrintable(beginning));
        }
        QVERIFY(!m->prompt().contains(u"table of contents (you always see this"));
    }

    void theClockIsTheUsersOwn_data()
    {
        columns<QByteArray, QString>("zone", "clock");
        row("east", QByteArray("Europe/Berlin"), "09:15 (Europe/Berlin, UTC+01:00)");
        row("west", QByteArray("America/St_Johns"), "04:45 (America/St_Johns, UTC-03:30)");
    }
    void theClockIsTheUsersOwn()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QString, clock);
        const auto snapshot = SituationBuilder::snapshot({ .settings = {},
            .memory = (*m)->memory(),
            .now = World::morning,
            .calendar = { QTimeZone(zone) } });
        QVERIFY2(snapshot.summary.endsWith(clock), qPrintable(snapshot.summary));
    }

    void everyFeaturesToolsCanBeCalled()
    {
        for (const auto& name : { u"memory_find_notes"_s, u"memory_get_active_context"_s,
                 u"rules_list"_s, u"apps_list_sources"_s }) {
            const auto result = awaited((*m)->toolExecutor().execute({ name, {} }));
            QVERIFY2(result.ok, qPrintable(result.text));
        }
        QCOMPARE((*m)->diagnostics().totalToolCalls, 4);
    }

    void aTermGoesFromDayToDay()
    {
        m->librarian.enqueue(nothing);
        m->librarian.enqueue(
            u"{\"dailySummary\": \"Wrote.\", \"unfinishedIntent\": [{\"text\": \"the essay\"}]}"_s);
        (*m)->memory().summaries.add({ .id = QUuid::createUuid(),
            .startDate = m->time + days(4000),
            .endDate = m->time + days(4000),
            .summary = u"A wrong clock."_s,
            .unresolvedIntent = { u"the moon"_s } });
        m->ask(u"I have to hand in the essay"_s);
        QVERIFY(!m->prompt().contains(u"the essay"));
        m->time += days(1);
        m->poll();
        QCOMPARE(m->state<MemorySnapshot>().dailySummaries.size(), 2u);
        QVERIFY((*m)->chat().messages().empty());
        QVERIFY(!m->librarian.requests().back().messages[0].content.contains(u"the moon"));
        const auto before = m->state<MemorySnapshot>().previousDailySession;
        QVERIFY(before->endedAt > before->startedAt);
        m->restart();
        m->ask(u"Good morning"_s);
        QVERIFY(m->prompt().contains(u"the essay") && !m->prompt().contains(u"the moon"));
        QCOMPARE(m->state<MemorySnapshot>().activeDailySession->turnCount, 1);
        (*m)->updateSettings([](auto& settings) { settings.memoryEnabled = false; });
        m->ask(u"And now?"_s);
        QVERIFY(!m->prompt().contains(u"the essay") && !m->prompt().contains(u"Wrote."));
    }

    void aDayThatACrashCutOffIsClosedAtTheStart()
    {
        m->ask(u"Good night"_s);
        const auto cutOff = m->state<MemorySnapshot>().activeDailySession->id;
        (*m)->memory().summaries.add({ .id = dailySummaryID(cutOff),
            .startDate = m->time,
            .endDate = m->time,
            .summary = u"Slept."_s });
        m->restart();
        const auto& previous = m->state<MemorySnapshot>().previousDailySession;
        QVERIFY(previous && previous->id == cutOff && previous->summary == u"Slept."_s);
        QVERIFY((*m)->chat().messages().empty());
    }

    void whatIsForgottenComesBackByNobody()
    {
        m->librarian.enqueue(
            { { LLMToken { u"{\"notes\": [{\"text\": \"zanzibar\"}]}"_s } }, std::nullopt, true });
        m->ask(u"zanzibar"_s);
        (*m)->startNewSession();
        QTRY_COMPARE(m->librarian.requests().size(), 1u);
        QVERIFY(m->state<ConversationState>().isClosingSession);
        (*m)->memoryDesk().deleteAllMemory();
        m->librarian.release();
        QTRY_VERIFY(!m->state<ConversationState>().isClosingSession);
        QCOMPARE(m->filesThatHold(u"zanzibar"_s), QStringList());
    }

    void aDeletedNoteIsNotLearnedAgain()
    {
        const auto note = (*m)->memory().notes.addNote({ u"likes tea"_s }, m->time)->id;
        m->librarian.enqueueHeld(u"{\"notes\": [{\"text\": \"likes tea\"}]}"_s);
        m->ask(u"I like tea"_s);
        (*m)->startNewSession();
        QTRY_COMPARE(m->librarian.requests().size(), 1u);
        (*m)->memoryDesk().deleteNote(note);
        m->librarian.release();
        QTRY_VERIFY(!m->state<ConversationState>().isClosingSession);
        QVERIFY((*m)->memory().notes.notes().empty());
    }

    void theLibrarianReadsBeforeTheHistoryForgets()
    {
        m->librarian.enqueue(nothing);
        m->ask(u"I like tea"_s);
        for (int note = 0; note < 40; ++note)
            (*m)->chat().say(u"Done."_s);
        QTRY_COMPARE(m->librarian.requests().size(), 1u);
        QVERIFY(m->librarian.requests()[0].messages[0].content.contains(u"I like tea"));
    }

    void whatWasSaidWithTheMemoryOffReachesNoLibrarian()
    {
        const auto remember = [&](bool isEnabled) {
            (*m)->updateSettings([&](auto& settings) { settings.memoryEnabled = isEnabled; });
        };
        m->ask(u"Good morning"_s);
        remember(false);
        m->ask(u"I am ill"_s);
        m->restart();
        remember(true);
        m->ask(u"Good night"_s);
        m->librarian.enqueue(nothing);
        m->librarian.enqueue(u"{\"dailySummary\": \"A day.\"}"_s);
        (*m)->startNewSession();
        QTRY_COMPARE(m->state<MemorySnapshot>().dailySummaries.size(), 1u);
        QCOMPARE(m->librarian.requests().size(), 2u);
        for (const auto& request : m->librarian.requests()) {
            QVERIFY(request.messages[0].content.contains(u"Good night"));
            QVERIFY(!request.messages[0].content.contains(u"I am ill"));
        }
        QCOMPARE(m->filesThatHold(u"I am ill"_s).size(), 1);
    }

    void aLibrarianThatFailsIsToldOfOutsideTheConversation()
    {
        for (int turn = 0; turn < 14; ++turn) {
            m->librarian.enqueue(LLMError::http(500, u"oops"_s));
            m->ask(u"Question"_s);
        }
        QTRY_VERIFY((*m)->diagnostics().librarianLastError);
        QVERIFY((*m)->diagnostics().text().contains(u"oops"));
        QTRY_COMPARE(
            (*m)->state().of<LibrarianState>().lastError, (*m)->diagnostics().librarianLastError);
        QVERIFY(!(*m)->chat().lastError());
    }

    void aMessageThatNobodyAskedForIsToldOfOnce()
    {
        QStringList told;
        (*m)->onInterventionFired = [&](const QString& message) { told.append(message); };
        const auto id = QUuid::createUuid();
        (*m)->deliverProactiveMessage(u"The essay is due."_s, id);
        QCOMPARE(told, QStringList(u"The essay is due."_s));
        const auto& message = (*m)->chat().messages().back();
        QVERIFY(message.relatedInterventionID == id);
        QVERIFY(message.sessionID == m->state<MemorySnapshot>().activeDailySession->id);
        m->restart();
        QCOMPARE((*m)->chat().messages().size(), 1u);
    }

    void aChangeOfOneFeatureIsPublishedOnce()
    {
        QSignalSpy changes(&**m, &AppCoordinator::stateChanged);
        (*m)->modes().setMode(CoachMode::focus);
        QCOMPARE(changes.size(), 1);
        (*m)->refresh();
        QCOMPARE(changes.size(), 1);
        const auto& noLonger = (*m)->state().of<SettingsState>();
        QVERIFY(noLonger.settings.mode == CoachMode::focus);
    }

private:
    void record(const QString& text)
    {
        (*m)->memory().record({ .id = QUuid::createUuid(),
            .occurredAt = m->time,
            .recordedAt = m->time,
            .summary = text });
    }

    std::unique_ptr<World> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::AppCoordinatorTest)
#include "AppCoordinatorTest.moc"
