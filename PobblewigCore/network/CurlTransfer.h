#pragma once

#include "foundation/HTTPClient.h"
#include "network/CurlMulti.h"
#include "network/CurlRequest.h"

#include <QObject>
#include <QTimer>

#include <optional>

namespace pobblewig {

/// The head as a response without a body, then the body's bytes as they arrive.
using HTTPParts = Stream<std::variant<HTTPResponse, QByteArray>, TransportError>;

/// One request in progress. Passes on the answer in small pieces, each when the consumer waits for
/// it; in between nothing is read, so that a fast server waits instead of filling the memory.
/// Checks the size of the answer and whether it is complete. Deletes itself at its end, or as soon
/// as its parts are dropped, which closes the connection.
class CurlTransfer : public QObject {
public:
    /// The multi must outlive the owner, which deletes the transfers still in progress. Without a
    /// proxy's address the server is asked directly.
    static HTTPParts start(
        CurlMulti& multi, QObject& owner, HTTPRequest request, const QUrl& proxy);

    ~CurlTransfer() override;

private:
    CurlTransfer(CurlMulti& multi, QObject& owner, HTTPParts::Sink sink, HTTPRequest request,
        const QUrl& proxy);

    void setCallbacks();
    void startTimers();

    int beforeSending();
    int noteUpload(curl_off_t sent);
    size_t readHeader(QByteArrayView line);
    size_t readHead(QByteArrayView lastLine);
    size_t readBody(QByteArrayView bytes);
    size_t pause();
    void resume();
    void noteProgress();

    size_t fail(TransportError error);
    void finish(CURLcode result);
    long info(CURLINFO kind) const;
    void end(std::optional<TransportError> error);
    void drop();

    CurlMulti& m_multi;
    HTTPParts::Sink m_sink;
    CurlRequest m_request;
    bool m_usesProxy;
    QTimer m_silence;
    bool m_wasSent = false;
    curl_off_t m_sent = 0;
    bool m_hasHead = false;
    qsizetype m_headSize = 0;
    qsizetype m_received = 0;
    std::optional<TransportError> m_error;
    bool m_isOver = false;
};

} // namespace pobblewig
