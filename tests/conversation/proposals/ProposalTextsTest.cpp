#include "conversation/proposals/ProposalTexts.h"

#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr TimePoint start = std::chrono::sys_days(std::chrono::year_month_day(2026y / 3 / 1)) + 23h;

const Calendar calendar { QTimeZone("Europe/Berlin"), QLocale(u"en_GB"_s) };

AppSettings settings()
{
    AppSettings settings;
    settings.appDataSources = { { .name = u"Notes"_s,
        .rootPath = u"/home/me/a rather long way to the folder of notes"_s } };
    return settings;
}

QString text(const RuleProposal& proposal)
{
    return ProposalTexts::words(proposal, settings(), calendar).lines.join(u'|');
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

JSONValue folder(const char* name, const char* path)
{
    return JSONValue::Object { { u"name"_s, QString::fromUtf8(name) },
        { u"path"_s, QString::fromUtf8(path) } };
}

} // namespace

class ProposalTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatWouldBeDoneIsSaid_data()
    {
        columns<RuleProposal, QString>("proposal", "expected");
        row("a word", change(u"mode"_s, u"focus"_s), "Mode: Open-ended → Focus");
        row("out of bounds", change(u"calendarSyncIntervalMinutes"_s, 5),
            "Calendar sync interval: 60 minutes → 15 minutes");
        row("with what follows", change(u"mascot"_s, u"axolotl"_s),
            "Form: Mouse → Axolotl|Color scheme: Original → Golden");
        row("refused", change(u"mode"_s, u"party\n%1"_s), "Mode cannot be set to party %1");
        row("out of reach", change(u"memoryEnabled"_s, false),
            "memoryEnabled cannot be set to false");
        row("a long list",
            change(u"appDataSources"_s,
                JSONValue::Array { folder("Thesis", "~/thesis"), folder("כתבים", "/w") }),
            "Folders the assistant may read: 1 → 2|Added: ~/thesis (Thesis)|"
            "Added: \u2068/w (כתבים)\u2069|"
            "Removed: /home/me/a rather long way to the folder of notes (Notes)");
        row("everything",
            change(u"appDataSources"_s,
                JSONValue::Array { folder("Lecture slides", "//"), folder("Notes", "~/.") }),
            "Careful: // is everything on this computer.|"
            "Careful: ~/. is everything in your home folder.|"
            "Folders the assistant may read: 1 → 2|Added: // (Lecture slides)|"
            "Added: ~/. (Notes)|"
            "Removed: /home/me/a rather long way to the folder of notes (Notes)");
        row("under cover of another",
            change(u"canvasBaseURL"_s, u"https://school.edu@evil.example"_s),
            "Canvas address cannot be set to https://school.edu@evil.example");
        row("nothing new", change(u"excludedBundleIDs"_s, JSONValue::Array {}),
            "Excluded apps: 7 → 7");
        row("without what belongs to it",
            RuleProposal { .kind = RuleProposal::Kind::settingsChange,
                .name = u"A name"_s,
                .event = ProposedCalendarEvent { u"Not this"_s, start } },
            "A name");

        const auto dentist = u"Dentist"_s;
        row("an event", newEvent({ dentist, start }), "Dentist|Monday, 2 March 2026, 00:00");
        row("until later that day", newEvent({ dentist, start, start + 90min }),
            "Dentist|Monday, 2 March 2026, 00:00 – 01:30");
        row("until another day", newEvent({ dentist, start - 1h, start + 24h }),
            "Dentist|Sunday, 1 March 2026, 23:00 – Tuesday, 3 March 2026, 00:00");
        row("all there is",
            newEvent({ dentist, start, {}, u"Bring\n\nthe card"_s, u"Home\u202e"_s }),
            "Dentist|Monday, 2 March 2026, 00:00|Calendar: Home|Notes: Bring the card");
        row("in the last year", newEvent({ u"\u200b"_s, TimePoint(253402300799s) - 1h }),
            "Untitled|Friday, 31 December 9999, 23:59");
        row("a day", newEvent({ dentist, start, start, {}, {}, true }),
            "Dentist|Monday, 2 March 2026");
        row("some days", newEvent({ dentist, start, start + 24h, {}, {}, true }),
            "Dentist|Monday, 2 March 2026 – Tuesday, 3 March 2026");
        row("for a day", newReminder({ dentist, start, {}, true }),
            "Dentist|Due: Monday, 2 March 2026");
        row("a reminder", newReminder({ dentist, start }),
            "Dentist|Due: Monday, 2 March 2026, 00:00");
        row("for no time", newReminder({ dentist }), "Dentist|Due: at no particular time");
        row("a rule",
            RuleProposal { .name = u"Videos"_s,
                .applicationMatch = { u"YouTube"_s, QString() },
                .bundleIDMatch = { u"org.mpv"_s },
                .thresholdMinutes = 30,
                .excludedModes = { CoachMode::relaxing, CoachMode::exercising },
                .cooldownMinutes = 1,
                .responseStyle = InterventionStyle::playful },
            "Videos|Checks in after 30 minutes of YouTube, any app, org.mpv|"
            "At most every 1 minute, in a playful tone|Silent in the modes: Relaxing, Exercising");
        const auto inFull = u"Delete the note \"%1\""_s.arg(u"Likes "_s.repeated(166).trimmed());
        row("forgetting, in full",
            RuleProposal { .kind = RuleProposal::Kind::forgetMemory, .name = inFull },
            inFull + u"|This cannot be undone."_s);
    }
    void whatWouldBeDoneIsSaid()
    {
        QFETCH(RuleProposal, proposal);
        QTEST(text(proposal), "expected");
    }

    void whatTakesTooMuchRoomIsCut()
    {
        const QString endless(1 << 20, u'a');
        const RuleProposal rule { .name = endless, .applicationMatch { 1000, endless } };
        for (const auto& proposal : { rule, change(u"mode"_s, endless), change(endless, endless),
                 change(u"canvasBaseURL"_s, u"https://"_s + endless),
                 change(u"excludedBundleIDs"_s,
                     JSONValue::Array(1000, JSONValue(endless.first(1000)))),
                 newEvent({ endless, start, start, endless, endless }),
                 RuleProposal { .kind = RuleProposal::Kind::forgetMemory, .name = endless } }) {
            for (const auto& line : text(proposal).split(u'|'))
                QVERIFY2(line.size() < 2'200, qPrintable(line.first(20)));
        }
        QCOMPARE(text(rule).indexOf(u'|'), 201);
        QCOMPARE(ProposalTexts::name(rule).size(), 201);
    }

    void nothingHidesInAListThatAlwaysAsks()
    {
        JSONValue::Array folders;
        RuleProposal rule { .name = u"Apps"_s };
        for (int number = 0; number < 30; ++number) {
            const auto path = u"/folder/%1"_s.arg(number).toUtf8();
            folders.push_back(folder("Slides", path.constData()));
            rule.applicationMatch.push_back(QString::fromUtf8(path));
        }
        for (const auto& proposal : { change(u"appDataSources"_s, folders), rule }) {
            const auto words = ProposalTexts::words(proposal, settings(), calendar);
            QVERIFY(words.isInFull);
            QCOMPARE(words.lines.filter(u"/folder/"_s).size(), 30);
        }
    }

    void anAllowanceNamesItsScope()
    {
        QCOMPARE(ProposalTexts::allowAlways(change(u"mode"_s, u"focus"_s)),
            u"Allow always for ordinary settings"_s);
        QCOMPARE(ProposalTexts::allowAlways(change(u"canvasBaseURL"_s, u"https://x"_s)), QString());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ProposalTextsTest)
#include "ProposalTextsTest.moc"
