#include "wire/ServerMessage.h"

#include "foundation/Text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace pobblewig {

namespace {

constexpr qsizetype mostCharacters = 500;
/// Enough for a cut key to lie beyond what is shown.
constexpr qsizetype longestSearched = 1000;

QString sentence(const QJsonValue& value)
{
    if (value.isString())
        return value.toString();
    if (value.isArray())
        return sentence(value.toArray().at(0));
    if (!value.isObject())
        return {};
    const auto object = value.toObject();
    for (const auto* const key : { "error", "detail", "message", "msg" }) {
        auto found = sentence(object.value(QLatin1String(key)));
        if (!found.trimmed().isEmpty())
            return found;
    }
    return {};
}

QString withoutKeys(QString text)
{
    // A prefix such as "sk-", or a long word of capitals, small letters and digits.
    static const QRegularExpression key(
        QStringLiteral("\\b(?:(?:sk|pk|gsk|hf|xai)[-_]|key-|AIza)[\\w*-]{8,}"
                       "|(?<=Bearer )\\S+"
                       "|\\b(?=\\w*\\d)(?=\\w*[A-Z])(?=\\w*[a-z])\\w{32,}"
                       "|\\b[0-9a-f]{32,}\\b"));
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
    return Text::plainLine(withoutKeys(words(body).left(longestSearched)), mostCharacters);
}

bool ServerMessage::isPage(QStringView body)
{
    const auto begin = body.trimmed().first(std::min<qsizetype>(body.trimmed().size(), 20));
    return begin.startsWith(u"<!doctype html", Qt::CaseInsensitive)
        || begin.startsWith(u"<html", Qt::CaseInsensitive)
        || begin.startsWith(u"<head", Qt::CaseInsensitive);
}

} // namespace pobblewig
