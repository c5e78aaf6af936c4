#include "connections/canvas/CanvasError.h"

namespace pobblewig {

CanvasError CanvasError::notConfigured(const QString& detail)
{
    return { Kind::notConfigured, detail };
}

CanvasError CanvasError::unreachable(const QString& detail)
{
    return { Kind::unreachable, detail };
}

CanvasError CanvasError::http(int status, const QString& body)
{
    return { Kind::http, body, status };
}

CanvasError CanvasError::decoding(const QString& detail)
{
    return { Kind::decoding, detail };
}

CanvasError CanvasError::invalidToken()
{
    return { Kind::invalidToken };
}

CanvasError CanvasError::throttled(std::optional<TimePoint> until)
{
    return { .kind = Kind::throttled, .retryAt = until };
}

QString CanvasError::description() const
{
    switch (kind) {
    case Kind::notConfigured:
        return QStringLiteral("Canvas not configured: %1").arg(detail);
    case Kind::unreachable:
        return QStringLiteral("Canvas could not be reached: %1").arg(detail);
    case Kind::http:
        return QStringLiteral("Canvas error %1: %2").arg(QString::number(status), detail);
    case Kind::decoding:
        return QStringLiteral("Canvas response not understood: %1").arg(detail);
    case Kind::invalidToken:
        return QStringLiteral("Canvas token rejected (401) — generate a fresh token");
    case Kind::throttled:
        return QStringLiteral("Canvas is throttled");
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
