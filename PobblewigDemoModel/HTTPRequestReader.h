#pragma once

#include <QByteArray>
#include <QString>

#include <tl/expected.hpp>

#include <optional>

namespace pobblewig {

struct ReceivedRequest {
    QByteArray method;
    /// Without the query.
    QByteArray path;
    QByteArray body;
};

/// Why a request is not answered with what it asks for.
struct RequestRefusal {
    int status = 400;
    QString reason;
};

/// Puts a request together from the pieces in which it arrives, and refuses one that claims to be
/// larger than 64 KiB of head or 16 MiB of body before it is held in memory.
class HTTPRequestReader {
public:
    static constexpr qsizetype headLimit = 64 * 1024;
    static constexpr qint64 bodyLimit = 16 * 1024 * 1024;

    using Outcome = std::optional<tl::expected<ReceivedRequest, RequestRefusal>>;

    /// Nothing while more has to arrive. After an outcome there is nothing more to feed.
    Outcome feed(const QByteArray& piece);

private:
    tl::expected<void, RequestRefusal> readHead(const QByteArray& head);

    QByteArray m_buffer;
    std::optional<ReceivedRequest> m_request;
    qint64 m_bodySize = 0;
};

} // namespace pobblewig
