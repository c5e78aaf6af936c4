#pragma once

#include "foundation/Stream.h"
#include "foundation/Task.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <tl/expected.hpp>

#include <chrono>
#include <optional>
#include <variant>
#include <vector>

namespace pobblewig {

struct HTTPHeader {
    QByteArray name;
    QByteArray value;
};

struct HTTPRequest {
    QByteArray method = "GET";
    QUrl url;
    std::vector<HTTPHeader> headers;
    QByteArray body;
    /// How long the connection may be silent before the request fails.
    std::chrono::milliseconds timeout = std::chrono::seconds(30);
    /// How long the whole exchange may take, even while data arrives.
    std::optional<std::chrono::milliseconds> longest = std::nullopt;
};

struct HTTPResponse {
    int status = 0;
    std::vector<HTTPHeader> headers;
    QByteArray body;
};

/// Why no complete answer arrived. Any HTTP status counts as an answer.
struct TransportError {
    enum class Kind {
        unreachable,
        notAWebAddress,
        hostNotFound,
        refused,
        /// The certificate is signed by nobody whom this computer trusts.
        untrusted,
        /// The certificate is not valid today.
        expired,
        /// The certificate is for another host.
        wrongHost,
        notSecure,
        proxyIsSilent,
        proxyRefuses,
        timedOut,
        truncated,
        tooLarge,
        notHTTP,
    };

    Kind kind = Kind::unreachable;
    QString text;

    const QString& description() const { return text; }
};

struct HTTPHead {
    int status = 0;
    std::vector<HTTPHeader> headers = {};
};

using HTTPLine = QByteArray;

/// The value of the first header of that name, whatever its case. Empty if there is none.
QByteArray headerValue(const std::vector<HTTPHeader>& headers, QByteArrayView name);

/// The head, then the lines of an event stream without their ends ("\n" or "\r\n"), blank lines and
/// comments left out. More is read only when the consumer waits for it. Dropping the stream closes
/// the connection.
using HTTPStream = Stream<std::variant<HTTPHead, HTTPLine>, TransportError>;

/// The program's only way to the network. Redirects are never followed; they are returned as
/// answers. A body over 64 MiB fails as `tooLarge`, and so does a stream with a line over 8 MiB or
/// over a million lines.
class HTTPClient {
public:
    virtual ~HTTPClient() = default;

    virtual Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest request) = 0;
    virtual HTTPStream stream(HTTPRequest request) = 0;
};

} // namespace pobblewig
