#pragma once

#include "foundation/Task.h"

#include <QObject>

#include <vector>

namespace pobblewig {

/// A message of the buddy while nobody looks at the chat.
struct Notification {
    /// An answer that the user gives with one click.
    struct Answer {
        QString id;
        QString text;
    };

    /// Both are plain text.
    QString title;
    QString text;
    std::vector<Answer> answers = {};
};

/// The desktop's notifications. The user can open one, or reply to it, or give one of its answers.
class NotificationPresenting : public QObject {
    Q_OBJECT

public:
    /// Returns false if the desktop shows no notifications.
    virtual Task<bool> present(Notification notification) = 0;

    /// Withdraws all notifications that are still shown.
    virtual void withdraw() = 0;

Q_SIGNALS:
    /// The user wants to see the chat.
    void opened();

    /// The user has given the answer with this id.
    void answered(const QString& id);

    /// The user has replied in the notification itself.
    void replied(const QString& text);
};

} // namespace pobblewig
