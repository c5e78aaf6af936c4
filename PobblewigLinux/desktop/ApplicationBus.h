#pragma once

#include <QObject>
#include <QUrl>
#include <QVariant>

#include <optional>

namespace pobblewig {

/// The program on the session bus, as desktops call it: the interface org.freedesktop.Application.
///
/// Without a session bus nobody calls, and nobody can be called. Connecting to it takes some
/// milliseconds, which the first use spends.
class ApplicationBus : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// Calls whichever process has the name: to open the link, else to come forward. False if none
    /// took the call.
    bool handOver(const QString& name, const std::optional<QUrl>& link) const;

    /// Takes calls from now on: under this name, and under that of the application unless another
    /// process has it.
    void publish(const QString& name);

public Q_SLOTS:
    // Named as the interface has them.
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
