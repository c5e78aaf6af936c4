#include "PobblewigDemoModel/HTTPRequestReader.h"

#include "foundation/ThisComputer.h"

#include <QUrl>

#include <algorithm>

namespace pobblewig {

namespace {

const QByteArray endOfHead("\r\n\r\n");

tl::unexpected<RequestRefusal> refusal(int status, const QString& reason)
{
    return tl::unexpected(RequestRefusal { status, reason });
}

bool isOfThisComputer(const QByteArray& url)
{
    return isThisComputer(QUrl::fromEncoded(url).host());
}

/// Accepts digits only, since servers disagree about signs and blanks.
tl::expected<qint64, RequestRefusal> bodySize(const QByteArray& value)
{
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    if (value.isEmpty() || !std::ranges::all_of(value, isDigit))
        return refusal(400, QStringLiteral("Content-Length is not a number"));
    bool fits = false;
    const auto size = value.toLongLong(&fits);
    if (!fits || size > HTTPRequestReader::bodyLimit)
        return refusal(413, QStringLiteral("the body is larger than 16 MiB"));
    return size;
}

} // namespace

HTTPRequestReader::Outcome HTTPRequestReader::feed(const QByteArray& piece)
{
    m_buffer += piece;
    if (!m_request) {
        const auto end = m_buffer.indexOf(endOfHead);
        if ((end < 0 ? m_buffer.size() : end) > headLimit)
            return refusal(431, QStringLiteral("the head is larger than 64 KiB"));
        if (end < 0)
            return std::nullopt;
        if (const auto read = readHead(m_buffer.first(end)); !read)
            return tl::unexpected(read.error());
        m_buffer.remove(0, end + endOfHead.size());
    }
    if (m_buffer.size() < m_bodySize)
        return std::nullopt;
    m_request->body = m_buffer.first(m_bodySize);
    return *std::move(m_request);
}

tl::expected<void, RequestRefusal> HTTPRequestReader::readHead(const QByteArray& head)
{
    const auto lines = head.split('\n');
    const auto words = lines.first().trimmed().split(' ');
    if (words.size() != 3 || !words[2].startsWith("HTTP/1."))
        return refusal(400, QStringLiteral("not an HTTP request"));
    for (const auto& line : lines.mid(1)) {
        const auto name = line.first(qMax(line.indexOf(':'), 0));
        if (const auto read = readField(name.toLower(), line.mid(name.size() + 1).trimmed()); !read)
            return tl::unexpected(read.error());
    }
    if (!m_hasHost)
        return refusal(400, QStringLiteral("no Host is named"));
    const auto& target = words[1];
    m_request = ReceivedRequest { words[0], target.split('?').first(), {} };
    return {};
}

tl::expected<void, RequestRefusal> HTTPRequestReader::readField(
    const QByteArray& name, const QByteArray& value)
{
    if (name == "transfer-encoding")
        return refusal(411, QStringLiteral("a body needs a Content-Length"));
    if (name == "origin" && !isOfThisComputer(value))
        return refusal(403, QStringLiteral("web pages from elsewhere are not answered"));
    if (name == "host") {
        if (!isOfThisComputer("http://" + value))
            return refusal(403, QStringLiteral("this server is for this computer only"));
        m_hasHost = true;
    }
    if (name != "content-length")
        return {};
    const auto size = bodySize(value);
    if (!size)
        return tl::unexpected(size.error());
    m_bodySize = *size;
    return {};
}

} // namespace pobblewig
