#pragma once

#include "presence/NotificationPresenting.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <map>
#include <optional>

namespace pobblewig {

/// The notifications of the session's notification server. Without a working server none are shown.
class DesktopNotifications : public NotificationPresenting {
    Q_OBJECT

public:
    explicit DesktopNotifications(QDBusConnection bus = QDBusConnection::sessionBus());

    Task<bool> present(Notification notification) override;
    void withdraw() override;

private Q_SLOTS:
    void invoke(uint id, const QString& action);
    void takeReply(uint id, const QString& text);
    void forget(uint id, uint reason);

private:
    Task<bool> learnCapabilities();
    Task<QDBusMessage> call(QString method, QVariantList arguments);
    void listen();

    QDBusConnection m_bus;
    bool m_isListening = false;
    /// Queried from the server once.
    std::optional<QStringList> m_capabilities;
    /// The ids of the answers of each that is shown.
    std::map<uint, QStringList> m_shown;
};

} // namespace pobblewig
