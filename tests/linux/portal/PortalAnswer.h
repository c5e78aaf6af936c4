#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>

#include <optional>

namespace pobblewig {

/// Does as a portal whose user answers at once, or never: the answer even arrives before the caller
/// knows that it was understood.
inline QDBusObjectPath answerToRequest(const QDBusConnection& bus, const QDBusMessage& question,
    std::optional<uint> response, const QVariantMap& results)
{
    const auto options = qdbus_cast<QVariantMap>(question.arguments().last());
    const auto caller = question.service().mid(1).replace(u'.', u'_');
    const auto token = options.value(QStringLiteral("handle_token")).toString();
    const auto path =
        QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(caller, token);
    auto answer = QDBusMessage::createSignal(
        path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
    answer.setArguments({ response.value_or(0), results });
    if (response)
        bus.send(answer);
    return QDBusObjectPath(path);
}

} // namespace pobblewig
