#pragma once

#include "presence/HotKeyProviding.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QVariantMap>

#include <chrono>

namespace pobblewig {

/// Hot keys by the desktop portal, for sessions where no program sees the keyboard by itself. The
/// user decides in the desktop's dialog which keys they become.
class PortalHotKeys : public HotKeyProviding {
    Q_OBJECT

public:
    /// `description` says in the dialog what the keys do; `patience` is for its reader.
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
    /// The keys last as long as this object of the portal; empty without keys.
    QString m_session;
};

} // namespace pobblewig
