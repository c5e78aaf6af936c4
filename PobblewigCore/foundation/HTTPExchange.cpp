#include "foundation/HTTPExchange.h"

#include "foundation/TransportErrorLogic.h"

#include <QIODevice>
#include <QNetworkRequest>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr qint64 readBufferSize = 256 * 1024;
/// What is read in one turn of the event loop.
constexpr qint64 pieceSize = 16 * 1024;

/// A body that is sent only once. When a connection closes before the answer, the manager rewinds
/// the body to send the request again, which works only while nothing has been read.
class SentOnceBody : public QIODevice {
public:
    explicit SentOnceBody(const QByteArray& bytes)
        : m_bytes(bytes)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    qint64 size() const override { return m_bytes.size(); }
    bool reset() override { return pos() == 0 && !m_bytes.isEmpty(); }

protected:
    qint64 readData(char* data, qint64 maximumSize) override
    {
        const auto piece = QByteArrayView(m_bytes).sliced(pos()).first(
            std::min(maximumSize, m_bytes.size() - pos()));
        std::ranges::copy(piece, data);
        return piece.size();
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
};

// A line break would start another header.
QByteArray headerValue(QByteArray value)
{
    return value.replace('\r', "").replace('\n', "").trimmed();
}

QNetworkRequest networkRequest(const HTTPRequest& request)
{
    QNetworkRequest result(request.url);
    result.setRawHeader("Accept-Encoding", "identity");
    for (const auto& [name, value] : request.headers)
        result.setRawHeader(name, headerValue(value));
    result.setTransferTimeout(int(request.timeout.count()));
    result.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    // One connection per stream: dropping a stream closes it, and reading slowly slows the server.
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    return result;
}

QNetworkReply* sent(QNetworkAccessManager& manager, const HTTPRequest& request)
{
    if (request.method == "GET")
        return manager.get(networkRequest(request));
    auto* body = new SentOnceBody(request.body);
    auto* reply = manager.sendCustomRequest(networkRequest(request), request.method, body);
    body->setParent(reply);
    return reply;
}

bool isWebAddress(const QUrl& url)
{
    const auto scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() && (scheme == u"http" || scheme == u"https");
}

std::vector<HTTPHeader> headers(const QNetworkReply& reply)
{
    std::vector<HTTPHeader> result;
    for (const auto& [name, value] : reply.rawHeaderPairs())
        result.push_back({ name, value });
    return result;
}

} // namespace

HTTPParts HTTPExchange::start(QNetworkAccessManager& manager, HTTPRequest request)
{
    HTTPParts parts;
    if (isWebAddress(request.url))
        new HTTPExchange(manager, std::move(request), parts.sink());
    else
        parts.sink().finish(TransportErrorLogic::notAWebAddress(request.url));
    return parts;
}

HTTPExchange::HTTPExchange(
    QNetworkAccessManager& manager, HTTPRequest request, HTTPParts::Sink sink)
    : QObject(&manager)
    , m_request(std::move(request))
    , m_sink(std::move(sink))
    , m_reply(sent(manager, m_request))
{
    m_reply->setReadBufferSize(readBufferSize);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HTTPExchange::readHead);
    connect(m_reply, &QNetworkReply::readyRead, this, &HTTPExchange::readBody);
    connect(m_reply, &QNetworkReply::finished, this, &HTTPExchange::readBody);
    if (const auto longest = m_request.longest) {
        QTimer::singleShot(
            *longest, this, [this] { end(TransportErrorLogic::tookTooLong(m_request)); });
    }
    m_sink.setOnDrop([exchange = QPointer(this)] {
        if (exchange)
            exchange->drop();
    });
}

void HTTPExchange::readHead()
{
    if (m_status != 0)
        return;
    m_status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_status != 0)
        m_sink.push(HTTPResponse { .status = m_status, .headers = headers(*m_reply), .body = {} });
}

void HTTPExchange::readBody()
{
    if (!m_reply)
        return;
    readHead();
    if (!m_sink.isWanted())
        return readWhenWanted();
    // A reply that failed is already closed.
    auto bytes = m_reply->isOpen() ? m_reply->read(pieceSize) : QByteArray();
    m_received += bytes.size();
    if (m_received > TransportErrorLogic::maximumBodySize)
        return end(TransportErrorLogic::bodyTooLarge(m_request.url));
    if (!bytes.isEmpty()) {
        m_sink.push(std::move(bytes));
        readWhenWanted();
    } else if (m_reply->isFinished()) {
        finish();
    }
}

void HTTPExchange::readWhenWanted()
{
    m_sink.setOnWanted([exchange = QPointer(this)] {
        if (exchange)
            exchange->readBody();
    });
}

void HTTPExchange::finish()
{
    const TransportErrorLogic::ReplyEnding ending {
        .error = m_reply->error(),
        .hasHead = m_status != 0,
        .isShort = isShort(),
        .isChunked = m_reply->hasRawHeader("Transfer-Encoding"),
    };
    end(TransportErrorLogic::failure(ending, m_request));
}

bool HTTPExchange::isShort() const
{
    const auto announced = m_reply->header(QNetworkRequest::ContentLengthHeader);
    const auto hasBody = m_request.method != "HEAD" && m_status != 204 && m_status != 304;
    return hasBody && announced.isValid() && m_received < announced.toLongLong();
}

void HTTPExchange::end(std::optional<TransportError> error)
{
    m_sink.finish(std::move(error));
    drop();
}

void HTTPExchange::drop()
{
    auto* reply = std::exchange(m_reply, nullptr);
    if (!reply)
        return;
    // The order matters: `abort` emits `finished`, and the manager's own connections must remain.
    QObject::disconnect(reply, nullptr, this, nullptr);
    reply->abort();
    reply->deleteLater();
    deleteLater();
}

} // namespace pobblewig
