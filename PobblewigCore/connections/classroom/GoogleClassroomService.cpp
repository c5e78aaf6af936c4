#include "connections/classroom/GoogleClassroomService.h"

#include "connections/ServiceAnswer.h"
#include "connections/classroom/ClassroomSyncLogic.h"

#include <QJsonDocument>

namespace pobblewig {

namespace {

using Kind = ClassroomError::Kind;

/// A list of that many pages is no list.
constexpr int mostPages = 200;

const auto activeCoursesPath = QStringLiteral("/courses?pageSize=100&courseStates=ACTIVE");

QString courseWorkPath(const QString& courseId)
{
    return QStringLiteral("/courses/%1/courseWork?pageSize=100&courseWorkStates=PUBLISHED"
                          "&orderBy=dueDate%20asc")
        .replace(QStringLiteral("%1"), courseId);
}

QString submissionsPath(const QString& courseId)
{
    return QStringLiteral("/courses/%1/courseWork/-/studentSubmissions?pageSize=100&userId=me")
        .arg(courseId);
}

ClassroomError refusal(const HTTPResponse& response, const QString& token)
{
    const auto body = ServiceAnswer::excerpt(response, token);
    if (response.status == 401)
        return ClassroomError::invalidToken();
    if (response.status == 403)
        return ClassroomError::missingScope(body);
    return ClassroomError::http(response.status, body);
}

template <typename Response>
tl::expected<Response, ClassroomError> decoded(const QByteArray& body)
{
    QJsonParseError problem;
    const auto document = QJsonDocument::fromJson(body, &problem);
    if (document.isNull())
        return tl::unexpected(ClassroomError::decoding(problem.errorString()));
    const auto value = document.isArray() ? QJsonValue(document.array()) : document.object();
    return json::decode<Response>(value).map_error(
        [](const auto& error) { return ClassroomError::decoding(error.description()); });
}

} // namespace

GoogleClassroomService::GoogleClassroomService(const Parts& parts)
    : m_http(parts.http)
    , m_moment(parts.moment)
    , m_baseURL(parts.baseURL)
    , m_record({ ClassroomSyncLogic::source, parts.reference, parts.directory,
          QStringLiteral("classroom.json"), QStringLiteral("classroom state") })
{
}

auto GoogleClassroomService::sync(QString accessToken) -> Task<Expected<ClassroomSyncState>>
{
    return syncBy(direct(accessToken));
}

auto GoogleClassroomService::syncViaBackend(QString sessionToken, QString backendBaseUrl)
    -> Task<Expected<ClassroomSyncState>>
{
    const QUrl backend(backendBaseUrl);
    const auto isWeb = backend.scheme() == u"https" || backend.scheme() == u"http";
    if (sessionToken.isEmpty())
        return syncBy(
            tl::unexpected(ClassroomError::notConfigured(QStringLiteral("no session token"))));
    if (!isWeb || backend.host().isEmpty())
        return syncBy(tl::unexpected(ClassroomError::notConfigured(
            QStringLiteral("bad backend URL: %1").arg(backendBaseUrl))));
    return syncBy(Road { backendBaseUrl + QStringLiteral("/classroom"), sessionToken });
}

auto GoogleClassroomService::fetchCourses(QString accessToken)
    -> Task<Expected<std::vector<ClassroomCourse>>>
{
    const auto road = direct(accessToken);
    if (!road)
        co_return tl::unexpected(road.error());
    co_return co_await list<ClassroomCoursesResponse>(*road, activeCoursesPath);
}

auto GoogleClassroomService::fetchCourseWork(QString accessToken, QString courseId)
    -> Task<Expected<std::vector<ClassroomCourseWork>>>
{
    const auto road = direct(accessToken);
    if (!road)
        co_return tl::unexpected(road.error());
    co_return co_await list<ClassroomCourseWorkResponse>(*road, courseWorkPath(courseId));
}

auto GoogleClassroomService::direct(const QString& accessToken) const
    -> tl::expected<Road, ClassroomError>
{
    if (accessToken.isEmpty())
        return tl::unexpected(
            ClassroomError::notConfigured(QStringLiteral("no Classroom access token")));
    return Road { m_baseURL, accessToken };
}

auto GoogleClassroomService::syncBy(tl::expected<Road, ClassroomError> road)
    -> Task<Expected<ClassroomSyncState>>
{
    Expected<Reading> reading = tl::unexpected(road ? ClassroomError() : road.error());
    if (road)
        reading = co_await read(*road);
    co_await m_record.finishTaking(m_moment.now());
    if (!reading) {
        m_record.fail(reading.error().description(), std::nullopt, m_moment.now());
        co_return tl::unexpected(reading.error());
    }
    co_await m_record.sweep(*reading, m_moment.now());
    m_record.succeed(*reading, m_moment.now());
    co_return m_record.state();
}

auto GoogleClassroomService::read(Road road) -> Task<Expected<Reading>>
{
    const auto courses = co_await list<ClassroomCoursesResponse>(road, activeCoursesPath);
    if (!courses)
        co_return tl::unexpected(courses.error());
    std::vector<SchoolItem> items;
    for (const auto& course : *courses)
        items.push_back({ ClassroomSyncLogic::courseItem(course, m_moment.now()),
            ClassroomSyncLogic::courseQualifier(course) });
    co_await m_record.take(std::move(items), m_moment.now());
    Reading reading { .courseCount = int(courses->size()) };
    for (const auto& course : ClassroomSyncLogic::selectActiveCourses(*courses)) {
        const auto outcome = co_await readCourse(road, course, &reading);
        if (!outcome)
            co_return tl::unexpected(outcome.error());
    }
    co_return reading;
}

auto GoogleClassroomService::readCourse(Road road, ClassroomCourse course, Reading* reading)
    -> Task<Expected<void>>
{
    const auto works = co_await list<ClassroomCourseWorkResponse>(road, courseWorkPath(course.id));
    if (!works)
        co_return tl::unexpected(works.error());
    const auto handedIn = co_await submissions(road, course.id);
    if (!handedIn)
        co_return tl::unexpected(handedIn.error());
    std::vector<SchoolItem> items;
    const auto now = m_moment.now();
    const auto calendar = m_moment.calendar();
    for (const auto& work : *works) {
        reading->seenWork.insert(work.id);
        if (auto item = ClassroomSyncLogic::deadlineItem(work, *handedIn, course, now, calendar))
            items.push_back({ *std::move(item), ClassroomSyncLogic::courseQualifier(course) });
    }
    reading->readCourses.insert(course.id);
    reading->deadlineCount += int(items.size());
    co_await m_record.take(std::move(items), now);
    co_return Expected<void>();
}

auto GoogleClassroomService::submissions(Road road, QString courseId)
    -> Task<Expected<std::vector<ClassroomSubmission>>>
{
    auto found = co_await list<ClassroomSubmissionsResponse>(road, submissionsPath(courseId));
    const auto isClosed = !found
        && (found.error().kind == Kind::missingScope
            || (found.error().kind == Kind::http && found.error().status == 404));
    if (isClosed)
        co_return std::vector<ClassroomSubmission>();
    co_return found;
}

auto GoogleClassroomService::get(Road road, QString path) -> Task<Expected<QByteArray>>
{
    const QUrl url(road.base + path);
    if (!url.isValid())
        co_return tl::unexpected(
            ClassroomError::notConfigured(QStringLiteral("bad Classroom path: %1").arg(path)));
    const auto response = co_await m_http.send(ServiceAnswer::get(url, road.token));
    if (!response)
        co_return tl::unexpected(ClassroomError::unreachable(response.error().description()));
    if (!ServiceAnswer::isSuccess(*response))
        co_return tl::unexpected(refusal(*response, road.token));
    co_return response->body;
}

template <typename Response>
auto GoogleClassroomService::list(Road road, QString path) -> Task<Expected<Records<Response>>>
{
    Records<Response> records;
    QString next;
    for (int page = 0; page < mostPages; ++page) {
        const auto body = co_await get(road, path + next);
        if (!body)
            co_return tl::unexpected(body.error());
        auto found = decoded<Response>(*body);
        if (!found)
            co_return tl::unexpected(found.error());
        std::ranges::move(found->records, std::back_inserter(records));
        if (found->nextPageToken.isEmpty())
            co_return records;
        next = QStringLiteral("&pageToken=")
            + QString::fromLatin1(QUrl::toPercentEncoding(found->nextPageToken));
    }
    co_return tl::unexpected(ClassroomError::decoding(QStringLiteral("the list has no end")));
}

} // namespace pobblewig
