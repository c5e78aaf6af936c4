#include "PobblewigDesktop/settings/ConnectionTexts.h"

#include "foundation/ThisComputer.h"
#include "settings/SettingForms.h"

#include <QCoreApplication>
#include <QUrl>

namespace pobblewig {

namespace {

using namespace std::chrono_literals;

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ConnectionTexts)
};

QString counted(int count, const QString& one, const QString& many)
{
    return count == 1 ? one : many.arg(count);
}

/// Relative within a day.
QString ago(TimePoint then, TimePoint now, const Calendar& calendar)
{
    const auto passed = now - then;
    if (passed < 1min)
        return Texts::tr("just now");
    if (passed < 1h)
        return counted(int(passed / 1min), Texts::tr("1 minute ago"), Texts::tr("%1 minutes ago"));
    if (passed < 24h)
        return counted(int(passed / 1h), Texts::tr("1 hour ago"), Texts::tr("%1 hours ago"));
    return calendar.moment(then);
}

} // namespace

QString ConnectionTexts::state(
    const ConnectionStatus& status, TimePoint now, const Calendar& calendar)
{
    if (status.isSyncing)
        return Texts::tr("Syncing…");
    if (!status.isWanted)
        return Texts::tr("Not connected.");
    if (status.error)
        return *status.error;
    if (!status.lastSyncAt)
        return Texts::tr("Connected. The first sync is about to begin.");
    return Texts::tr("Connected. Last sync %1: %2.")
        .arg(ago(*status.lastSyncAt, now, calendar), status.found);
}

QString ConnectionTexts::school(int courses, int deadlines)
{
    return QStringLiteral("%1, %2").arg(
        counted(courses, Texts::tr("1 course"), Texts::tr("%1 courses")),
        counted(deadlines, Texts::tr("1 deadline"), Texts::tr("%1 deadlines")));
}

QString ConnectionTexts::calendars(int events, int reminders)
{
    return QStringLiteral("%1, %2").arg(
        counted(events, Texts::tr("1 event"), Texts::tr("%1 events")),
        counted(reminders, Texts::tr("1 reminder"), Texts::tr("%1 reminders")));
}

std::optional<QString> ConnectionTexts::address(const QString& typed)
{
    const auto text = typed.trimmed();
    const auto address =
        text.contains(QStringLiteral("://")) ? text : QStringLiteral("https://") + text;
    const QUrl url(address, QUrl::StrictMode);
    const auto isHere =
        url.scheme() == u"http" && url.userInfo().isEmpty() && isThisComputer(url.host());
    return isHere || SettingForms::isSecureURL(address) ? std::optional(address) : std::nullopt;
}

} // namespace pobblewig
