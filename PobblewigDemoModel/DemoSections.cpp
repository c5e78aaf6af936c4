#include "PobblewigDemoModel/DemoSections.h"

namespace pobblewig {

QString DemoSections::names()
{
    return QStringLiteral(
        "courses|professors|assignments|deadlines|exams|milestones|people|routines|decisions");
}

QString DemoSections::path(const QString& name)
{
    const auto section = name.toLower();
    for (const auto academic :
        { u"courses", u"professors", u"assignments", u"deadlines", u"exams" }) {
        if (section == QStringView(academic))
            return QStringLiteral("academics.") + section;
    }
    return section == u"milestones" ? QStringLiteral("projects.milestones") : name;
}

} // namespace pobblewig
