#include "PobblewigLinux/wayland/KWinActiveWindow.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QStandardPaths>

namespace pobblewig {

namespace {

const auto path = QStringLiteral("/com/pobblewig/app/ActiveWindow");
const auto scriptName = QStringLiteral("com.pobblewig.app.active-window");

/// The alternative names are those of Plasma 5.
const auto script =
    QStringLiteral("function tell(window) {\n"
                   "    const w = window || {};\n"
                   "    callDBus('%1', '%2', 'com.pobblewig.app.ActiveWindow', 'windowActivated',\n"
                   "        String(w.desktopFileName || ''), String(w.resourceClass || ''),\n"
                   "        String(w.resourceName || ''));\n"
                   "}\n"
                   "(workspace.windowActivated || workspace.clientActivated).connect(tell);\n"
                   "tell(workspace.activeWindow || workspace.activeClient);\n");

} // namespace

const QString KWinActiveWindow::service = QStringLiteral("org.kde.KWin");

KWinActiveWindow::KWinActiveWindow(QDBusConnection bus)
    : m_bus(std::move(bus))
    , m_watcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
    , m_script(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
          + QStringLiteral("/pobblewig-XXXXXX.js"))
{
    if (!m_script.open())
        return;
    m_script.write(script.arg(m_bus.baseService(), path).toUtf8());
    m_script.close();
    m_bus.registerObject(path, this, QDBusConnection::ExportScriptableSlots);
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) { follow(owner); });
    follow(m_bus.interface()->serviceOwner(service));
}

KWinActiveWindow::~KWinActiveWindow()
{
    m_bus.unregisterObject(path);
    call(QStringLiteral("unloadScript"), { scriptName });
}

std::optional<WindowIdentity> KWinActiveWindow::activeWindow()
{
    return m_window == WindowIdentity() ? std::nullopt : std::optional(m_window);
}

void KWinActiveWindow::windowActivated(
    const QString& applicationID, const QString& windowClass, const QString& instance)
{
    if (message().service() == m_owner)
        m_window = { applicationID, windowClass, instance };
}

void KWinActiveWindow::follow(const QString& owner)
{
    m_owner = owner;
    m_window = {};
    if (owner.isEmpty())
        return;
    // A script left by an earlier run that crashed would be kept instead of this one.
    call(QStringLiteral("unloadScript"), { scriptName });
    call(QStringLiteral("loadScript"), { m_script.fileName(), scriptName });
    call(QStringLiteral("start"), {});
}

void KWinActiveWindow::call(const QString& method, const QVariantList& arguments)
{
    auto message = QDBusMessage::createMethodCall(
        service, QStringLiteral("/Scripting"), QStringLiteral("org.kde.kwin.Scripting"), method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    m_bus.asyncCall(message);
}

} // namespace pobblewig
