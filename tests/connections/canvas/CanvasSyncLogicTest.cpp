#include "connections/canvas/CanvasSyncLogic.h"

#include "connections/ServiceAnswer.h"
#include "connections/canvas/CanvasDateParser.h"
#include "foundation/ISO8601.h"
#include "support/Joined.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr TimePoint now { 1772352900s };
constexpr auto day = std::chrono::days(1);

std::optional<QString> text(const char* written)
{
    return written ? std::optional(QString::fromUtf8(written)) : std::nullopt;
}

std::optional<QString> date(std::chrono::milliseconds away)
{
    return ISO8601::format(now + away);
}

CanvasCourse course(
    qint64 id, const char* state, std::optional<QString> start, std::optional<QString> end)
{
    return { .id = id,
        .workflowState = text(state),
        .term = CanvasTerm { .startAt = std::move(start), .endAt = std::move(end) } };
}

QString ids(const std::vector<CanvasCourse>& courses)
{
    return joined(courses, [](const auto& each) { return QString::number(each.id); });
}

QString shown(const std::optional<ReferenceItem>& item)
{
    if (!item)
        return {};
    QStringList parts { item->title, item->summary };
    for (const auto& [key, value] : item->details)
        parts << key + u'=' + value.displayString();
    return parts.join(u'\n');
}

} // namespace

class CanvasSyncLogicTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void coursesOfTheTermAreChosen()
    {
        auto hidden = course(9, "available", {}, {});
        hidden.accessRestrictedByDate = true;
        const std::vector courses { course(1, "available", {}, {}), course(2, nullptr, {}, {}),
            course(3, "completed", {}, {}), course(4, "available", {}, date(-7 * day)),
            course(5, "available", {}, date(-7 * day - 1s)),
            course(6, "available", date(14 * day), {}),
            course(7, "available", date(14 * day + 1s), {}),
            course(8, "available", u"soon"_s, u"never"_s), hidden };
        QCOMPARE(ids(CanvasSyncLogic::selectAssignmentCourses(courses, now)), u"1|2|4|6|8"_s);
        const std::vector others { courses[2], courses[4], courses[6], hidden };
        QCOMPARE(ids(CanvasSyncLogic::selectAssignmentCourses(others, now)), u"5|7"_s);
        QCOMPARE(ids(CanvasSyncLogic::selectAssignmentCourses({ hidden }, now)), QString());
    }

    void anAssignmentBecomesADeadline()
    {
        const Calendar calendar { QTimeZone("Europe/Berlin"), QLocale(u"en_GB"_s) };
        const CanvasCourse psychology { .id = 9007199254740993,
            .name = text("Intro to\nPsychology"),
            .courseCode = text("PSYC 2010") };
        const auto item = [&](const CanvasAssignment& assignment) {
            return shown(CanvasSyncLogic::deadlineItem(assignment, psychology, now, calendar));
        };
        const auto due = text("2026-03-02T22:59:59.500Z");
        const CanvasAssignment essay { .id = 9007199254740995,
            .name = text("Essay"),
            .dueAt = due,
            .pointsPossible = 12.5,
            .htmlURL = text("https://canvas.test/a/1"),
            .submission = CanvasSubmission { .workflowState = text("graded"), .score = 11 } };
        QCOMPARE(item(essay),
            u"Essay\nDue 2 Mar 2026, 23:59 · Intro to Psychology · 12.5 pts · graded\n"
            "canvasAssignmentID=9007199254740995\ncanvasCourseID=9007199254740993\n"
            "course=Intro to Psychology\ndueAt=2026-03-02T22:59:59Z\n"
            "htmlURL=https://canvas.test/a/1\npointsPossible=12.5\nscore=11\n"
            "submissionState=graded"_s);
        const CanvasAssignment bare { .id = 1, .name = text(" "), .dueAt = due };
        QCOMPARE(item(bare).section(u'\n', 0, 1),
            u"Untitled assignment\nDue 2 Mar 2026, 23:59 · Intro to Psychology · unsubmitted"_s);
        QCOMPARE(item({ .id = 1, .name = text("Reading") }), QString());
        for (const auto* state : { "unpublished", "deleted" })
            QCOMPARE(item({ .id = 1, .dueAt = due, .workflowState = text(state) }), QString());
        const CanvasSubmission pending { .workflowState = text("pending_review") };
        QCOMPARE(CanvasSyncLogic::submissionState(pending), u"unsubmitted"_s);
    }

    void aCourseTellsItsScore()
    {
        const CanvasCourse scored { .id = 7,
            .courseCode = text("MATH 1"),
            .term = CanvasTerm { .name = text("Spring") },
            .enrollments = { { CanvasEnrollmentScore { 93.456, text("A") } } } };
        QCOMPARE(shown(CanvasSyncLogic::courseItem(scored, now)),
            u"MATH 1\nMATH 1 · Spring · current score 93.46\ncanvasCourseID=7\n"
            "currentGrade=A\ncurrentScore=93.456\nterm=Spring"_s);
        QCOMPARE(CanvasSyncLogic::courseItem({ .id = 7 }, now).title, u"Untitled course"_s);
    }

    void theDeadlinesToSpeakOfAreUnsubmittedAndNew_data()
    {
        columns<std::chrono::seconds, QString, QString, bool>(
            "left", "state", "source", "isWanted");
        const auto canvas = u"canvas_sync"_s;
        row("due now", 0s, u"unsubmitted"_s, canvas, false);
        row("in a second", 1s, u"unsubmitted"_s, canvas, true);
        row("at the end of the window", std::chrono::seconds(day), QString(), canvas, true);
        row("beyond it", std::chrono::seconds(day) + 1s, QString(), canvas, false);
        row("submitted", 1s, u"submitted"_s, canvas, false);
        row("noted by the user", 1s, QString(), u"librarian"_s, true);
        row("Classroom's", 1s, u"unsubmitted"_s, u"classroom_sync"_s, false);
    }
    void theDeadlinesToSpeakOfAreUnsubmittedAndNew()
    {
        QFETCH(std::chrono::seconds, left);
        QFETCH(QString, state);
        QFETCH(QString, source);
        QFETCH(bool, isWanted);
        ReferenceItem item { .path = CanvasSyncLogic::deadlinesPath.toString(), .source = source };
        item.details = { { u"dueAt"_s, JSONValue(ISO8601::format(now + left)) },
            { u"canvasAssignmentID"_s, JSONValue(u"12"_s) } };
        if (!state.isEmpty())
            item.details.emplace(u"submissionState"_s, JSONValue(state));
        const Calendar honolulu { QTimeZone("Pacific/Honolulu") };
        const auto candidates = [&](const std::set<QString>& reminded) {
            return CanvasSyncLogic::reminderCandidates({ item }, now, 24, reminded, honolulu);
        };
        QCOMPARE(candidates({ u"canvas-12-2026-03-01"_s }).size(), isWanted ? 1u : 0u);
        QVERIFY(candidates({ u"canvas-12-2026-02-28"_s }).empty());
    }

    void aLinkLeadsToTheNextPageOfTheSameServer_data()
    {
        columns<QByteArray, QString>("link", "next");
        const auto one = QByteArray("<https://c.test/api?page=abc%3D>; rel=\"next\"");
        row("one", one, u"https://c.test/api?page=abc%3D"_s);
        row("after others",
            QByteArray("<https://c.test/a>; rel=\"current\",") + one
                + ",<https://c.test/z>; rel=\"last\"",
            u"https://c.test/api?page=abc%3D"_s);
        row("relative, more words", QByteArray("</x>; title=\"a\"; rel=next"),
            u"https://c.test/x"_s);
        row("the last page", QByteArray("<https://c.test/a>; rel=\"prev\""), u"none"_s);
        row("none", QByteArray(), u"none"_s);
        row("another server", QByteArray("<https://evil.test/a>; rel=\"next\""), QString());
        row("not secure", QByteArray("<http://c.test/a>; rel=\"next\""), QString());
    }
    void aLinkLeadsToTheNextPageOfTheSameServer()
    {
        QFETCH(QByteArray, link);
        QFETCH(QString, next);
        const auto found = ServiceAnswer::nextPage(
            { 200, { { "Link", link } }, {} }, QUrl(u"https://c.test/api"_s));
        QCOMPARE(found ? QString::fromLatin1(found->toEncoded()) : u"none"_s, next);
    }

    void aServiceThatAsksForARestIsHeard_data()
    {
        columns<QByteArray, std::chrono::seconds>("value", "rest");
        row("seconds", QByteArray("90"), 90s);
        row("a date", QByteArray("Sun, 01 Mar 2026 08:20:00 GMT"), 300s);
        row("too long", QByteArray("9999999999"), std::chrono::seconds(day));
        row("past", QByteArray("Sun, 01 Mar 2020 08:20:00 GMT"), 0s);
        row("nonsense", QByteArray("later"), 0s);
        row("none", QByteArray(), 0s);
    }
    void aServiceThatAsksForARestIsHeard()
    {
        QFETCH(QByteArray, value);
        QFETCH(std::chrono::seconds, rest);
        const auto until =
            ServiceAnswer::retryAfter({ 429, { { "retry-after", value } }, {} }, now);
        QCOMPARE(until.value_or(now) - now, std::chrono::milliseconds(rest));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CanvasSyncLogicTest)
#include "CanvasSyncLogicTest.moc"
