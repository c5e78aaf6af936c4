#pragma once

#include "presence/NotificationPresenting.h"

#include <QStringList>
#include <QVariantMap>

/// Builds notifications for a server with these capabilities.
namespace pobblewig::NotificationLogic {

QString summary(const QString& title);

/// Cuts long texts; the chat shows them in full.
QString body(const QString& text, const QStringList& capabilities);

/// The answers, if there are any, and a reply: a field in the notification if the server supports
/// it, or else a button that opens the chat. Servers show the first ones where they lack the space.
QStringList actions(
    const QStringList& capabilities, const std::vector<Notification::Answer>& answers);

QVariantMap hints();

/// Whether this action opens the chat.
bool opensChat(const QString& action);

/// The user's reply, cut to a limit, or nothing if it is blank.
QString reply(const QString& text);

} // namespace pobblewig::NotificationLogic
