#pragma once

#include "connections/SchoolItem.h"
#include "connections/canvas/CanvasRecords.h"
#include "foundation/Calendar.h"

#include <optional>
#include <vector>

/// Turns what Canvas tells into reference items, and reads them back.
namespace pobblewig::CanvasSyncLogic {

inline constexpr QStringView coursesPath = pobblewig::coursesPath;
inline constexpr QStringView deadlinesPath = pobblewig::deadlinesPath;
inline constexpr SchoolSource source { u"canvas_sync", u"canvasCourseID", u"canvasAssignmentID" };

/// The courses of the current terms, whose assignments are read: those that are available, whose
/// term ended at most 7 days ago and begins at most 14 days from now. If there are none, all that
/// are available. Courses that the site hides for their dates are never among them.
std::vector<CanvasCourse> selectAssignmentCourses(
    const std::vector<CanvasCourse>& courses, TimePoint now);

/// The name, else the code, else "Untitled course".
QString courseName(const CanvasCourse& course);

/// The code of the course, else its name.
QString courseCode(const CanvasCourse& course);

ReferenceItem courseItem(const CanvasCourse& course, TimePoint now);

/// Returns nothing for an assignment that is not published or has no readable due date.
std::optional<ReferenceItem> deadlineItem(const CanvasAssignment& assignment,
    const CanvasCourse& course, TimePoint now, const Calendar& calendar);

/// With two decimals.
QString formatScore(double score);

/// "submitted" and "graded" as they are; anything else, a missing submission too, is "unsubmitted".
QString submissionState(const std::optional<CanvasSubmission>& submission);

/// Returns nothing if the date is missing or unreadable.
std::optional<TimePoint> dueDate(const ReferenceItem& item);

/// The assignments due after `now` within the window, soonest first.
std::vector<ReferenceItem> upcomingDeadlines(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit);

/// The deadlines to speak of: due within the hours, unsubmitted, and not yet reminded of today.
/// Soonest first. Those of Google Classroom are not among them.
std::vector<ReferenceItem> reminderCandidates(const std::vector<ReferenceItem>& items,
    TimePoint now, int windowHours, const std::set<QString>& remindedKeys,
    const Calendar& calendar);

/// "canvas-{id}-{day}".
QString reminderKey(const ReferenceItem& item, TimePoint now, const Calendar& calendar);

bool syncDue(std::optional<TimePoint> lastSyncAt, TimePoint now, int intervalMinutes);

} // namespace pobblewig::CanvasSyncLogic
