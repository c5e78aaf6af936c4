#include "DiagnosticsInfo.h"

#include "foundation/ISO8601.h"

namespace pobblewig {

namespace {

QString section(const QString& title, const QStringList& lines)
{
    return title + u'\n' + lines.join(u'\n');
}

QString lastError(const std::optional<QString>& error, const std::optional<TimePoint>& time)
{
    if (!error || !time)
        return QStringLiteral("none");
    return ISO8601::format(*time) + QStringLiteral(", ") + *error;
}

QString lastRun(const std::optional<TimePoint>& time)
{
    return time ? ISO8601::format(*time) : QStringLiteral("none since the start");
}

} // namespace

QString DiagnosticsInfo::text() const
{
    const QStringList observed {
        QStringLiteral("Front application: ") + observation.frontmostBackend,
        QStringLiteral("Idle time: ") + observation.idleBackend,
    };
    QStringList sections { section(QStringLiteral("Observation"), observed + observation.notes) };
    if (!ruleVerdicts.isEmpty())
        sections.append(section(QStringLiteral("Rules"), ruleVerdicts));
    if (!proactiveVerdicts.isEmpty())
        sections.append(section(QStringLiteral("Speaking first"), proactiveVerdicts));
    sections.append(section(QStringLiteral("Memory tools"),
        { QStringLiteral("Calls since the start: %1").arg(totalToolCalls) }));
    sections.append(section(QStringLiteral("Librarian"),
        { QStringLiteral("Last run: ") + lastRun(librarianLastRunAt),
            QStringLiteral("Last error: ")
                + lastError(librarianLastError, librarianLastErrorAt) }));
    return sections.join(QStringLiteral("\n\n"));
}

} // namespace pobblewig
