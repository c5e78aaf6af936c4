#include "PobblewigDesktop/diagnostics/DiagnosticsTexts.h"

#include "PobblewigDesktop/pages/LaneTexts.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(DiagnosticsTexts)
};

QString seconds(const std::optional<std::chrono::milliseconds>& time, const QLocale& locale)
{
    return time ? Texts::tr("%1 s").arg(locale.toString(double(time->count()) / 1000, 'f', 1))
                : QString();
}

QString outcome(const RequestRecord& request)
{
    switch (request.outcome) {
    case RequestRecord::Outcome::underWay:
        return Texts::tr("under way");
    case RequestRecord::Outcome::answered:
        return Texts::tr("answered");
    case RequestRecord::Outcome::cutOff:
        return Texts::tr("cut off at its limit");
    case RequestRecord::Outcome::failed:
        return Texts::tr("failed: %1").arg(request.failure);
    case RequestRecord::Outcome::stopped:
        return Texts::tr("stopped");
    }
    Q_UNREACHABLE();
}

} // namespace

QString DiagnosticsTexts::time(TimePoint at, const Calendar& calendar)
{
    return calendar.locale.toString(calendar.dateTime(at), QLocale::ShortFormat);
}

QString DiagnosticsTexts::lines(const QStringList& lines, const QString& none)
{
    return lines.isEmpty() ? none : lines.join(QChar(QChar::LineSeparator));
}

QString DiagnosticsTexts::storage(const StorageState& storage)
{
    QStringList told { storage.problem.value_or(Texts::tr("Everything can be saved.")) };
    for (const auto& [name, reason] : storage.unreadable)
        told.append(Texts::tr("%1 cannot be read: %2").arg(name, reason));
    return lines(told);
}

QString DiagnosticsTexts::librarian(const DiagnosticsInfo& info, const Calendar& calendar)
{
    QStringList told { info.librarianLastRunAt
            ? Texts::tr("Last run: %1").arg(time(*info.librarianLastRunAt, calendar))
            : Texts::tr("It has not run since the start.") };
    if (info.librarianLastError && info.librarianLastErrorAt)
        told.append(Texts::tr("Last error, %1: %2")
                        .arg(time(*info.librarianLastErrorAt, calendar), *info.librarianLastError));
    return lines(told);
}

QStringList DiagnosticsTexts::requestColumns()
{
    return { Texts::tr("Time"), Texts::tr("For"), Texts::tr("Model"), Texts::tr("First word"),
        Texts::tr("Last word"), Texts::tr("Tokens"), Texts::tr("Outcome") };
}

QStringList DiagnosticsTexts::request(const RequestRecord& request, const Calendar& calendar)
{
    const auto& locale = calendar.locale;
    return { time(request.begunAt, calendar), LaneTexts::name(request.use), request.modelID,
        seconds(request.firstToken, locale), seconds(request.lastToken, locale),
        QStringLiteral("%1 + %2").arg(
            locale.toString(request.promptTokens), locale.toString(request.completionTokens)),
        outcome(request) };
}

} // namespace pobblewig
