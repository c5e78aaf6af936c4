#include "connections/ComingUpLogic.h"

#include "support/TableRow.h"

#include <set>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using Details = std::map<QString, JSONValue>;

/// Sunday, 1 March 2026, 08:15 in UTC and 09:15 in Berlin.
constexpr TimePoint now { 1772352900s };

Calendar berlin()
{
    return { QTimeZone("Europe/Berlin"), QLocale::c() };
}

ReferenceItem item(const QString& path, const QString& title, const Details& details)
{
    return { .path = path, .title = title, .details = details };
}

/// "overdue: a, b | 1: c", with the days of the month.
QString inShort(const std::vector<ComingUpSection>& sections)
{
    using Kind = ComingUpSection::Kind;
    using Timing = ComingUpEntry::Timing;
    QStringList lines;
    for (const auto& section : sections) {
        QStringList entries;
        for (const auto& entry : section.entries) {
            const auto sign = entry.timing == Timing::none ? u"*"_s
                : entry.timing == Timing::until            ? u"<"_s
                                                           : QString();
            entries.append(sign + entry.title + (entry.isDone() ? u"!"_s : QString()));
        }
        const auto name = section.kind == Kind::overdue ? u"overdue"_s
            : section.kind == Kind::someTime            ? u"some time"_s
                                                        : QString::number(section.day.day());
        lines.append(name + u": "_s + entries.join(u", "_s));
    }
    return lines.join(u" | "_s);
}

} // namespace

/// What the user has to expect in the next days.
class ComingUpLogicTest : public QObject {
    Q_OBJECT

    static void addDues()
    {
        const auto deadline = u"academics.deadlines"_s;
        const auto reminder = u"calendar.reminders"_s;
        const auto due = [](const char* name, const QString& path, const QString& at,
                             const QString& state,
                             const QString& found) { row(name, path, at, state, false, found); };
        due("later today", deadline, u"2026-03-01T09:00:00Z"_s, {}, u"1: x"_s);
        due("this moment", deadline, u"2026-03-01T08:15:00Z"_s, {}, u"1: x"_s);
        due("just missed", deadline, u"2026-03-01T08:14:59Z"_s, {}, u"overdue: x"_s);
        due("done in time", deadline, u"2026-03-01T08:14:59Z"_s, u"submitted"_s, u"1: x!"_s);
        due("graded", deadline, u"2026-03-02T12:00:00Z"_s, u"graded"_s, u"2: x!"_s);
        due("done yesterday", deadline, u"2026-02-28T12:00:00Z"_s, u"graded"_s, {});
        due("a state of its own", deadline, u"2026-03-02T12:00:00Z"_s, u"late"_s, u"2: x"_s);
        due("a week ago", deadline, u"2026-02-21T23:00:00Z"_s, {}, u"overdue: x"_s);
        due("before that", deadline, u"2026-02-21T22:59:59Z"_s, {}, {});
        due("the user's midnight", deadline, u"2026-03-01T23:00:00Z"_s, {}, u"2: x"_s);
        due("the last day", deadline, u"2026-03-15T22:59:59Z"_s, {}, u"15: x"_s);
        due("the day after", deadline, u"2026-03-15T23:00:00Z"_s, {}, {});
        due("a deadline without a date", deadline, {}, {}, {});
        due("a reminder without a date", reminder, {}, {}, u"some time: x"_s);
        due("one that is done", reminder, {}, u"completed"_s, {});
        due("a reminder missed", reminder, u"2026-02-28T12:00:00Z"_s, {}, u"overdue: x"_s);
        due("a reminder done", reminder, u"2026-03-01T08:00:00Z"_s, u"completed"_s, u"1: x!"_s);
        row("due on this day", reminder, u"2026-02-28T23:00:00Z"_s, QString(), true, u"1: *x"_s);
        due("a reminder of the day", reminder, u"2026-02-28T23:00:00Z"_s, {}, u"1: *x"_s);
        due("a deadline at midnight", deadline, u"2026-02-28T23:00:00Z"_s, {}, u"overdue: x"_s);
        row("due on the day before", reminder, u"2026-02-28T12:00:00Z"_s, QString(), true,
            u"overdue: *x"_s);
        due("another section", u"academics.exams"_s, u"2026-03-02T12:00:00Z"_s, {}, {});
    }

private Q_SLOTS:
    void aDueDateStandsOnTheUsersDay_data()
    {
        columns<QString, QString, QString, bool, QString>("path", "at", "state", "allDay", "found");
        addDues();
    }
    void aDueDateStandsOnTheUsersDay()
    {
        QFETCH(QString, path);
        QFETCH(QString, at);
        QFETCH(QString, state);
        QFETCH(bool, allDay);
        QFETCH(QString, found);
        const auto due = item(path, u"x"_s,
            { { u"dueAt"_s, at }, { u"submissionState"_s, state },
                { u"completed"_s, state == u"completed" }, { u"allDay"_s, allDay } });
        QCOMPARE(inShort(ComingUpLogic::sections({ due }, now, berlin())), found);
    }

    void anEventStandsOnEachOfItsDays_data()
    {
        columns<QString, QString, bool, QString>("start", "end", "allDay", "found");
        const auto none = QString();
        row("later", u"2026-03-02T12:00:00Z"_s, u"2026-03-02T13:00:00Z"_s, false, u"2: x"_s);
        row("over", u"2026-03-01T07:00:00Z"_s, u"2026-03-01T08:00:00Z"_s, false, none);
        row("going on", u"2026-03-01T08:00:00Z"_s, u"2026-03-01T09:00:00Z"_s, false, u"1: x"_s);
        row("without an end", u"2026-03-02T12:00:00Z"_s, none, false, u"2: x"_s);
        row("to midnight", u"2026-03-02T20:00:00Z"_s, u"2026-03-02T23:00:00Z"_s, false, u"2: x"_s);
        row("over two nights", u"2026-03-02T20:00:00Z"_s, u"2026-03-04T01:00:00Z"_s, false,
            u"2: x | 3: *x | 4: <x"_s);
        row("all day, now", u"2026-02-28T23:00:00Z"_s, u"2026-02-28T23:00:00Z"_s, true, u"1: *x"_s);
        row("all day, over", u"2026-02-27T23:00:00Z"_s, u"2026-02-27T23:00:00Z"_s, true, none);
        row("three days", u"2026-02-27T23:00:00Z"_s, u"2026-03-01T23:00:00Z"_s, true,
            u"1: *x | 2: *x"_s);
        row("into the future", u"2026-03-14T23:00:00Z"_s, u"9999-03-20T23:00:00Z"_s, true,
            u"15: *x"_s);
        row("ends before it starts", u"2026-03-02T12:00:00Z"_s, u"2026-03-01T13:00:00Z"_s, false,
            u"2: x"_s);
    }
    void anEventStandsOnEachOfItsDays()
    {
        QFETCH(QString, start);
        QFETCH(QString, end);
        QFETCH(bool, allDay);
        QFETCH(QString, found);
        const auto event = item(u"calendar.events"_s, u"x"_s,
            { { u"startAt"_s, start }, { u"endAt"_s, end }, { u"allDay"_s, allDay } });
        QCOMPARE(inShort(ComingUpLogic::sections({ event }, now, berlin())), found);
    }

    void aCourseIsFoundByItsIDAndKeepsItsColour()
    {
        const auto later = JSONValue(u"2026-03-02T12:00:00Z"_s);
        std::vector<ReferenceItem> items { item(u"academics.courses"_s, u"No id"_s, {}),
            item(u"academics.courses"_s, u"Art"_s, { { u"classroomCourseID"_s, u"7"_s } }) };
        for (int number = 0; number < 8; ++number)
            items.push_back(item(u"academics.courses"_s, u"Course %1"_s.arg(number),
                { { u"canvasCourseID"_s, JSONValue(number) } }));
        const auto due = [&](const QString& key, const JSONValue& id) {
            return item(u"academics.deadlines"_s, u"x"_s, { { u"dueAt"_s, later }, { key, id } });
        };
        for (int number = 7; number >= 0; --number)
            items.push_back(due(u"canvasCourseID"_s, JSONValue(number)));
        items.push_back(due(u"classroomCourseID"_s, u"8"_s));
        const auto entries = ComingUpLogic::sections(items, now, berlin()).front().entries;
        QCOMPARE(entries[0].group, u"Course 7"_s);
        QCOMPARE(entries[8].group, QString());
        std::set<AccentChoice> colors;
        for (size_t number = 0; number < 8; ++number)
            colors.insert(entries[number].color);
        QCOMPARE(colors.size(), 8u);
        // As long as its own is free, it does not depend on the others.
        const auto alone = [&](const QString& course) {
            auto own = due(u"course"_s, course);
            return ComingUpLogic::sections({ own }, now, berlin()).front().entries.front().color;
        };
        QVERIFY(std::ranges::count_if(entries, [&](const auto& entry) {
            return entry.color == alone(entry.group);
        }) >= 4);
    }

    void onlySafeAddressesAreLinks()
    {
        const std::pair<QString, bool> addresses[] { { u"https://school.edu/a?b=1"_s, true },
            { u"http://school.edu/a"_s, false }, { u"file:///etc/passwd"_s, false },
            { u"https:///a"_s, false }, { u"javascript:alert(1)"_s, false } };
        for (const auto& [address, isLink] : addresses) {
            const auto due = item(u"academics.deadlines"_s, u"x"_s,
                { { u"dueAt"_s, u"2026-03-02T12:00:00Z"_s }, { u"alternateLink"_s, address } });
            const auto sections = ComingUpLogic::sections({ due }, now, berlin());
            QCOMPARE(!sections.front().entries.front().link.isEmpty(), isLink);
        }
    }

    void theQuestionIsKnownHoweverItIsWritten()
    {
        for (const auto& asked :
            { u"what's due?"_s, u"What’s due"_s, u" WHATS  DUE ?"_s, u"what is due?"_s })
            QVERIFY2(ComingUpLogic::isAskedFor(asked), qPrintable(asked));
        for (const auto& other : { QString(), u"?"_s, u"what is due process?"_s, u"due"_s })
            QVERIFY2(!ComingUpLogic::isAskedFor(other), qPrintable(other));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::ComingUpLogicTest)
#include "ComingUpLogicTest.moc"
