#include "connections/canvas/CanvasService.h"

#include "foundation/ISO8601.h"
#include "support/Awaited.h"
#include "support/FakeService.h"
#include "support/Joined.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

#include <QJsonDocument>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

const auto coursesList = u"/api/v1/courses"_s;
constexpr TimePoint start { 1772352900s };

QString assignmentsOf(int course)
{
    return u"/api/v1/courses/%1/assignments"_s.arg(course);
}

QByteArray course(int id)
{
    return QStringLiteral(R"({"id":%1,"name":"Course %1","course_code":"C %1"})").arg(id).toUtf8();
}

QByteArray assignment(qint64 id, const QString& name, std::chrono::hours left = 48h)
{
    return QStringLiteral(R"({"id":%1,"name":"%2","due_at":"%3"})")
        .arg(QString::number(id), name, ISO8601::format(start + left))
        .toUtf8();
}

QByteArray list(const QByteArrayList& records)
{
    return '[' + records.join(',') + ']';
}

struct School {
    ScratchDirectory directory;
    TimePoint now = start;
    Moment moment { .clock = [this] { return now; },
        .calendar =
            [] {
                return Calendar { QTimeZone::utc(), QLocale(u"en_GB"_s) };
            } };
    FakeService site;
    ReferenceMemoryStore reference { DataDirectory(directory), PlatformWording::linuxDesktop };
    CanvasService canvas { site, reference, moment, DataDirectory(directory) };

    School()
    {
        // Time passes while a request is under way.
        site.onRequest = [this] { now += 1s; };
    }

    /// Two courses, the first with two assignments on two pages, the second with one.
    void furnish()
    {
        site.serve(coursesList, { list({ course(1), course(2) }) });
        site.serve(assignmentsOf(1),
            { list({ assignment(11, u"Essay"_s) }), list({ assignment(12, u"Reading"_s) }) });
        site.serve(assignmentsOf(2), { list({ assignment(21, u"Lab"_s) }) });
    }

    /// Empty if all went well.
    QString sync()
    {
        const auto outcome = awaited(canvas.sync(u"https://canvas.test/"_s, u"secret"_s));
        return outcome ? QString() : outcome.error().description();
    }

    QString deadlines() const
    {
        auto items = reference.items(deadlinesPath.toString());
        std::ranges::sort(items, {}, &ReferenceItem::title);
        return joined(items, &ReferenceItem::title);
    }
};

} // namespace

class CanvasServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyPageIsReadAndKept()
    {
        School school;
        school.furnish();
        const auto before = school.reference.revision();
        QCOMPARE(school.sync(), QString());
        QCOMPARE(school.reference.revision(), before + 1);
        QCOMPARE(school.deadlines(), u"Essay|Lab|Reading"_s);
        const auto& state = school.canvas.state();
        QCOMPARE(state.lastStatus, u"ok"_s);
        QCOMPARE(state.courseCount, 2);
        QCOMPARE(state.deadlineCount, 3);
        QVERIFY(state.lastSyncAt == school.now);
        const auto& request = school.site.requests().at(0);
        QCOMPARE(headerValue(request.headers, "Authorization"), "Bearer secret");
        QCOMPARE(request.url.toString(),
            u"https://canvas.test/api/v1/courses?per_page=100&include[]=term&include[]=total_scores"_s);

        const auto revision = school.reference.revision();
        QCOMPARE(school.sync(), QString());
        QVERIFY2(school.reference.revision() == revision, "what is the same is not written again");
        const CanvasService again(
            school.site, school.reference, school.moment, DataDirectory(school.directory));
        QCOMPARE(again.state(), school.canvas.state());
    }

    void aFailureIsToldAndLosesNothing_data()
    {
        columns<HTTPResponse, QString>("answer", "told");
        const auto rest = std::vector { HTTPHeader { "Retry-After", "120" } };
        row("refused token", HTTPResponse { 401, {}, "{}" },
            u"Canvas token rejected (401) — generate a fresh token"_s);
        row("too many requests", HTTPResponse { 429, rest, {} },
            u"Canvas is throttled, tries again at 08:17"_s);
        row("rate limit", HTTPResponse { 403, {}, "403 Forbidden (Rate Limit Exceeded)" },
            u"Canvas is throttled, tries again at 08:25"_s);
        row("forbidden", HTTPResponse { 403, {}, "no: secret" }, u"Canvas error 403: no: …"_s);
        row("broken", HTTPResponse { 500, {}, "<h1>\noops</h1>" },
            u"Canvas error 500: <h1> oops</h1>"_s);
        row("half an answer", HTTPResponse { 200, {}, "[{\"id\":1" },
            u"Canvas response not understood: invalid termination by number"_s);
        row("another shape", HTTPResponse { 200, {}, "{\"id\":1}" },
            u"Canvas response not understood: $: expected an array, found an object"_s);
    }
    void aFailureIsToldAndLosesNothing()
    {
        QFETCH(HTTPResponse, answer);
        QFETCH(QString, told);
        School school;
        school.furnish();
        school.sync();
        for (const auto& path : { coursesList, assignmentsOf(1) }) {
            school.now = start;
            school.site.relent();
            school.site.refuse(path, answer);
            const auto error = school.sync();
            QVERIFY2(told.startsWith(error), qPrintable(error));
            const auto& state = school.canvas.state();
            QCOMPARE(state.lastError, told);
            QCOMPARE(state.lastStatus, u"failed"_s);
            QVERIFY(state.lastSyncAt == school.now);
            QCOMPARE(school.deadlines(), u"Essay|Lab|Reading"_s);
            const auto isThrottled = told.contains(u"throttled");
            QCOMPARE(school.canvas.record().isDue(start + 15min, 10), true);
            QCOMPARE(school.canvas.record().isDue(start + 15min, 60), isThrottled);
        }
        school.site.relent();
        QCOMPARE(school.sync(), QString());
        QCOMPARE(school.canvas.state().lastError, std::nullopt);
    }

    void anAddressThatIsNoneIsNotAsked()
    {
        School school;
        for (const auto& address :
            { u"canvas.test"_s, u"ftp://c.test"_s, u"https://me:pw@c.test"_s, QString() }) {
            const auto outcome = awaited(school.canvas.sync(address, u"secret"_s));
            QCOMPARE(outcome.error().description(),
                u"Canvas not configured: bad base URL: %1"_s.arg(address));
        }
        QVERIFY(school.site.requests().empty());
    }

    void aTokenNeverLeavesItsServer()
    {
        School school;
        school.furnish();
        school.site.server = "https://evil.test";
        QCOMPARE(
            school.sync(), u"Canvas response not understood: the next page is on another server"_s);
        for (const auto& request : school.site.requests())
            QCOMPARE(request.url.host(), u"canvas.test"_s);
    }

    void aClosedCourseDoesNotHideTheOthers()
    {
        School school;
        school.furnish();
        school.site.refuse(assignmentsOf(1), { 403, {}, "unauthorized" });
        QCOMPARE(school.sync(), u"Canvas error 403: unauthorized"_s);
        QCOMPARE(school.deadlines(), u"Lab"_s);
    }

    void equalTitlesNeverEatADeadline()
    {
        School school;
        QByteArrayList courses;
        for (int number = 1; number <= 5; ++number) {
            courses.append(course(number));
            QByteArrayList assignments;
            for (int homework = 1; homework <= 12; ++homework)
                assignments.append(
                    assignment(100 * number + homework, u"Homework %1"_s.arg(homework)));
            school.site.serve(assignmentsOf(number), { list(assignments) });
        }
        school.site.serve(coursesList, { list(courses) });
        QCOMPARE(school.sync(), QString());
        const auto titles = school.deadlines();
        QCOMPARE(titles.count(u'|'), 59);
        QVERIFY(titles.contains(u"Homework 1|Homework 1 (C 2)|Homework 1 (C 3)"_s));
        std::ranges::reverse(courses);
        school.site.serve(coursesList, { list(courses) });
        QCOMPARE(school.sync(), QString());
        QCOMPARE(school.deadlines(), titles);
    }

    void aTitleBelongsToItsAssignment()
    {
        School school;
        school.furnish();
        school.site.serve(assignmentsOf(2),
            { list({ assignment(21, u"Essay"_s), assignment(22, u"essay"_s),
                assignment(23, u"Lab"_s) }) });
        school.sync();
        QCOMPARE(school.deadlines(), u"Essay|Essay (C 2)|Lab|Reading|essay (C 2, 2)"_s);
        const auto id = school.reference.itemTitled(deadlinesPath.toString(), u"Lab"_s)->id;
        school.site.serve(assignmentsOf(2), { list({ assignment(23, u"Laboratory"_s) }) });
        school.sync();
        QCOMPARE(school.deadlines(), u"Essay|Laboratory|Reading"_s);
        QCOMPARE(school.reference.itemTitled(deadlinesPath.toString(), u"Laboratory"_s)->id, id);
    }

    void whatIsGoneIsRemovedOnceEverythingWasRead()
    {
        School school;
        school.furnish();
        ReferenceItem noted { .id = QUuid::createUuid(),
            .path = deadlinesPath.toString(),
            .title = u"Noted"_s,
            .source = u"librarian"_s };
        school.reference.upsertItem(noted);
        school.sync();
        school.site.serve(assignmentsOf(1), { list({ assignment(12, u"Reading"_s) }) });
        school.site.refuse(assignmentsOf(2), { 500, {}, {} });
        school.sync();
        QCOMPARE(school.deadlines(), u"Essay|Lab|Noted|Reading"_s);
        school.site.relent();
        school.sync();
        QCOMPARE(school.deadlines(), u"Lab|Noted|Reading"_s);

        // The course is over, and its assignments are no longer read.
        school.site.serve(coursesList, { list({ course(1) }) });
        school.now = start + 48h + std::chrono::days(30) - 1h;
        school.sync();
        QCOMPARE(school.deadlines(), u"Lab|Noted|Reading"_s);
        school.now += 2h;
        school.sync();
        QCOMPARE(school.deadlines(), u"Noted|Reading"_s);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CanvasServiceTest)
#include "CanvasServiceTest.moc"
