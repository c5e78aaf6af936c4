#include "memory/recall/MemoryRetrievalService.h"

namespace pobblewig {

MemoryRetrievalError MemoryRetrievalError::sectionNotFound(QString path)
{
    return { Kind::sectionNotFound, std::move(path) };
}

MemoryRetrievalError MemoryRetrievalError::periodNotFound(const QUuid& id)
{
    return { Kind::periodNotFound, json::keyText(id) };
}

MemoryRetrievalError MemoryRetrievalError::noActiveSession()
{
    return { Kind::noActiveSession, {} };
}

QString MemoryRetrievalError::description() const
{
    switch (kind) {
    case Kind::sectionNotFound:
        return QStringLiteral("No reference section at path: ") + subject;
    case Kind::periodNotFound:
        return QStringLiteral("No period summary with id: ") + subject;
    case Kind::noActiveSession:
        return QStringLiteral("No active daily session");
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
