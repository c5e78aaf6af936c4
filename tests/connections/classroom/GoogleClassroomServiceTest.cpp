#include "connections/classroom/GoogleClassroomService.h"

#include "connections/classroom/ClassroomDateParser.h"
#include "connections/classroom/ClassroomSyncLogic.h"
#include "foundation/ISO8601.h"
#include "support/Awaited.h"
#include "support/FakeService.h"
#include "support/Joined.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

const auto google = u"https://google.test/v1"_s;
const auto backend = u"https://backend.test"_s;

struct Classroom {
    TimePoint now { 1772352900s };
    Moment moment { .clock = [this] { return now; },
        .calendar =
            [] {
                return Calendar { QTimeZone("America/New_York"), QLocale(u"en_GB"_s) };
            } };
    FakeService site;
    ReferenceMemoryStore reference { std::nullopt, PlatformWording::linuxDesktop };
    std::optional<DataDirectory> directory;
    GoogleClassroomService service { { site, reference, moment, directory, google } };

    /// Below both roads.
    void serve(const QString& path, const QByteArray& body)
    {
        for (const auto& road : { u"/v1"_s, u"/classroom"_s })
            site.serve(road + path, { body });
    }
    void refuse(const QString& path, int status)
    {
        for (const auto& road : { u"/v1"_s, u"/classroom"_s })
            site.refuse(road + path, { status, {}, "no" });
    }

    Classroom()
    {
        site.onRequest = [this] { now += 1s; };
        serve(u"/courses"_s, R"({"courses":[
            {"id":"1","name":"Art","section":"Period 3","courseState":"ACTIVE"},
            {"id":"2","name":"Music"}, {"id":"3","name":"Past","courseState":"ARCHIVED"}]})");
        serve(u"/courses/1/courseWork"_s, R"({"courseWork":[
            {"courseId":"1","id":"11","title":"Sketch","maxPoints":10,
             "dueDate":{"year":2026,"month":3,"day":3},"dueTime":{"hours":4,"minutes":59}},
            {"courseId":"1","id":"12","title":"Plan","state":"DRAFT",
             "dueDate":{"year":2026,"month":3,"day":3}},
            {"courseId":"1","id":"13","title":"Whenever"}],"nextPageToken":""})");
        serve(u"/courses/2/courseWork"_s, R"({"courseWork":[
            {"courseId":"2","id":"21","title":"sketch","dueDate":{"year":2026,"month":3,"day":4}}]})");
        serve(u"/courses/1/courseWork/-/studentSubmissions"_s,
            R"({"studentSubmissions":[{"courseWorkId":"11","state":"TURNED_IN"}]})");
        serve(u"/courses/2/courseWork/-/studentSubmissions"_s, "{}");
    }

    /// Empty if all went well.
    QString sync(bool isSignedIn = false)
    {
        const auto outcome = awaited(
            isSignedIn ? service.syncViaBackend(u"session"_s, backend) : service.sync(u"token"_s));
        return outcome ? QString() : outcome.error().description();
    }

    QString deadlines() const
    {
        auto items = reference.items(deadlinesPath.toString());
        std::ranges::sort(items, {}, &ReferenceItem::title);
        return joined(items, [](const auto& item) { return item.title + u": "_s + item.summary; });
    }
};

} // namespace

class GoogleClassroomServiceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bothRoadsBringTheSame_data()
    {
        columns<bool, QString, QByteArray>("isSignedIn", "host", "bearer");
        row("token", false, u"google.test"_s, QByteArray("Bearer token"));
        row("signed in", true, u"backend.test"_s, QByteArray("Bearer session"));
    }
    void bothRoadsBringTheSame()
    {
        QFETCH(bool, isSignedIn);
        QFETCH(QString, host);
        QFETCH(QByteArray, bearer);
        Classroom classroom;
        QCOMPARE(classroom.sync(isSignedIn), QString());
        QCOMPARE(classroom.deadlines(),
            u"Sketch: Due 2 Mar 2026, 23:59 · Art · 10 pts · submitted|"
            "sketch (Music): Due 4 Mar 2026, 23:59 · Music · unsubmitted"_s);
        for (const auto& request : classroom.site.requests()) {
            QCOMPARE(request.url.host(), host);
            QCOMPARE(headerValue(request.headers, "Authorization"), bearer);
        }
        QCOMPARE(classroom.service.state().courseCount, 3);
        QCOMPARE(classroom.service.state().deadlineCount, 2);
    }

    void pagesAreFollowedToTheEnd()
    {
        Classroom classroom;
        classroom.serve(u"/courses"_s, R"({"courses":[{"id":"1"}],"nextPageToken":"a b&c"})");
        QCOMPARE(classroom.sync(), u"Classroom response not understood: the list has no end"_s);
        const auto& last = classroom.site.requests().back().url;
        QCOMPARE(last.toString(QUrl::FullyEncoded),
            google + u"/courses?pageSize=100&courseStates=ACTIVE&pageToken=a%20b%26c"_s);
    }

    void aFailureIsToldAndLosesNothing_data()
    {
        columns<int, QString>("status", "told");
        row("401", 401,
            u"Google Classroom token rejected (401) — re-authenticate with Classroom scope"_s);
        row("403", 403, u"Google Classroom missing scope (403): no"_s);
        row("500", 500, u"Classroom error 500: no"_s);
    }
    void aFailureIsToldAndLosesNothing()
    {
        QFETCH(int, status);
        QFETCH(QString, told);
        Classroom classroom;
        classroom.sync();
        const auto before = classroom.deadlines();
        // The token runs out in the middle.
        classroom.refuse(u"/courses/2/courseWork"_s, status);
        classroom.serve(u"/courses/1/courseWork"_s, "{}");
        QCOMPARE(classroom.sync(), told);
        QCOMPARE(classroom.service.state().lastError, told);
        QCOMPARE(classroom.deadlines(), before);
    }

    void whatMayNotBeReadCountsAsNotHandedIn()
    {
        Classroom classroom;
        classroom.refuse(u"/courses/1/courseWork/-/studentSubmissions"_s, 403);
        QCOMPARE(classroom.sync(), QString());
        QVERIFY(classroom.deadlines().contains(u"10 pts · unsubmitted"));
    }

    void noRoadIsAsked()
    {
        Classroom classroom;
        const std::pair<Task<GoogleClassroomService::Expected<ClassroomSyncState>>, QString>
            attempts[] { { classroom.service.sync({}), u"no Classroom access token"_s },
                { classroom.service.syncViaBackend({}, backend), u"no session token"_s },
                { classroom.service.syncViaBackend(u"s"_s, u"about:blank"_s),
                    u"bad backend URL: about:blank"_s } };
        (void)attempts;
        QVERIFY(classroom.site.requests().empty());
        QCOMPARE(classroom.service.state().lastError,
            u"Classroom not configured: bad backend URL: about:blank"_s);
    }

    void aDateIsReadAsTheServiceMeansIt_data()
    {
        using Date = ClassroomDate;
        using Time = std::optional<ClassroomTime>;
        columns<Date, Time, QString>("date", "time", "due");
        const Date winter { 2026, 3, 8 };
        row("without a time", winter, Time(), u"2026-03-09T03:59:00Z"_s);
        row("at midnight", winter, Time(ClassroomTime()), u"2026-03-08T00:00:00Z"_s);
        row("at a full hour", winter, Time(ClassroomTime { .hours = 22 }),
            u"2026-03-08T22:00:00Z"_s);
        row("a day that is none", Date { 2026, 2, 30 }, Time(), QString());
        row("a month", Date { 2026, 2, {} }, Time(), QString());
        row("an hour that is none", winter, Time(ClassroomTime { .hours = 25 }), QString());
    }
    void aDateIsReadAsTheServiceMeansIt()
    {
        QFETCH(ClassroomDate, date);
        QFETCH(std::optional<ClassroomTime>, time);
        QFETCH(QString, due);
        const Calendar newYork { QTimeZone("America/New_York") };
        const auto found =
            ClassroomDateParser::dueDate({ .dueDate = date, .dueTime = time }, newYork);
        QCOMPARE(found ? ISO8601::format(*found) : QString(), due);
    }

    void eachServiceRemindsOfItsOwn()
    {
        Classroom classroom;
        classroom.sync();
        const auto items = classroom.reference.items(deadlinesPath.toString());
        const auto candidates = [&](const std::set<QString>& reminded) {
            return joined(ClassroomSyncLogic::reminderCandidates(
                              items, classroom.now, 24 * 7, reminded, classroom.moment.calendar()),
                &ReferenceItem::title);
        };
        QCOMPARE(candidates({}), u"sketch (Music)"_s);
        QCOMPARE(candidates({ u"classroom-21-2026-03-01"_s }), QString());
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::GoogleClassroomServiceTest)
#include "GoogleClassroomServiceTest.moc"
