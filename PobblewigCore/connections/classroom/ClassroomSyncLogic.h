#pragma once

#include "connections/SchoolItem.h"
#include "connections/classroom/ClassroomRecords.h"
#include "foundation/Calendar.h"

/// Turns what Google Classroom tells into reference items, and reads them back.
namespace pobblewig::ClassroomSyncLogic {

inline constexpr QStringView coursesPath = pobblewig::coursesPath;
inline constexpr QStringView deadlinesPath = pobblewig::deadlinesPath;
inline constexpr SchoolSource source { u"classroom_sync", u"classroomCourseID",
    u"classroomCourseWorkID" };

/// The permissions that a token needs.
inline constexpr std::array<QStringView, 2> requiredScopes {
    u"https://www.googleapis.com/auth/classroom.courses.readonly",
    u"https://www.googleapis.com/auth/classroom.coursework.me.readonly"
};

/// Both, as a request for authorisation names them.
QString authorizeScopeString();

/// Those that are active; without a state a course is.
std::vector<ClassroomCourse> selectActiveCourses(const std::vector<ClassroomCourse>& courses);

/// The name, or "Untitled course".
QString courseName(const ClassroomCourse& course);

/// What tells a course from others of the same name.
QString courseQualifier(const ClassroomCourse& course);

ReferenceItem courseItem(const ClassroomCourse& course, TimePoint now);

/// Returns nothing for a draft and for work without a due date.
std::optional<ReferenceItem> deadlineItem(const ClassroomCourseWork& courseWork,
    const ClassroomCourse& course, TimePoint now, const Calendar& calendar);

/// The same, with what the student has handed in, as far as that may be read.
std::optional<ReferenceItem> deadlineItem(const ClassroomCourseWork& courseWork,
    const std::vector<ClassroomSubmission>& submissions, const ClassroomCourse& course,
    TimePoint now, const Calendar& calendar);

/// In the shortest form that says the same.
QString formatScore(double score);

/// Returns nothing if the date is missing or unreadable.
std::optional<TimePoint> dueDate(const ReferenceItem& item);

std::vector<ReferenceItem> upcomingDeadlines(const std::vector<ReferenceItem>& items, TimePoint now,
    int withinDays, int limit, const Calendar& calendar);

/// Classroom's own deadlines within the hours, unsubmitted and not yet reminded of today. Soonest
/// first.
std::vector<ReferenceItem> reminderCandidates(const std::vector<ReferenceItem>& items,
    TimePoint now, int windowHours, const std::set<QString>& remindedKeys,
    const Calendar& calendar);

/// "classroom-{id}-{day}".
QString reminderKey(const ReferenceItem& item, TimePoint now, const Calendar& calendar);

bool syncDue(std::optional<TimePoint> lastSyncAt, TimePoint now, int intervalMinutes);

} // namespace pobblewig::ClassroomSyncLogic
