#pragma once

#include "foundation/Task.h"

#include <QObject>

namespace pobblewig {

/// What the buddy has to say while nobody looks at the chat.
struct Notification {
    /// Plain text, both.
    QString title;
    QString text;
};

/// The desktop's notifications. The user can open one, or reply to it.
class NotificationPresenting : public QObject {
    Q_OBJECT

public:
    /// False if the desktop shows none.
    virtual Task<bool> present(Notification notification) = 0;

    /// Takes back all that are still shown.
    virtual void withdraw() = 0;

Q_SIGNALS:
    /// The user wants to see the chat.
    void opened();

    /// The user has answered right in the notification.
    void replied(const QString& text);
};

} // namespace pobblewig
