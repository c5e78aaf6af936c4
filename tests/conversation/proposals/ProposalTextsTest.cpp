#include "conversation/proposals/ProposalTexts.h"

#include "support/TableRow.h"

#include <algorithm>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr TimePoint start = std::chrono::sys_days(std::chrono::year_month_day(2026y / 3 / 1)) + 23h;

const Calendar calendar { QTimeZone("Europe/Berlin"), QLocale(QStringLiteral("en_GB")) };

AppSettings settings()
{
    AppSettings settings;
    settings.appDataSources = { { .name = QStringLiteral("Notes"),
        .rootPath = QStringLiteral("/home/me/a rather long way to the folder of notes") } };
    return settings;
}

QStringList lines(const RuleProposal& proposal)
{
    return ProposalTexts::words(proposal, settings(), calendar).lines;
}

RuleProposal change(const QString& key, JSONValue value)
{
    return { .kind = RuleProposal::Kind::settingsChange,
        .settingsChange = ProposedSettingsChange { key, std::move(value) } };
}

RuleProposal newEvent(ProposedCalendarEvent event)
{
    return { .kind = RuleProposal::Kind::calendarEvent, .event = std::move(event) };
}

RuleProposal newReminder(ProposedReminder reminder)
{
    return { .kind = RuleProposal::Kind::reminder, .reminder = std::move(reminder) };
}

void row(const char* name, const RuleProposal& proposal, const QStringList& expected)
{
    QTest::newRow(name) << proposal << expected;
}

JSONValue folder(const char* name, const char* path)
{
    return JSONValue::Object { { QStringLiteral("name"), QString::fromUtf8(name) },
        { QStringLiteral("path"), QString::fromUtf8(path) } };
}

} // namespace

class ProposalTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aChangeOfASettingSaysBeforeAndAfter_data()
    {
        QTest::addColumn<RuleProposal>("proposal");
        QTest::addColumn<QStringList>("expected");
        row("a word", change(QStringLiteral("mode"), QStringLiteral("focus")),
            { QStringLiteral("Mode: Open-ended → Focus") });
        row("out of bounds", change(QStringLiteral("calendarSyncIntervalMinutes"), 5),
            { QStringLiteral("Calendar sync interval: 60 minutes → 15 minutes") });
        row("with what follows", change(QStringLiteral("mascot"), QStringLiteral("axolotl")),
            { QStringLiteral("Form: Mouse → Axolotl"),
                QStringLiteral("Color scheme: Original → Golden") });
        row("refused", change(QStringLiteral("mode"), QStringLiteral("party\n%1")),
            { QStringLiteral("Mode cannot be set to party %1") });
        row("out of reach", change(QStringLiteral("memoryEnabled"), false),
            { QStringLiteral("memoryEnabled cannot be set to false") });
        row("a long list",
            change(QStringLiteral("appDataSources"),
                JSONValue::Array { folder("Thesis", "~/thesis"), folder("כתבים", "/w") }),
            { QStringLiteral("Folders the assistant may read: 1 → 2"),
                QStringLiteral("Added: Thesis (~/thesis), \u2068כתבים (/w)\u2069"),
                QStringLiteral(
                    "Removed: Notes (/home/me/a rather long way to the folder of notes)") });
        row("nothing new", change(QStringLiteral("excludedBundleIDs"), JSONValue::Array {}),
            { QStringLiteral("Excluded apps: 7 → 7") });
        row("without what belongs to it",
            { .kind = RuleProposal::Kind::settingsChange,
                .name = QStringLiteral("A name"),
                .event = ProposedCalendarEvent { QStringLiteral("Not this"), start } },
            { QStringLiteral("A name") });
    }
    void aChangeOfASettingSaysBeforeAndAfter() { compare(); }

    void whatWouldBeCreatedIsSaid_data()
    {
        QTest::addColumn<RuleProposal>("proposal");
        QTest::addColumn<QStringList>("expected");
        const auto dentist = QStringLiteral("Dentist");
        row("an event", newEvent({ dentist, start }),
            { dentist, QStringLiteral("Monday, 2 March 2026, 00:00") });
        row("until later that day", newEvent({ dentist, start, start + 90min }),
            { dentist, QStringLiteral("Monday, 2 March 2026, 00:00 – 01:30") });
        row("until another day", newEvent({ dentist, start - 1h, start + 24h }),
            { dentist,
                QStringLiteral("Sunday, 1 March 2026, 23:00 – Tuesday, 3 March 2026, 00:00") });
        row("all there is",
            newEvent({ .title = dentist,
                .start = start,
                .notes = QStringLiteral("Bring\n\nthe card"),
                .calendarName = QStringLiteral("Home\u202e") }),
            { dentist, QStringLiteral("Monday, 2 March 2026, 00:00"),
                QStringLiteral("Calendar: Home"), QStringLiteral("Notes: Bring the card") });
        row("in the last year",
            newEvent({ QStringLiteral("\u200b"), TimePoint(253402300799s) - 1h }),
            { QStringLiteral("Untitled"), QStringLiteral("Friday, 31 December 9999, 23:59") });
        row("a reminder", newReminder({ dentist, start }),
            { dentist, QStringLiteral("Due: Monday, 2 March 2026, 00:00") });
        row("for no time", newReminder({ dentist }),
            { dentist, QStringLiteral("Due: at no particular time") });
        row("a rule",
            { .name = QStringLiteral("Videos"),
                .applicationMatch = { QStringLiteral("YouTube"), QString() },
                .bundleIDMatch = { QStringLiteral("org.mpv") },
                .thresholdMinutes = 30,
                .excludedModes = { CoachMode::relaxing, CoachMode::exercising },
                .cooldownMinutes = 1,
                .responseStyle = InterventionStyle::playful },
            { QStringLiteral("Videos"),
                QStringLiteral("Checks in after 30 minutes of YouTube, any app, org.mpv"),
                QStringLiteral("At most every 1 minute, in a playful tone"),
                QStringLiteral("Silent in the modes: Relaxing, Exercising") });
    }
    void whatWouldBeCreatedIsSaid() { compare(); }

    void whatWouldBeForgottenIsSaidInFull()
    {
        const auto note = QStringLiteral("Likes ").repeated(166);
        const RuleProposal forget { .kind = RuleProposal::Kind::forgetMemory,
            .name = QStringLiteral("Delete the memory note \"%1\"").arg(note.trimmed()) };
        const QStringList expected { forget.name, QStringLiteral("This cannot be undone.") };
        QCOMPARE(lines(forget), expected);
    }

    void whatTakesTooMuchRoomIsCut()
    {
        const QString endless(1 << 20, u'a');
        const RuleProposal rule { .name = endless, .applicationMatch { 1000, endless } };
        for (const auto& proposal :
            { rule, change(QStringLiteral("mode"), endless), change(endless, endless),
                change(QStringLiteral("canvasBaseURL"), QStringLiteral("https://") + endless),
                change(QStringLiteral("excludedBundleIDs"),
                    JSONValue::Array(1000, JSONValue(endless.first(1000)))),
                newEvent({ endless, start, start, endless, endless }),
                RuleProposal { .kind = RuleProposal::Kind::forgetMemory, .name = endless } }) {
            for (const auto& line : lines(proposal))
                QVERIFY2(line.size() < 2'200, qPrintable(line.first(20)));
        }
        QCOMPARE(lines(rule).first().size(), 201);
        QCOMPARE(ProposalTexts::name(rule).size(), 201);
        QVERIFY(lines(rule).at(1).endsWith(QStringLiteral("… and 980 more")));
    }

private:
    static void compare()
    {
        QFETCH(RuleProposal, proposal);
        QTEST(lines(proposal), "expected");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ProposalTextsTest)
#include "ProposalTextsTest.moc"
