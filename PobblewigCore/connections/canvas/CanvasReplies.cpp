#include "connections/canvas/CanvasReplies.h"

#include "connections/ServiceAnswer.h"
#include "connections/canvas/CanvasSyncLogic.h"

#include <QJsonDocument>

namespace pobblewig {

template <typename Record>
tl::expected<std::vector<Record>, CanvasError> CanvasReplies::records(const QByteArray& body)
{
    QJsonParseError problem;
    const auto document = QJsonDocument::fromJson(body, &problem);
    if (document.isNull())
        return tl::unexpected(CanvasError::decoding(problem.errorString()));
    const auto value = document.isArray() ? QJsonValue(document.array()) : document.object();
    return json::decode<std::vector<Record>>(value).map_error(
        [](const auto& error) { return CanvasError::decoding(error.description()); });
}

template tl::expected<std::vector<CanvasCourse>, CanvasError> CanvasReplies::records(
    const QByteArray& body);
template tl::expected<std::vector<CanvasAssignment>, CanvasError> CanvasReplies::records(
    const QByteArray& body);

CanvasError CanvasReplies::error(const HTTPResponse& response, const QString& token, TimePoint now)
{
    const auto isOverLimit =
        response.status == 403 && response.body.contains("Rate Limit Exceeded");
    if (response.status == 429 || isOverLimit)
        return CanvasError::throttled(ServiceAnswer::retryAfter(response, now));
    if (response.status == 401)
        return CanvasError::invalidToken();
    return CanvasError::http(response.status, ServiceAnswer::excerpt(response, token));
}

std::vector<SchoolItem> CanvasReplies::courseItems(
    const std::vector<CanvasCourse>& courses, TimePoint now)
{
    std::vector<SchoolItem> items;
    for (const auto& course : courses) {
        if (!course.accessRestrictedByDate)
            items.push_back(
                { CanvasSyncLogic::courseItem(course, now), CanvasSyncLogic::courseCode(course) });
    }
    return items;
}

std::vector<SchoolItem> CanvasReplies::deadlineItems(
    const std::vector<CanvasAssignment>& assignments, const CanvasCourse& course, TimePoint now,
    const Calendar& calendar)
{
    std::vector<SchoolItem> items;
    for (const auto& assignment : assignments) {
        if (auto item = CanvasSyncLogic::deadlineItem(assignment, course, now, calendar))
            items.push_back({ *std::move(item), CanvasSyncLogic::courseCode(course) });
    }
    return items;
}

} // namespace pobblewig
