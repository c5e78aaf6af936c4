#include "connections/classroom/ClassroomSyncLogic.h"

#include "connections/DeadlineLogic.h"
#include "connections/ItemDetails.h"
#include "connections/SyncSchedule.h"
#include "connections/classroom/ClassroomDateParser.h"

#include <algorithm>

namespace pobblewig {

namespace {

const auto unsubmitted = QStringLiteral("unsubmitted");

QString stateOf(const ClassroomSubmission& submission)
{
    const auto state = submission.state.value_or(QString());
    if (state == u"RETURNED")
        return submission.assignedGrade ? QStringLiteral("graded") : QStringLiteral("submitted");
    return state == u"TURNED_IN" ? QStringLiteral("submitted") : unsubmitted;
}

QString submissionState(
    const std::vector<ClassroomSubmission>& submissions, const QString& courseWorkID)
{
    const auto found =
        std::ranges::find(submissions, courseWorkID, &ClassroomSubmission::courseWorkId);
    return found == submissions.end() ? unsubmitted : stateOf(*found);
}

} // namespace

QString ClassroomSyncLogic::authorizeScopeString()
{
    QStringList scopes;
    for (const auto scope : requiredScopes)
        scopes << scope.toString();
    return scopes.join(u' ');
}

std::vector<ClassroomCourse> ClassroomSyncLogic::selectActiveCourses(
    const std::vector<ClassroomCourse>& courses)
{
    std::vector<ClassroomCourse> active;
    std::ranges::copy_if(courses, std::back_inserter(active), [](const auto& course) {
        return course.courseState.value_or(QStringLiteral("ACTIVE")) == u"ACTIVE";
    });
    return active;
}

QString ClassroomSyncLogic::courseName(const ClassroomCourse& course)
{
    return ItemDetails::words(course.name).value_or(QStringLiteral("Untitled course"));
}

QString ClassroomSyncLogic::courseQualifier(const ClassroomCourse& course)
{
    return ItemDetails::words(course.section).value_or(courseName(course));
}

ReferenceItem ClassroomSyncLogic::courseItem(const ClassroomCourse& course, TimePoint now)
{
    auto item = ItemDetails::newItem(coursesPath, courseName(course), source.name, now);
    item.summary = ItemDetails::words(course.section).value_or(QString());
    ItemDetails::add(item, source.courseKey, course.id);
    ItemDetails::add(item, u"courseState", course.courseState);
    ItemDetails::add(item, u"enrollmentCode", course.enrollmentCode);
    ItemDetails::add(item, u"alternateLink", course.alternateLink);
    ItemDetails::add(item, u"descriptionHeading", course.descriptionHeading);
    return item;
}

std::optional<ReferenceItem> ClassroomSyncLogic::deadlineItem(const ClassroomCourseWork& courseWork,
    const ClassroomCourse& course, TimePoint now, const Calendar& calendar)
{
    return deadlineItem(courseWork, {}, course, now, calendar);
}

std::optional<ReferenceItem> ClassroomSyncLogic::deadlineItem(const ClassroomCourseWork& courseWork,
    const std::vector<ClassroomSubmission>& submissions, const ClassroomCourse& course,
    TimePoint now, const Calendar& calendar)
{
    const auto due = ClassroomDateParser::dueDate(courseWork, calendar);
    if (!due || courseWork.state.value_or(QString()) == u"DRAFT")
        return std::nullopt;
    const auto title =
        ItemDetails::words(courseWork.title).value_or(QStringLiteral("Untitled coursework"));
    auto item = ItemDetails::newItem(deadlinesPath, title, source.name, now);
    const auto state = submissionState(submissions, courseWork.id);
    item.summary =
        DeadlineLogic::summary({ *due, courseName(course), courseWork.maxPoints, state }, calendar);
    ItemDetails::add(item, source.courseKey, course.id);
    ItemDetails::add(item, source.workKey, courseWork.id);
    ItemDetails::add(item, u"course", courseName(course));
    ItemDetails::add(item, u"dueAt", ClassroomDateParser::string(*due));
    ItemDetails::add(item, u"submissionState", state);
    ItemDetails::add(item, u"workType", courseWork.workType.value_or(QStringLiteral("ASSIGNMENT")));
    ItemDetails::add(item, u"source", source.name.toString());
    ItemDetails::add(item, u"pointsPossible", courseWork.maxPoints);
    ItemDetails::add(item, u"alternateLink", courseWork.alternateLink);
    return item;
}

QString ClassroomSyncLogic::formatScore(double score)
{
    return DeadlineLogic::formatPoints(score);
}

std::optional<TimePoint> ClassroomSyncLogic::dueDate(const ReferenceItem& item)
{
    return DeadlineLogic::dueDate(item);
}

std::vector<ReferenceItem> ClassroomSyncLogic::upcomingDeadlines(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit,
    const Calendar&)
{
    return DeadlineLogic::upcoming(items, now, withinDays, limit);
}

std::vector<ReferenceItem> ClassroomSyncLogic::reminderCandidates(
    const std::vector<ReferenceItem>& items, TimePoint now, int windowHours,
    const std::set<QString>& remindedKeys, const Calendar& calendar)
{
    return DeadlineLogic::unsubmitted(items, now, windowHours, [&](const auto& item) {
        return item.source == source.name
            && !remindedKeys.contains(reminderKey(item, now, calendar));
    });
}

QString ClassroomSyncLogic::reminderKey(
    const ReferenceItem& item, TimePoint now, const Calendar& calendar)
{
    return DeadlineLogic::reminderKey(u"classroom", source.workKey, item, { now, calendar });
}

bool ClassroomSyncLogic::syncDue(
    std::optional<TimePoint> lastSyncAt, TimePoint now, int intervalMinutes)
{
    return SyncSchedule::syncDue(lastSyncAt, now, intervalMinutes);
}

} // namespace pobblewig
