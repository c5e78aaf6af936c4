#pragma once

#include "foundation/HTTPClient.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>

#include <optional>

namespace pobblewig {

/// The head as a response without a body, then the body's bytes as they arrive.
using HTTPParts = Stream<std::variant<HTTPResponse, QByteArray>, TransportError>;

/// One request in progress. Reads the answer in small pieces, each when the consumer waits for it,
/// so that a fast server waits instead of filling the memory. Checks the size of the answer and
/// whether it is complete. Deletes itself at its end, or as soon as its parts are dropped, which
/// closes the connection.
class HTTPExchange : public QObject {
public:
    /// The manager must outlive the exchange.
    static HTTPParts start(QNetworkAccessManager& manager, HTTPRequest request);

private:
    HTTPExchange(QNetworkAccessManager& manager, HTTPRequest request, HTTPParts::Sink sink);

    void readHead();
    void readBody();
    void readWhenWanted();
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
