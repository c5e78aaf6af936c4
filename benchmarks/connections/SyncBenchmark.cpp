// What a sync with a large school costs, beside parsing its answers alone, and how long it takes to
// tell a model what is due among many items.

#include "Figure.h"
#include "StallWatch.h"
#include "connections/calendars/CalendarSyncLogic.h"
#include "connections/calendars/CalendarsFeature.h"
#include "connections/canvas/CanvasFeature.h"
#include "foundation/ISO8601.h"
#include "support/Awaited.h"
#include "support/FakeKeychain.h"
#include "support/FakeService.h"
#include "support/ScratchDirectory.h"
#include "support/ScriptedCalendar.h"

#include <QCoreApplication>
#include <QCoroTimer>
#include <QElapsedTimer>
#include <QJsonDocument>

#include <sys/resource.h>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

constexpr int courseCount = 60;
constexpr int assignmentsEach = 50;
constexpr int situationItems = 20'000;
constexpr TimePoint now { 1772352900s };

const auto coursesList = QStringLiteral("/api/v1/courses");

/// Milliseconds of all threads.
double processorTime()
{
    rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto milliseconds = [](const timeval& time) {
        return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

QByteArray course(int number)
{
    return QStringLiteral(R"({"id":%1,"name":"Course %1","course_code":"C %1","account_id":1,
        "workflow_state":"available","uuid":"f2b5c1","default_view":"modules","time_zone":"UTC",
        "enrollments":[{"type":"student","role":"StudentEnrollment","computed_current_score":91.5}],
        "term":{"id":1,"name":"Spring","start_at":null,"end_at":null}})")
        .arg(number)
        .toUtf8();
}

/// With the description and the many fields that the service sends along.
QByteArray assignment(int number)
{
    const auto due = ISO8601::format(now + std::chrono::hours(number % 2000));
    auto text = QStringLiteral(R"({"id":%1,"name":"Homework %2","due_at":"%3","points_possible":10,
        "html_url":"https://canvas.test/courses/1/assignments/%1","workflow_state":"published",
        "submission":{"id":1,"workflow_state":"unsubmitted","score":null,"submitted_at":null},
        "description":"<p>%4</p>")")
                    .arg(QString::number(number), QString::number(number % assignmentsEach), due,
                        QStringLiteral("Read the chapter and answer. ").repeated(60))
                    .toUtf8();
    for (int field = 0; field < 40; ++field)
        text += ",\"field_" + QByteArray::number(field) + "\":\"a value of no interest\"";
    return text + '}';
}

QByteArray list(int count, int first, QByteArray (*make)(int))
{
    QByteArrayList records;
    for (int number = 0; number < count; ++number)
        records.append(make(first + number));
    return '[' + records.join(',') + ']';
}

/// Answers in a turn of the event loop of its own, as a network would.
class FarService : public FakeService {
public:
    Task<Reply> send(HTTPRequest request) override
    {
        co_await QCoro::sleepFor(0ms);
        co_return co_await FakeService::send(std::move(request));
    }
};

struct School {
    ScratchDirectory scratch;
    DataDirectory directory = scratch;
    Moment moment { [] { return now; }, [] { return Calendar(); } };
    FarService site;
    std::vector<QByteArray> bodies;
    ReferenceMemoryStore reference { directory, PlatformWording::linuxDesktop };
    CanvasService canvas { site, reference, moment, directory };

    School()
    {
        bodies.push_back(list(courseCount, 0, course));
        site.serve(coursesList, { bodies.back() });
        for (int number = 0; number < courseCount; ++number) {
            bodies.push_back(list(assignmentsEach, number * assignmentsEach, assignment));
            site.serve(QStringLiteral("%1/%2/assignments").arg(coursesList).arg(number),
                { bodies.back() });
        }
    }

    void sync()
    {
        const auto outcome =
            awaited(canvas.sync(QStringLiteral("https://canvas.test"), QStringLiteral("token")));
        if (!outcome || outcome->deadlineCount != courseCount * assignmentsEach)
            qFatal("the sync has failed");
    }
};

double parsing(const std::vector<QByteArray>& bodies)
{
    const auto before = processorTime();
    for (const auto& body : bodies) {
        if (QJsonDocument::fromJson(body).array().isEmpty())
            qFatal("not a list");
    }
    return processorTime() - before;
}

void measureSync()
{
    School school;
    const auto peer = parsing(school.bodies);
    for (const auto* which : { "first", "next" }) {
        const StallWatch stalls;
        const auto before = processorTime();
        school.sync();
        Figure { .measured = std::string(which) + " sync of 60 courses, 3,000 assignments",
            .value = processorTime() - before,
            .peer = "parsing the answers",
            .peerValue = peer,
            .most = 500 }
            .report();
        Figure { .measured = std::string("longest stall in the ") + which + " sync",
            .value = stalls.longest(),
            .most = 16 }
            .report();
    }
}

ReferenceItem item(int number, QStringView path, const QString& key)
{
    const auto time = ISO8601::format(now + std::chrono::minutes(7 * (number % 9000) - 20'000));
    return { .id = QUuid::createUuid(),
        .path = path.toString(),
        .title = QStringLiteral("Item %1").arg(number),
        .summary = QStringLiteral("Due soon · Course · 10 pts · unsubmitted"),
        .details = { { key, JSONValue(time) },
            { QStringLiteral("canvasAssignmentID"), JSONValue(QString::number(number)) },
            { QStringLiteral("submissionState"), JSONValue(QStringLiteral("unsubmitted")) } } };
}

std::vector<ReferenceItem> manyItems()
{
    std::vector<ReferenceItem> items;
    for (int number = 0; number < situationItems; ++number) {
        if (number % 3 == 0)
            items.push_back(item(number, deadlinesPath, QStringLiteral("dueAt")));
        else
            items.push_back(item(number, CalendarSyncLogic::eventsPath, QStringLiteral("startAt")));
    }
    return items;
}

void measureSituation()
{
    FarService site;
    FakeKeychain keychain;
    const std::optional<DataDirectory> directory;
    const Moment moment { [] { return now; }, [] { return Calendar(); } };
    SettingsStore settings(directory, keychain);
    ReferenceMemoryStore reference(directory, PlatformWording::linuxDesktop);
    awaited([](ReferenceMemoryStore* store) -> Task<> {
        co_await store->take({ .items = manyItems() });
    }(&reference));
    ScriptedCalendar calendar;
    const CanvasFeature canvas({ site, settings, reference, moment, {}, directory });
    const CalendarsFeature calendars({ settings, reference, calendar, directory }, moment);
    std::vector<double> times;
    for (int turn = 0; turn < 50; ++turn) {
        QElapsedTimer time;
        time.start();
        if (canvas.situation(now).size() + calendars.situation(now).size() < 2)
            qFatal("nothing is due");
        times.push_back(double(time.nsecsElapsed()) / 1e6);
    }
    Figure { .measured = "the lines about 20,000 dated items, first", .value = times.front() }
        .report();
    Figure { .measured = "the lines about 20,000 dated items", .value = median(times), .most = 2 }
        .report();
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    pobblewig::measureSync();
    pobblewig::measureSituation();
}
