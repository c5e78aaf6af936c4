#pragma once

#include "foundation/HTTPClient.h"

#include <QNetworkReply>

#include <optional>

/// What went wrong on the way to a server, in words for the user. They name the server and neither
/// the rest of the address nor anything that was sent.
namespace pobblewig::TransportErrorLogic {

inline constexpr qint64 maximumBodySize = 64 * 1024 * 1024;
inline constexpr qsizetype maximumLineLength = 8 * 1024 * 1024;

struct ReplyEnding {
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    /// Whether a status came.
    bool hasHead = false;
    /// Fewer bytes came than were announced.
    bool isShort = false;
    /// The body was sent in chunks, of which the last one says that it is the last.
    bool isChunked = false;
};

/// Nothing if the whole answer came, whatever its status.
std::optional<TransportError> failure(const ReplyEnding& ending, const HTTPRequest& request);

/// Of a request with a longest time.
TransportError tookTooLong(const HTTPRequest& request);
TransportError notAWebAddress(const QUrl& url);
TransportError bodyTooLarge(const QUrl& url);
TransportError lineTooLong(const QUrl& url);

} // namespace pobblewig::TransportErrorLogic
