#pragma once

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <optional>

namespace pobblewig {

struct ReceivedRequest {
    QByteArray method;
    /// The path without the query.
    QByteArray path;
    QByteArray body;
};

/// Why a request is refused.
struct RequestRefusal {
    int status = 400;
    QString reason;
};

/// Assembles a request from the pieces in which it arrives. Refuses a head over 64 KiB or a body
/// over 16 MiB before it is held in memory, and any request that a web page from elsewhere has sent
/// or that calls this computer by another name.
class HTTPRequestReader {
public:
    static constexpr qsizetype headLimit = 64 * 1024;
    static constexpr qint64 bodyLimit = 16 * 1024 * 1024;

    using Outcome = std::optional<tl::expected<ReceivedRequest, RequestRefusal>>;

    /// Returns nothing while more data has to arrive. After an outcome no more data may be added.
    Outcome feed(const QByteArray& piece);

private:
    tl::expected<void, RequestRefusal> readHead(const QByteArray& head);
    tl::expected<void, RequestRefusal> readField(const QByteArray& name, const QByteArray& value);

    QByteArray m_buffer;
    std::optional<ReceivedRequest> m_request;
    qint64 m_bodySize = 0;
    bool m_hasHost = false;
};

} // namespace pobblewig
