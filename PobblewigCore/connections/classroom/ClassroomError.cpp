#include "connections/classroom/ClassroomError.h"

namespace pobblewig {

ClassroomError ClassroomError::notConfigured(const QString& reason)
{
    return { Kind::notConfigured, reason };
}

ClassroomError ClassroomError::unreachable(const QString& reason)
{
    return { Kind::unreachable, reason };
}

ClassroomError ClassroomError::missingScope(const QString& body)
{
    return { Kind::missingScope, body };
}

ClassroomError ClassroomError::http(int status, const QString& body)
{
    return { Kind::http, body, status };
}

ClassroomError ClassroomError::decoding(const QString& reason)
{
    return { Kind::decoding, reason };
}

ClassroomError ClassroomError::invalidToken()
{
    return { Kind::invalidToken };
}

QString ClassroomError::description() const
{
    switch (kind) {
    case Kind::notConfigured:
        return QStringLiteral("Classroom not configured: %1").arg(detail);
    case Kind::unreachable:
        return QStringLiteral("Classroom could not be reached: %1").arg(detail);
    case Kind::missingScope:
        return QStringLiteral("Google Classroom missing scope (403): %1").arg(detail);
    case Kind::http:
        return QStringLiteral("Classroom error %1: %2").arg(QString::number(status), detail);
    case Kind::decoding:
        return QStringLiteral("Classroom response not understood: %1").arg(detail);
    case Kind::invalidToken:
        return QStringLiteral("Google Classroom token rejected (401) — re-authenticate with "
                              "Classroom scope");
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
