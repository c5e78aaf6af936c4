#include "PobblewigLinux/desktop/NotificationLogic.h"

#include "foundation/Text.h"

#include <QCoreApplication>

namespace pobblewig {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(NotificationLogic)
};

constexpr qsizetype longestTitle = 80;
constexpr qsizetype longestBody = 300;
constexpr qsizetype longestReply = 4000;

const auto inlineReply = QStringLiteral("inline-reply");

QString shortened(const QString& text, qsizetype length)
{
    const auto kept = Text::firstCharacters(text, length);
    return kept == text ? text : kept + u'…';
}

} // namespace

QString NotificationLogic::summary(const QString& title)
{
    return shortened(title.simplified(), longestTitle);
}

QString NotificationLogic::body(const QString& text, const QStringList& capabilities)
{
    const auto body = shortened(text.trimmed(), longestBody);
    return capabilities.contains(QStringLiteral("body-markup")) ? body.toHtmlEscaped() : body;
}

QStringList NotificationLogic::actions(
    const QStringList& capabilities, const std::vector<Notification::Answer>& answers)
{
    if (!capabilities.contains(QStringLiteral("actions")))
        return {};
    const auto reply =
        capabilities.contains(inlineReply) ? inlineReply : QStringLiteral("open-chat");
    QStringList actions { QStringLiteral("default"), Texts::tr("Open chat") };
    for (const auto& [id, text] : answers)
        actions << id << text;
    return actions << reply << Texts::tr("Reply");
}

QVariantMap NotificationLogic::hints()
{
    return {
        { QStringLiteral("desktop-entry"), QStringLiteral("com.pobblewig.app") },
        { QStringLiteral("category"), QStringLiteral("im.received") },
        // The program plays its own sound.
        { QStringLiteral("suppress-sound"), true },
        { QStringLiteral("x-kde-reply-placeholder-text"), Texts::tr("Reply…") },
    };
}

bool NotificationLogic::opensChat(const QString& action)
{
    return action == u"default" || action == u"open-chat";
}

QString NotificationLogic::reply(const QString& text)
{
    return Text::firstCharacters(text.trimmed(), longestReply);
}

} // namespace pobblewig
