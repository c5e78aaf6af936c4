#include "PobblewigDesktop/chat/past/ConversationExport.h"

#include <QCoreApplication>
#include <QDateTime>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ConversationExport)
};

QString speaker(const ChatMessage& message)
{
    return message.role == ChatMessage::Role::user ? Texts::tr("You") : QStringLiteral("Pobblewig");
}

} // namespace

QByteArray ConversationExport::markdown(
    const std::vector<ChatMessage>& messages, const Calendar& calendar)
{
    QString text;
    QDate shownDay;
    for (const auto& message : messages) {
        const auto moment = calendar.dateTime(message.timestamp);
        if (std::exchange(shownDay, moment.date()) != moment.date())
            text += QStringLiteral("# %1\n\n")
                        .arg(calendar.locale.toString(shownDay, QLocale::LongFormat));
        text +=
            QStringLiteral("**%1**, %2\n\n%3\n\n")
                .arg(speaker(message),
                    calendar.locale.toString(moment.time(), QLocale::ShortFormat), message.text);
    }
    return text.toUtf8();
}

QByteArray ConversationExport::json(const std::vector<ChatMessage>& messages)
{
    return json::text(messages);
}

} // namespace pobblewig
