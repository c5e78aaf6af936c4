#pragma once

#include "connections/SchoolItem.h"
#include "connections/canvas/CanvasError.h"
#include "connections/canvas/CanvasRecords.h"
#include "foundation/Calendar.h"
#include "foundation/HTTPClient.h"

/// From the bytes of Canvas's answers to what is kept of them.
namespace pobblewig::CanvasReplies {

/// The records of one page.
template <typename Record>
tl::expected<std::vector<Record>, CanvasError> records(const QByteArray& body);

/// Tells a token that is refused from a site that asks for a rest.
CanvasError error(const HTTPResponse& response, const QString& token, TimePoint now);

/// Courses of which the site tells nothing are left out.
std::vector<SchoolItem> courseItems(const std::vector<CanvasCourse>& courses, TimePoint now);
std::vector<SchoolItem> deadlineItems(const std::vector<CanvasAssignment>& assignments,
    const CanvasCourse& course, TimePoint now, const Calendar& calendar);

} // namespace pobblewig::CanvasReplies
