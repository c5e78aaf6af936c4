#pragma once

#include "foundation/HTTPClient.h"
#include "foundation/Time.h"

/// Reads what an online service answers.
namespace pobblewig::ServiceAnswer {

using Answer = tl::expected<HTTPResponse, TransportError>;

/// A request with a bearer token.
HTTPRequest get(const QUrl& url, const QString& token);

inline bool isSuccess(const HTTPResponse& response)
{
    return response.status >= 200 && response.status < 300;
}

/// The beginning of the body for the user, without the token, which some servers repeat.
QString excerpt(const HTTPResponse& response, const QString& token);

/// When a service that asked for a rest may be asked again, at most a day ahead. Reads seconds as
/// well as a date.
std::optional<TimePoint> retryAfter(const HTTPResponse& response, TimePoint now);

/// The address of the next page in a "Link" header. Returns nothing if there is none, and an empty
/// address if it leads to another server, which must not see the token.
std::optional<QUrl> nextPage(const HTTPResponse& response, const QUrl& current);

} // namespace pobblewig::ServiceAnswer
