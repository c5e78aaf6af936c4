#pragma once

#include "foundation/HTTPClient.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>

#include <optional>

namespace pobblewig {

/// The head, a response without its body, then the body's bytes as they arrive.
using HTTPParts = Stream<std::variant<HTTPResponse, QByteArray>, TransportError>;

/// One request on its way. Watches the size of the answer and whether it is whole; deletes itself
/// at its end, or at once when its parts are dropped, which closes the connection.
class HTTPExchange : public QObject {
public:
    /// The manager outlives the exchange.
    static HTTPParts start(QNetworkAccessManager& manager, HTTPRequest request);

private:
    HTTPExchange(QNetworkAccessManager& manager, HTTPRequest request, HTTPParts::Sink sink);

    void readHead();
    void readBody();
    void finish();
    bool isShort() const;
    void end(std::optional<TransportError> error);
    void drop();

    HTTPRequest m_request;
    HTTPParts::Sink m_sink;
    QNetworkReply* m_reply = nullptr;
    int m_status = 0;
    qint64 m_received = 0;
};

} // namespace pobblewig
