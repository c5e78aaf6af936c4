#include "connections/ServiceAnswer.h"

#include "foundation/Text.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>

namespace pobblewig {

namespace {

constexpr qsizetype mostCharacters = 200;
constexpr auto longestRest = std::chrono::days(1);

bool isSameServer(const QUrl& a, const QUrl& b)
{
    return a.scheme() == b.scheme() && a.host() == b.host() && a.port() == b.port();
}

/// As in "Sun, 01 Mar 2026 08:20:00 GMT".
std::optional<TimePoint> webDate(const QString& text)
{
    auto date = QLocale::c().toDateTime(text, QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'"));
    if (!date.isValid())
        return std::nullopt;
    date.setTimeSpec(Qt::UTC);
    return TimePoint(std::chrono::milliseconds(date.toMSecsSinceEpoch()));
}

} // namespace

HTTPRequest ServiceAnswer::get(const QUrl& url, const QString& token)
{
    return {
        .url = url,
        .headers = { { "Authorization", "Bearer " + token.toUtf8() },
            { "Accept", "application/json" } },
        .longest = std::chrono::minutes(2),
    };
}

QString ServiceAnswer::excerpt(const HTTPResponse& response, const QString& token)
{
    auto text = QString::fromUtf8(
        response.body.first(std::min<qsizetype>(response.body.size(), 8 * mostCharacters)));
    if (!token.isEmpty())
        text.replace(token, QStringLiteral("…"));
    return Text::plainLine(text, mostCharacters);
}

std::optional<TimePoint> ServiceAnswer::retryAfter(const HTTPResponse& response, TimePoint now)
{
    const auto value = QString::fromLatin1(headerValue(response.headers, "Retry-After")).trimmed();
    bool isNumber = false;
    const auto seconds = value.toDouble(&isNumber);
    auto rest = std::chrono::milliseconds(0);
    if (isNumber && seconds >= 0)
        rest = std::chrono::seconds(qint64(std::min(seconds, 1e6)));
    else if (const auto date = webDate(value))
        rest = *date - now;
    if (rest <= std::chrono::milliseconds(0))
        return std::nullopt;
    return now + std::min<std::chrono::milliseconds>(rest, longestRest);
}

std::optional<QUrl> ServiceAnswer::nextPage(const HTTPResponse& response, const QUrl& current)
{
    static const QRegularExpression form(
        QStringLiteral("<([^>]*)>((?:\\s*;[^,]*)*);\\s*rel=\"?next\"?(?=\\s*(?:[;,]|$))"));
    const auto links = QString::fromLatin1(headerValue(response.headers, "Link"));
    const auto match = form.match(links);
    if (!match.hasMatch())
        return std::nullopt;
    const auto next = current.resolved(QUrl(match.captured(1)));
    return isSameServer(next, current) ? next : QUrl();
}

} // namespace pobblewig
