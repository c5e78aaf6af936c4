#include "PobblewigDesktop/diagnostics/DiagnosticsReport.h"

#include "foundation/EnumNames.h"
#include "foundation/ISO8601.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QSysInfo>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr qsizetype longestToolName = 40;

QString none()
{
    return QStringLiteral("none");
}

QString section(const QString& title, const QStringList& lines)
{
    return title + u'\n' + (lines.isEmpty() ? none() : lines.join(u'\n'));
}

QString time(const std::optional<TimePoint>& time)
{
    return time ? ISO8601::format(*time) : none();
}

/// By number, since the user has named them.
QStringList rules(const QStringList& verdicts)
{
    QStringList lines;
    for (const auto& verdict : verdicts) {
        const auto outcome =
            std::max(verdict.lastIndexOf(u": WOULD FIRE"), verdict.lastIndexOf(u": silent, "));
        lines.append(
            QString::number(lines.size() + 1) + (outcome < 0 ? QString() : verdict.mid(outcome)));
    }
    return lines;
}

/// A model that asks for a tool that does not exist may have put anything into its name.
QString toolName(const QString& name)
{
    const auto isPlain = [](QChar each) {
        return each == u'_' || (each.unicode() < 128 && each.isLetterOrNumber());
    };
    return name.size() <= longestToolName && std::ranges::all_of(name, isPlain)
        ? name
        : QStringLiteral("unknown");
}

QStringList toolCalls(const std::vector<MemoryToolLogEntry>& calls)
{
    QStringList lines;
    for (const auto& call : calls)
        lines.append(QStringLiteral("%1 %2 %3")
                         .arg(ISO8601::format(call.timestamp), toolName(call.name),
                             call.ok ? QStringLiteral("ok") : QStringLiteral("failed")));
    return lines;
}

QString milliseconds(const std::optional<std::chrono::milliseconds>& time)
{
    return time ? QStringLiteral("%1 ms").arg(time->count()) : none();
}

QStringList requests(const std::vector<RequestRecord>& requests)
{
    QStringList lines;
    for (const auto& request : requests)
        lines.append(QStringLiteral("%1 %2 %3, first %4, last %5, tokens %6 + %7, %8, status %9")
                         .arg(ISO8601::format(request.begunAt), EnumNames::text(request.use),
                             request.modelID, milliseconds(request.firstToken),
                             milliseconds(request.lastToken))
                         .arg(request.promptTokens)
                         .arg(request.completionTokens)
                         .arg(EnumNames::text(request.outcome))
                         .arg(request.status));
    return lines;
}

QStringList files(const std::vector<DataFile>& files)
{
    QStringList lines;
    for (const auto& file : files)
        lines.append(
            QStringLiteral("%1, %2 bytes, changed %3")
                .arg(file.name, QString::number(file.bytes), ISO8601::format(file.changedAt)));
    return lines;
}

QStringList storage(const StorageState& storage)
{
    QStringList lines { storage.problem ? QStringLiteral("Something cannot be saved")
                                        : QStringLiteral("Everything can be saved") };
    for (const auto& [name, reason] : storage.unreadable)
        lines.append(QStringLiteral("Cannot be read: ") + name);
    return lines;
}

} // namespace

QString DiagnosticsReport::text(const DiagnosticsSnapshot& snapshot)
{
    const auto& info = snapshot.info;
    const QStringList observed {
        QStringLiteral("Front application: ") + info.observation.frontmostBackend,
        QStringLiteral("Idle time: ") + info.observation.idleBackend,
    };
    const QStringList sections {
        section(QStringLiteral("Versions"), versions()),
        section(QStringLiteral("Observation"), observed + info.observation.notes),
        section(QStringLiteral("Storage"), storage(snapshot.storage)),
        section(QStringLiteral("Keyring"), { EnumNames::text(snapshot.keyring) }),
        section(QStringLiteral("Requests"), requests(snapshot.requests)),
        section(QStringLiteral("Librarian"),
            { QStringLiteral("Last run: ") + time(info.librarianLastRunAt),
                QStringLiteral("Last error: ") + time(info.librarianLastErrorAt) }),
        section(QStringLiteral("Rules"), rules(info.ruleVerdicts)),
        section(QStringLiteral("Tool calls"), toolCalls(snapshot.toolCalls)),
        section(QStringLiteral("Files"), files(snapshot.files)),
    };
    return sections.join(QStringLiteral("\n\n")) + u'\n';
}

QStringList DiagnosticsReport::versions()
{
    return { QStringLiteral("Pobblewig ") + QCoreApplication::applicationVersion(),
        QStringLiteral("Qt ") + QLatin1String(qVersion()),
        QStringLiteral("%1, %2").arg(QSysInfo::prettyProductName(), QSysInfo::kernelVersion()),
        QStringLiteral("Platform: ") + QGuiApplication::platformName() };
}

} // namespace pobblewig
