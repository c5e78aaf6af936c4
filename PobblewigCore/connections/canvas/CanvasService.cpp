#include "connections/canvas/CanvasService.h"

#include "connections/ServiceAnswer.h"
#include "connections/canvas/CanvasReplies.h"
#include "connections/canvas/CanvasSyncLogic.h"

namespace pobblewig {

namespace {

/// A list of that many pages is no list.
constexpr int mostPages = 200;
constexpr auto shortestRest = std::chrono::minutes(10);

QString coursesRequest()
{
    return QStringLiteral("/api/v1/courses?per_page=100&include[]=term&include[]=total_scores");
}

QString assignmentsRequest(qint64 courseID)
{
    return QStringLiteral(
        "/api/v1/courses/%1/assignments?per_page=100&include[]=submission&order_by=due_at")
        .arg(courseID);
}

CanvasService::Expected<QUrl> address(const QString& baseURL, const QString& path)
{
    auto base = baseURL.trimmed();
    while (base.endsWith(u'/'))
        base.chop(1);
    const QUrl url(base + path);
    const auto isWeb = url.scheme() == u"https" || url.scheme() == u"http";
    if (!url.isValid() || !isWeb || url.host().isEmpty() || !url.userInfo().isEmpty())
        return tl::unexpected(
            CanvasError::notConfigured(QStringLiteral("bad base URL: %1").arg(baseURL)));
    return url;
}

/// Whether only this course is closed to the user.
bool concernsOneCourse(const CanvasError& error)
{
    return error.kind == CanvasError::Kind::http && (error.status == 403 || error.status == 404);
}

} // namespace

CanvasService::CanvasService(HTTPClient& http, ReferenceMemoryStore& reference,
    const Moment& moment, const std::optional<DataDirectory>& directory)
    : m_http(http)
    , m_moment(moment)
    , m_record({ CanvasSyncLogic::source, reference, directory, QStringLiteral("canvas.json"),
          QStringLiteral("canvas state") })
{
}

auto CanvasService::sync(QString baseURL, QString token) -> Task<Expected<CanvasSyncState>>
{
    const auto reading = co_await read(std::move(baseURL), std::move(token));
    co_await m_record.finishTaking(m_moment.now());
    if (!reading) {
        storeFailure(reading.error());
        co_return tl::unexpected(reading.error());
    }
    co_await m_record.sweep(*reading, m_moment.now());
    m_record.succeed(*reading, m_moment.now());
    co_return m_record.state();
}

auto CanvasService::fetchCourses(QString baseURL, QString token)
    -> Task<Expected<std::vector<CanvasCourse>>>
{
    return list<CanvasCourse>(std::move(baseURL), coursesRequest(), std::move(token));
}

auto CanvasService::fetchAssignments(QString baseURL, QString token, qint64 courseID)
    -> Task<Expected<std::vector<CanvasAssignment>>>
{
    return list<CanvasAssignment>(
        std::move(baseURL), assignmentsRequest(courseID), std::move(token));
}

auto CanvasService::read(QString baseURL, QString token) -> Task<Expected<Reading>>
{
    const auto courses = co_await fetchCourses(baseURL, token);
    if (!courses)
        co_return tl::unexpected(courses.error());
    co_await m_record.take(CanvasReplies::courseItems(*courses, m_moment.now()), m_moment.now());
    Reading reading { .courseCount = int(courses->size()) };
    std::optional<CanvasError> closed;
    for (const auto& course : CanvasSyncLogic::selectAssignmentCourses(*courses, m_moment.now())) {
        const auto outcome = co_await readCourse(baseURL, token, course, &reading);
        if (!outcome && !concernsOneCourse(outcome.error()))
            co_return tl::unexpected(outcome.error());
        if (!outcome)
            closed = outcome.error();
    }
    if (closed)
        co_return tl::unexpected(*closed);
    co_return reading;
}

auto CanvasService::readCourse(
    QString baseURL, QString token, CanvasCourse course, Reading* reading) -> Task<Expected<void>>
{
    const auto assignments = co_await fetchAssignments(baseURL, token, course.id);
    if (!assignments)
        co_return tl::unexpected(assignments.error());
    auto items =
        CanvasReplies::deadlineItems(*assignments, course, m_moment.now(), m_moment.calendar());
    reading->readCourses.insert(QString::number(course.id));
    reading->deadlineCount += int(items.size());
    for (const auto& assignment : *assignments)
        reading->seenWork.insert(QString::number(assignment.id));
    co_await m_record.take(std::move(items), m_moment.now());
    co_return Expected<void>();
}

auto CanvasService::get(QUrl url, QString token) -> Task<Expected<HTTPResponse>>
{
    const auto response = co_await m_http.send(ServiceAnswer::get(url, token));
    if (!response)
        co_return tl::unexpected(CanvasError::unreachable(response.error().description()));
    if (ServiceAnswer::isSuccess(*response))
        co_return *response;
    co_return tl::unexpected(CanvasReplies::error(*response, token, m_moment.now()));
}

template <typename Record>
auto CanvasService::list(QString baseURL, QString path, QString token)
    -> Task<Expected<std::vector<Record>>>
{
    const auto first = address(baseURL, path);
    if (!first)
        co_return tl::unexpected(first.error());
    std::vector<Record> records;
    auto next = std::optional(*first);
    for (int page = 0; next && page < mostPages; ++page) {
        const auto response = co_await get(*next, token);
        if (!response)
            co_return tl::unexpected(response.error());
        auto found = CanvasReplies::records<Record>(response->body);
        if (!found)
            co_return tl::unexpected(found.error());
        std::ranges::move(*found, std::back_inserter(records));
        next = ServiceAnswer::nextPage(*response, *next);
        if (next && next->isEmpty())
            co_return tl::unexpected(
                CanvasError::decoding(QStringLiteral("the next page is on another server")));
    }
    if (next)
        co_return tl::unexpected(CanvasError::decoding(QStringLiteral("the list has no end")));
    co_return records;
}

void CanvasService::storeFailure(const CanvasError& error)
{
    const auto now = m_moment.now();
    if (error.kind != CanvasError::Kind::throttled)
        return m_record.fail(error.description(), std::nullopt, now);
    const auto retryAt = error.retryAt.value_or(now + shortestRest);
    const auto calendar = m_moment.calendar();
    const auto time =
        calendar.locale.toString(calendar.dateTime(retryAt).time(), QLocale::ShortFormat);
    m_record.fail(
        QStringLiteral("%1, tries again at %2").arg(error.description(), time), retryAt, now);
}

} // namespace pobblewig
