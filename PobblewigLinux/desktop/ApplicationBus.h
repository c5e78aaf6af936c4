#pragma once

#include <QObject>
#include <QUrl>
#include <QVariant>

#include <optional>

namespace pobblewig {

/// The program on the session bus with the interface org.freedesktop.Application, which desktops
/// call.
///
/// Without a session bus no calls arrive, and none can be made. The first use connects to it, which
/// takes some milliseconds.
class ApplicationBus : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// Calls the process that owns the name, to open the link or else to come to the front. Returns
    /// false if no process accepted the call.
    bool handOver(const QString& name, const std::optional<QUrl>& link) const;

    /// Accepts calls from now on, under this name and also under the application's unless another
    /// process owns it.
    void publish(const QString& name);

public Q_SLOTS:
    // Named as in the interface.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(
        const QString& name, const QVariantList& parameters, const QVariantMap& platformData);

Q_SIGNALS:
    void activated();
    void openRequested(const QUrl& link);
    void quitRequested();
};

} // namespace pobblewig
