#pragma once

#include "presence/HotKeyProviding.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QVariantMap>

#include <chrono>

namespace pobblewig {

/// Hot keys through the desktop portal, for sessions in which programs cannot read the keyboard.
/// The user chooses the keys in the desktop's dialog.
class PortalHotKeys : public HotKeyProviding {
    Q_OBJECT

public:
    /// `description` explains the keys in the dialog; `patience` is the time for the user to
    /// answer.
    PortalHotKeys(QDBusConnection bus, QString description,
        std::chrono::milliseconds patience = std::chrono::minutes(2));

    Task<Outcome> assign(QKeySequence keys) override;

private Q_SLOTS:
    void activate(const QDBusObjectPath& session, const QString& shortcut, qulonglong time,
        const QVariantMap& options);

private:
    Task<QString> createSession();
    Task<std::optional<HotKeyError::Kind>> bind(QString session, QString trigger);
    void close(const QString& session);

    QDBusConnection m_bus;
    QString m_description;
    std::chrono::milliseconds m_patience;
    /// The portal session that holds the keys; empty without keys.
    QString m_session;
};

} // namespace pobblewig
