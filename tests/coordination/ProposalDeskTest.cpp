#include "conversation/ProposalDesk.h"

#include "conversation/proposals/SelfChangeNote.h"
#include "support/Awaited.h"
#include "support/ScriptedCalendar.h"
#include "support/ScriptedModels.h"
#include "support/ScriptedStores.h"

namespace pobblewig {

namespace {

using Kind = RuleProposal::Kind;
using namespace std::chrono_literals;

constexpr TimePoint now { 1772352900s };

QString text(const char* characters)
{
    return QString::fromUtf8(characters);
}

QString queued(const char* name)
{
    return QStringLiteral("Queued for your confirmation: %1 — confirm it in the banner above.")
        .arg(text(name));
}

RuleProposal reminder(const char* proposalId, const char* title = "Tea")
{
    return { .proposalId = text(proposalId),
        .kind = Kind::reminder,
        .name = text(title),
        .reminder = ProposedReminder { .title = text(title), .due = now + 45min } };
}

RuleProposal setting(const char* key, const JSONValue& value)
{
    return { .proposalId = text(key),
        .kind = Kind::settingsChange,
        .name = text(key) + QStringLiteral(" → ") + value.displayString(),
        .settingsChange = ProposedSettingsChange { text(key), value } };
}

RuleProposal forgetNote(const QString& id)
{
    return { .proposalId = text("f"),
        .kind = Kind::forgetMemory,
        .name = text("forget"),
        .forget = ProposedForget { .target = ProposedForget::Target::note, .id = id } };
}

/// The desk over stores in memory.
struct Office : ScriptedStores {
    Office()
    {
        moment.calendar = [] {
            return Calendar { QTimeZone("Europe/Helsinki"), QLocale(QStringLiteral("en_GB")) };
        };
    }

    ScriptedModels models;
    ChatService chat { all, moment, { .models = models, .situation = nullptr } };
    int changes = 0;
    ModeSwitch modes { settings, moment.clock, [] {} };
    ScriptedCalendar calendar;
    int deletions = 0;
    ProposalDesk desk { all, moment, { chat, modes, calendar, [this] { ++deletions; } },
        [this] { ++changes; } };
};

} // namespace

class ProposalDeskTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<Office>();
        m->memory.sessions.ensureActiveSession(now, Calendar());
    }

    void whatIsConfirmedIsDoneAndTold()
    {
        apply({ reminder("r") });
        QCOMPARE(told(), QStringList(queued("Tea")));
        QVERIFY(m->calendar.reminders.empty());
        awaited(m->desk.confirmProposal(text("r")));
        QCOMPARE(m->calendar.reminders.size(), 1u);
        const ReminderDTO expected {
            .id = m->calendar.reminders.front().id, .title = text("Tea"), .dueDate = now + 45min
        };
        QVERIFY(m->calendar.reminders.front() == expected);
        const auto outcome = text("Added reminder 'Tea' due Sunday, 1 March 2026, 11:00");
        QCOMPARE(told(), QStringList({ queued("Tea"), outcome }));
        QCOMPARE(m->changes, 2);

        const auto& message = m->chat.messages().back();
        const auto session = *m->memory.sessions.activeSession();
        QVERIFY(message.role == ChatMessage::Role::assistant);
        QVERIFY(message.sessionID == session.id);
        const auto observation = m->memory.observations.withIDs(session.observationIDs).front();
        QCOMPARE(observation.summary, outcome);
        QVERIFY(observation.source == ObservationSource::systemObserved);
        QVERIFY(
            observation.tags == (std::vector { text("reminder_write"), text("reminder_change") }));
        // Neither a second press nor the same request changes anything.
        awaited(m->desk.confirmProposal(text("r")));
        apply({ reminder("r") });
        QCOMPARE(told().size(), 2);
    }

    void aChangeCanBeMadeAgainOnceItIsUndone()
    {
        auto classic = setting("companionPersona", JSONValue(text("classic")));
        classic.proposalId = text("classic");
        const auto deadpan = setting("companionPersona", JSONValue(text("deadpanRoommate")));
        for (const auto& change : { deadpan, deadpan, classic, deadpan }) {
            apply({ change });
            for (const auto& proposal : m->proposals.pendingProposals())
                awaited(m->desk.confirmProposal(proposal.proposalId));
        }
        QVERIFY(m->settings.settings().companionPersona == CompanionPersona::deadpanRoommate);
        QCOMPARE(told().filter(text("Changed setting")).size(), 3);
    }

    void whatIsInEffectCanBeUndoneOnce()
    {
        m->settings.update([](AppSettings& settings) {
            settings.mode = CoachMode::studying;
            settings.modeRevertAt = now + 1h;
            settings.mascot = text("mouse");
            settings.mascotColorScheme = text("mouse.grey");
        });
        const auto before = m->settings.settings();
        const RuleProposal rule { .proposalId = text("rule"), .name = text("Videos") };
        const std::vector<RuleProposal> changes { setting("mascot", JSONValue(text("axolotl"))),
            setting("mode", JSONValue(text("focus"))), rule };
        for (const auto& change : changes) {
            apply({ change });
            awaited(m->desk.confirmProposal(change.proposalId));
            QCOMPARE(
                m->chat.messages().back().proposalID, m->proposals.proposal(change.proposalId)->id);
        }
        QVERIFY(m->settings.settings().mascotColorScheme != before.mascotColorScheme);
        for (auto times = 0; times < 2; ++times) {
            for (const auto& change : changes)
                m->desk.undoProposal(change.proposalId);
        }
        QVERIFY(m->settings.settings() == before && m->rules.rules().empty());
        QCOMPARE(told().filter(text("Undone at your request: ")).size(), 3);
        QCOMPARE(told().filter(text("My desktop form changed: ")).size(), 2);
        // In the same breath it counts as dismissed.
        for (const auto& change : changes)
            QVERIFY(m->desk.verdict(change, {}).kind == ActionVerdict::Kind::dismissed);
    }

    void whatTheUserHasChangedSinceIsNotUndone()
    {
        apply({ setting("mode", JSONValue(text("focus"))) });
        awaited(m->desk.confirmProposal(text("mode")));
        m->modes.setMode(CoachMode::relaxing);
        m->desk.undoProposal(text("mode"));
        QVERIFY(m->settings.settings().mode == CoachMode::relaxing);
        QVERIFY(told().filter(text("Undone")).isEmpty());
    }

    void withoutCalendarsThereIsNoBannerButAReason()
    {
        UnavailableCalendarProvider none;
        ProposalDesk desk(m->all, m->moment, { m->chat, m->modes, none, [] {} }, [] {});
        awaited(desk.apply({ reminder("r") }));
        QCOMPARE(told(),
            QStringList(
                text("I can't add that reminder: no calendar is connected on this computer")));
        QVERIFY(m->proposals.pendingProposals().empty());
    }

    void aFailureCanBeTriedAgain()
    {
        const ProposedCalendarEvent event { .title = text("Exam"), .start = now };
        m->settings.update(
            [](auto& settings) { settings.actionConfirmations[text("calendar_write")] = false; });
        m->calendar.refusal = WriteError::noAccess(text("Calendar"));
        apply({ RuleProposal {
            .proposalId = text("e"), .kind = Kind::calendarEvent, .event = event } });
        QCOMPARE(told(), QStringList(text("That didn't work: Calendar access is not granted")));
        QCOMPARE(m->proposals.pendingProposals().size(), 1u);
        m->calendar.refusal.reset();
        // The model asks anew rather than the user.
        apply({ RuleProposal {
            .proposalId = text("e"), .kind = Kind::calendarEvent, .event = event } });
        QCOMPARE(
            told().back(), text("Added 'Exam' to your calendar for Sunday, 1 March 2026, 10:15"));
        QCOMPARE(m->calendar.events.size(), 1u);
        QVERIFY(m->proposals.pendingProposals().empty());
    }

    void whatIsDismissedIsNotAskedAgainUntilTheUserWrites()
    {
        apply({ reminder("r") });
        m->desk.rejectProposal(text("r"));
        m->desk.rejectProposal(text("r"));
        apply({ reminder("r") });
        QCOMPARE(
            told(), QStringList({ queued("Tea"), text("Dismissed the pending proposal: Tea.") }));
        apply({ reminder("r", "Coffee") });
        QCOMPARE(m->proposals.pendingProposals().front().proposalId, text("r-2"));
        awaited(m->desk.confirmProposal(text("r")));
        awaited(m->desk.allowAlwaysProposal(text("r")));
        QVERIFY(m->calendar.reminders.empty());
        QVERIFY(m->settings.settings().actionConfirmations.empty());

        m->history.append({ .role = ChatMessage::Role::user, .timestamp = now + 1min });
        apply({ reminder("r") });
        QCOMPARE(m->proposals.pendingProposals().size(), 2u);
    }

    void whatIsAllowedAlwaysIsDoneAtOnce()
    {
        apply({ reminder("r") });
        awaited(m->desk.allowAlwaysProposal(text("r")));
        apply({ reminder("s", "Coffee") });
        QCOMPARE(m->calendar.reminders.size(), 2u);
        QCOMPARE(told().size(), 3);
        // Another kind still asks, and so does what may never be allowed for good.
        apply({ setting("cloudSyncEnabled", JSONValue(true)) });
        awaited(m->desk.allowAlwaysProposal(text("cloudSyncEnabled")));
        QVERIFY(m->settings.settings().cloudSyncEnabled);
        QVERIFY(m->settings.allowances() == std::vector { text("reminder_write") });
        m->settings.revokeAllowance(text("reminder_write"));
        QVERIFY(m->settings.allowances().empty());
        apply({ reminder("t", "Cocoa") });
        QCOMPARE(m->proposals.pendingProposals().size(), 1u);
    }

    void aRuleIsAlwaysAskedFor()
    {
        apply(
            { RuleProposal { .proposalId = text("x"), .kind = Kind::rule, .name = text("Nap") } });
        awaited(m->desk.allowAlwaysProposal(text("x")));
        QCOMPARE(told(), QStringList({ queued("Nap"), text("Rule is now active: Nap.") }));
        QCOMPARE(m->rules.rules().size(), 1u);
    }

    void aSettingIsCheckedBeforeTheUserIsAsked()
    {
        apply({ setting("mode", JSONValue(text("party"))) });
        QCOMPARE(told(),
            QStringList(text("I can't change that setting: mode must be one of: openEnded, focus, "
                             "studying, relaxing, exercising, doNotDisturb")));
        QVERIFY(m->proposals.pendingProposals().empty());
        QVERIFY(m->memory.observations.search({}).front().tags
            == std::vector { text("settings_change") });
    }

    void aFormComesBeforeItsColours_data()
    {
        QTest::addColumn<bool>("asks");
        QTest::newRow("asked") << true;
        QTest::newRow("allowed") << false;
    }
    void aFormComesBeforeItsColours()
    {
        QFETCH(bool, asks);
        m->settings.update(
            [&](auto& settings) { settings.actionConfirmations[text("settings_change")] = asks; });
        apply({ setting("mascotColorScheme", JSONValue(text("pink"))),
            setting("mascot", JSONValue(text("axolotl"))) });
        for (const auto& proposal : m->proposals.pendingProposals())
            awaited(m->desk.confirmProposal(proposal.proposalId));
        QCOMPARE(m->settings.settings().mascot, text("axolotl"));
        QCOMPARE(m->settings.settings().mascotColorScheme, text("pink"));
        QCOMPARE(told().mid(asks ? 2 : 0),
            QStringList({ text("Changed setting: mascot → axolotl"),
                text("My desktop form changed: I was mouse, now I'm axolotl. Anything earlier "
                     "where I called myself mouse was my old form — I'm axolotl now."),
                text("Changed setting: mascotColorScheme → pink"),
                text("My color scheme changed: Golden → Pink. Same buddy, new colors.") }));
        AppSettings before;
        QVERIFY(!selfChangeNote(text("mascot"), before, before));
        QVERIFY(!selfChangeNote(text("mode"), before, m->settings.settings()));
    }

    void forgettingAsksForOneNoteOnly()
    {
        for (const auto* start : { "aaaaaaa1", "aaaaaaa2" }) {
            const QUuid id(text(start) + QStringLiteral("-0000-4000-8000-000000000000"));
            m->memory.notes.applyCleanup({}, { { { .id = id, .text = text(start) } }, {} }, now);
        }
        apply({ forgetNote(text("aaaaaaa")) });
        QCOMPARE(told(),
            QStringList(text("I can't forget that: aaaaaaa matches more than one note — give me "
                             "more characters")));
        QVERIFY(m->proposals.pendingProposals().empty());
        apply({ forgetNote(text("aaaaaaa2")) });
        QCOMPARE(told().back(), queued("Delete the memory note \"aaaaaaa2\""));
        awaited(m->desk.allowAlwaysProposal(text("f")));
        QCOMPARE(told().back(), text("Forgot the note \"aaaaaaa2\""));
        QCOMPARE(m->memory.notes.notes().size(), 1u);
        QCOMPARE(m->deletions, 1);
        // No librarian reads what was to be forgotten.
        for (const auto& message : m->chat.messages())
            QVERIFY(!message.sessionID);
        QVERIFY(m->settings.settings().actionConfirmations.empty());
        QVERIFY(m->memory.observations.search({ .text = text("aaaaaaa2") }).empty());
        QVERIFY(m->proposals.proposal(text("f"))->name.isEmpty());
    }

    void aModelCannotBuryTheUser()
    {
        std::vector<BuddyAction> actions;
        for (int number = 0; number < 1000; ++number)
            actions.push_back(reminder(QByteArray::number(number).constData()));
        apply(actions);
        QCOMPARE(m->proposals.pendingProposals().size(), 10u);
        QCOMPARE(told().size(), 11);
        QVERIFY(told().back().startsWith(u"Too many changes are waiting for your answer"));
        // What waits already is no further change.
        apply({ reminder("0") });
        QCOMPARE(told().size(), 11);
    }

    void aModeIsSwitchedForAWhile()
    {
        apply({ TemporaryMode { CoachMode::studying, 90 } });
        QVERIFY(m->settings.settings().mode == CoachMode::studying);
        QVERIFY(m->settings.settings().modeRevertAt == now + 90min);
        QVERIFY(told().isEmpty());
    }

    void aMemoryThatIsOffKeepsNoOutcome()
    {
        m->settings.update([](auto& settings) { settings.memoryEnabled = false; });
        apply({ reminder("r") });
        awaited(m->desk.confirmProposal(text("r")));
        QCOMPARE(told().size(), 2);
        for (const auto& message : m->chat.messages())
            QVERIFY(!message.sessionID);
        QCOMPARE(m->memory.observations.count(), 0);
    }

private:
    void apply(std::vector<BuddyAction> actions) { awaited(m->desk.apply(std::move(actions))); }

    QStringList told() const
    {
        QStringList texts;
        for (const auto& message : m->chat.messages())
            texts += message.text;
        return texts;
    }

    std::unique_ptr<Office> m;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ProposalDeskTest)
#include "ProposalDeskTest.moc"
