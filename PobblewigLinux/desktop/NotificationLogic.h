#pragma once

#include <QStringList>
#include <QVariantMap>

/// What a notification is for a server of these capabilities, in the terms that all of them share.
namespace pobblewig::NotificationLogic {

QString summary(const QString& title);

/// Long texts are cut: the chat has the whole of them.
QString body(const QString& text, const QStringList& capabilities);

/// A reply right in the notification where the server has it, else a button that opens the chat.
QStringList actions(const QStringList& capabilities);

QVariantMap hints();

/// Whether this action of the user means the chat.
bool opensChat(const QString& action);

/// What the user has written, as far as it is believed: nothing if it is blank.
QString reply(const QString& text);

} // namespace pobblewig::NotificationLogic
