#pragma once

#include "foundation/HTTPClient.h"

/// Describes transport failures to the user. The texts name the server, but neither the rest of the
/// address nor anything that was sent.
namespace pobblewig::TransportErrorLogic {

inline constexpr qint64 maximumBodySize = 64 * 1024 * 1024;
inline constexpr qsizetype maximumLineLength = 8 * 1024 * 1024;
inline constexpr qsizetype maximumLines = 1'000'000;

TransportError notAWebAddress(const QUrl& url);

TransportError serverNotFound(const QUrl& url);
/// The connection was refused.
TransportError nothingAnswers(const QUrl& url);
/// The reason is one of the kinds about certificates, or `notSecure`.
TransportError notSecure(TransportError::Kind reason, const QUrl& url);
TransportError proxyIsSilent(const QUrl& url);
/// The proxy wants to know who asks.
TransportError proxyRefuses(const QUrl& url);
TransportError connectionFailed(const QUrl& url);
/// The connection ended before an answer began.
TransportError answeredBadly(const QUrl& url);
TransportError notHTTP(const QUrl& url);
/// The connection ended before the answer did.
TransportError lostConnection(const QUrl& url);

/// Nothing arrived within the request's `timeout`.
TransportError wentSilent(const HTTPRequest& request);
/// The request exceeded its time limit.
TransportError tookTooLong(const HTTPRequest& request);
/// No answer began within this time.
TransportError beganTooLate(const QUrl& url, std::chrono::milliseconds limit);

TransportError headTooLarge(const QUrl& url);
TransportError bodyTooLarge(const QUrl& url);
TransportError lineTooLong(const QUrl& url);
TransportError tooManyLines(const QUrl& url);

} // namespace pobblewig::TransportErrorLogic
