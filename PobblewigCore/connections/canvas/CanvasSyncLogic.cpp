#include "connections/canvas/CanvasSyncLogic.h"

#include "connections/DatedItems.h"
#include "connections/DeadlineLogic.h"
#include "connections/ItemDetails.h"
#include "connections/SyncSchedule.h"
#include "connections/canvas/CanvasDateParser.h"

#include <algorithm>

namespace pobblewig {

namespace {

constexpr auto afterTerm = std::chrono::days(7);
constexpr auto beforeTerm = std::chrono::days(14);

bool isAvailable(const CanvasCourse& course)
{
    const auto& state = course.workflowState;
    return !course.accessRestrictedByDate && (!state || *state == u"available");
}

bool isInTerm(const CanvasCourse& course, TimePoint now)
{
    if (!course.term)
        return true;
    const auto start = CanvasDateParser::parse(course.term->startAt);
    const auto end = CanvasDateParser::parse(course.term->endAt);
    return (!end || now - *end <= afterTerm) && (!start || *start - now <= beforeTerm);
}

std::vector<CanvasCourse> matching(
    const std::vector<CanvasCourse>& courses, const std::function<bool(const CanvasCourse&)>& test)
{
    std::vector<CanvasCourse> chosen;
    std::ranges::copy_if(courses, std::back_inserter(chosen), test);
    return chosen;
}

CanvasEnrollmentScore score(const CanvasCourse& course)
{
    const auto& enrollments = course.enrollments;
    return enrollments && !enrollments->empty() ? enrollments->front() : CanvasEnrollmentScore();
}

QString courseSummary(const CanvasCourse& course)
{
    QStringList parts;
    if (const auto code = ItemDetails::words(course.courseCode))
        parts << *code;
    if (const auto term = course.term ? ItemDetails::words(course.term->name) : std::nullopt)
        parts << *term;
    if (const auto current = score(course).computedCurrentScore)
        parts << QStringLiteral("current score %1").arg(CanvasSyncLogic::formatScore(*current));
    return parts.join(QStringLiteral(" · "));
}

} // namespace

std::vector<CanvasCourse> CanvasSyncLogic::selectAssignmentCourses(
    const std::vector<CanvasCourse>& courses, TimePoint now)
{
    auto current = matching(courses,
        [now](const auto& course) { return isAvailable(course) && isInTerm(course, now); });
    return current.empty() ? matching(courses, isAvailable) : current;
}

QString CanvasSyncLogic::courseName(const CanvasCourse& course)
{
    return ItemDetails::words(course.name)
        .value_or(
            ItemDetails::words(course.courseCode).value_or(QStringLiteral("Untitled course")));
}

QString CanvasSyncLogic::courseCode(const CanvasCourse& course)
{
    return ItemDetails::words(course.courseCode).value_or(courseName(course));
}

ReferenceItem CanvasSyncLogic::courseItem(const CanvasCourse& course, TimePoint now)
{
    auto item = ItemDetails::newItem(coursesPath, courseName(course), source.name, now);
    item.summary = courseSummary(course);
    ItemDetails::add(item, source.courseKey, QString::number(course.id));
    ItemDetails::add(item, u"term", course.term ? course.term->name : std::nullopt);
    ItemDetails::add(item, u"workflowState", course.workflowState);
    ItemDetails::add(item, u"currentScore", score(course).computedCurrentScore);
    ItemDetails::add(item, u"currentGrade", score(course).computedCurrentGrade);
    return item;
}

std::optional<ReferenceItem> CanvasSyncLogic::deadlineItem(const CanvasAssignment& assignment,
    const CanvasCourse& course, TimePoint now, const Calendar& calendar)
{
    const auto due = CanvasDateParser::parse(assignment.dueAt);
    const auto& published = assignment.workflowState;
    if (!due || (published && *published != u"published"))
        return std::nullopt;
    const auto name =
        ItemDetails::words(assignment.name).value_or(QStringLiteral("Untitled assignment"));
    auto item = ItemDetails::newItem(deadlinesPath, name, source.name, now);
    const auto state = submissionState(assignment.submission);
    item.summary = DeadlineLogic::summary(
        { *due, courseName(course), assignment.pointsPossible, state }, calendar);
    ItemDetails::add(item, source.workKey, QString::number(assignment.id));
    ItemDetails::add(item, source.courseKey, QString::number(course.id));
    ItemDetails::add(item, u"course", courseName(course));
    ItemDetails::add(item, u"dueAt", CanvasDateParser::string(*due));
    ItemDetails::add(item, u"submissionState", state);
    ItemDetails::add(item, u"pointsPossible", assignment.pointsPossible);
    ItemDetails::add(
        item, u"score", assignment.submission ? assignment.submission->score : std::nullopt);
    ItemDetails::add(item, u"htmlURL", assignment.htmlURL);
    return item;
}

QString CanvasSyncLogic::formatScore(double score)
{
    return QString::number(score, 'f', 2);
}

QString CanvasSyncLogic::submissionState(const std::optional<CanvasSubmission>& submission)
{
    const auto state = submission ? submission->workflowState.value_or(QString()) : QString();
    const auto isDone = state == u"submitted" || state == u"graded";
    return isDone ? state : QStringLiteral("unsubmitted");
}

std::optional<TimePoint> CanvasSyncLogic::dueDate(const ReferenceItem& item)
{
    return DeadlineLogic::dueDate(item);
}

std::vector<ReferenceItem> CanvasSyncLogic::upcomingDeadlines(
    const std::vector<ReferenceItem>& items, TimePoint now, int withinDays, int limit)
{
    return DeadlineLogic::upcoming(items, now, withinDays, limit);
}

std::vector<ReferenceItem> CanvasSyncLogic::reminderCandidates(
    const std::vector<ReferenceItem>& items, TimePoint now, int windowHours,
    const std::set<QString>& remindedKeys, const Calendar& calendar)
{
    return DeadlineLogic::unsubmitted(items, now, windowHours, [&](const auto& item) {
        return item.source != u"classroom_sync"
            && !remindedKeys.contains(reminderKey(item, now, calendar));
    });
}

QString CanvasSyncLogic::reminderKey(
    const ReferenceItem& item, TimePoint now, const Calendar& calendar)
{
    return DeadlineLogic::reminderKey(u"canvas", source.workKey, item, { now, calendar });
}

bool CanvasSyncLogic::syncDue(
    std::optional<TimePoint> lastSyncAt, TimePoint now, int intervalMinutes)
{
    return SyncSchedule::syncDue(lastSyncAt, now, intervalMinutes);
}

} // namespace pobblewig
