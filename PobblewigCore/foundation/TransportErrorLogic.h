#pragma once

#include "foundation/HTTPClient.h"

#include <QNetworkReply>

#include <optional>

/// Describes transport failures to the user. The texts name the server, but neither the rest of the
/// address nor anything that was sent.
namespace pobblewig::TransportErrorLogic {

inline constexpr qint64 maximumBodySize = 64 * 1024 * 1024;
inline constexpr qsizetype maximumLineLength = 8 * 1024 * 1024;
inline constexpr qsizetype maximumLines = 1'000'000;

struct ReplyEnding {
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    /// Whether a status arrived.
    bool hasHead = false;
    /// Whether fewer bytes arrived than were announced.
    bool isShort = false;
    /// Whether the body was sent in chunks, the last of which marks the end.
    bool isChunked = false;
};

/// Returns nothing if the whole answer arrived, whatever its status.
std::optional<TransportError> failure(const ReplyEnding& ending, const HTTPRequest& request);

/// The error of a request that exceeded its time limit.
TransportError tookTooLong(const HTTPRequest& request);
/// The error of an answer that has not begun within this time.
TransportError beganTooLate(const QUrl& url, std::chrono::milliseconds limit);
TransportError notAWebAddress(const QUrl& url);
TransportError bodyTooLarge(const QUrl& url);
TransportError lineTooLong(const QUrl& url);
TransportError tooManyLines(const QUrl& url);

} // namespace pobblewig::TransportErrorLogic
