#pragma once

#include "PobblewigLinux/desktop/ActiveWindowProviding.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QTemporaryFile>

namespace pobblewig {

/// The active window of KWin, which reports it only to its own scripts: a small script calls this
/// object at every change. The script ends with this object and is restarted when KWin is.
class KWinActiveWindow : public QObject, public ActiveWindowProviding, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.pobblewig.app.ActiveWindow")

public:
    static const QString service;

    explicit KWinActiveWindow(QDBusConnection bus);
    ~KWinActiveWindow() override;
    Q_DISABLE_COPY_MOVE(KWinActiveWindow)

    std::optional<WindowIdentity> activeWindow() override;

public Q_SLOTS:
    /// For the script only. Empty texts mean that there is no window.
    Q_SCRIPTABLE void windowActivated(
        const QString& applicationID, const QString& windowClass, const QString& instance);

private:
    void follow(const QString& owner);
    void call(const QString& method, const QVariantList& arguments);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    QTemporaryFile m_script;
    /// KWin's unique name on the bus.
    QString m_owner;
    WindowIdentity m_window;
};

} // namespace pobblewig
