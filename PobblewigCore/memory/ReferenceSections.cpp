#include "memory/ReferenceSections.h"

namespace pobblewig {

namespace {

ReferenceSectionMeta section(QStringView path, QStringView title, QStringView summary)
{
    return {
        .path = path.toString(),
        .title = title.toString(),
        .summary = summary.toString(),
    };
}

} // namespace

std::vector<ReferenceSectionMeta> ReferenceSections::fixed(const PlatformWording& wording)
{
    return {
        section(u"academics.courses", u"Courses", u"Enrolled courses, codes, and status."),
        section(
            u"academics.professors", u"Professors", u"Professor notes and course associations."),
        section(u"academics.professorRatings", u"Professor ratings",
            u"Ratings, difficulty, and teaching-style notes."),
        section(u"academics.assignments", u"Assignments",
            u"Assignment briefs, requirements, and status."),
        section(u"academics.deadlines", u"Deadlines", u"Due dates and submission details."),
        section(u"academics.exams", u"Exams", u"Exam dates, coverage, and format."),
        section(u"academics.studyMaterials", u"Study materials", u"Resources, guides, and links."),
        section(u"academics.academicPolicies", u"Academic policies",
            u"Grading, attendance, and course policies."),
        section(u"academics.importantDates", u"Important dates",
            u"Academic calendar dates that matter."),
        section(u"projects.tallowchat", u"TallowChat", u"TallowChat project notes and decisions."),
        section(
            u"projects.nimbleRoost", u"Pobblewig app", u"This app's project notes and decisions."),
        section(u"projects.decisions", u"Project decisions",
            u"Cross-project technical and product decisions."),
        section(u"projects.milestones", u"Milestones", u"Project milestones and shipping targets."),
        section(u"projects.openQuestions", u"Open questions", u"Unresolved project questions."),
        section(u"projects.techArchitecture", u"Technical architecture",
            u"Architecture notes across projects."),
        section(u"people", u"People", u"People the user mentions and related context."),
        section(u"learning.goals", u"Learning goals", u"What the user is currently learning."),
        section(
            u"learning.progress", u"Learning progress", u"Concepts grasped, milestones reached."),
        section(u"learning.struggles", u"Learning struggles",
            u"Recurring sticking points and misconceptions."),
        section(u"routines", u"Routines", u"Recurring routines and schedules."),
        section(u"decisions", u"Decisions", u"Personal decisions and their reasoning."),
        section(u"rules", u"Rules reference", u"Reference notes about rules."),
        section(u"calendar.events", u"Calendar events", wording.calendarEvents),
        section(u"calendar.reminders", u"Reminders", wording.calendarReminders),
        section(u"misc", u"Misc reference", u"Reference information that fits nowhere else."),
    };
}

} // namespace pobblewig
