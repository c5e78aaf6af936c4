#include "wire/ServerMessage.h"

#include "foundation/Text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace pobblewig {

namespace {

constexpr qsizetype mostCharacters = 500;

QString sentence(const QJsonValue& value)
{
    if (value.isString())
        return value.toString();
    if (value.isArray())
        return sentence(value.toArray().first());
    const auto object = value.toObject();
    for (const auto* const key : { "error", "detail", "message", "msg" }) {
        const auto found = sentence(object.value(QLatin1String(key)));
        if (!found.trimmed().isEmpty())
            return found;
    }
    return {};
}

QString withoutKeys(QString text)
{
    // A prefix such as "sk-", or simply long and without a blank, with digits among the letters.
    static const QRegularExpression key(QStringLiteral(
        "\\b(?:sk|pk|gsk|hf|key|xai|AIza)[-_]?[\\w*-]{8,}"
        "|(?<=[Bb]earer )\\S+"
        "|\\b(?=[\\w-]*\\d)(?=[\\w-]*[A-Za-z])(?=[^ ]*[A-Z]|[0-9a-f]{32})[\\w-]{32,}"));
    return text.replace(key, QStringLiteral("•••"));
}

/// The title of a page, since its text is for a browser.
QString pageTitle(const QString& page)
{
    static const QRegularExpression title(
        QStringLiteral("<title[^>]*>([^<]*)<"), QRegularExpression::CaseInsensitiveOption);
    return title.match(page).captured(1);
}

QString words(const QString& body)
{
    if (ServerMessage::isPage(body))
        return pageTitle(body);
    const auto json = QJsonDocument::fromJson(body.toUtf8());
    if (json.isArray())
        return sentence(json.array());
    return json.isObject() ? sentence(json.object()) : body;
}

} // namespace

QString ServerMessage::text(const QString& body)
{
    return Text::plainLine(withoutKeys(words(body)), mostCharacters);
}

bool ServerMessage::isPage(QStringView body)
{
    const auto begin = body.trimmed().first(std::min<qsizetype>(body.trimmed().size(), 20));
    return begin.startsWith(u"<!doctype html", Qt::CaseInsensitive)
        || begin.startsWith(u"<html", Qt::CaseInsensitive)
        || begin.startsWith(u"<head", Qt::CaseInsensitive);
}

} // namespace pobblewig
