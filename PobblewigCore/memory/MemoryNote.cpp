#include "memory/MemoryNote.h"

namespace pobblewig {

QString displayName(MemoryCategory category)
{
    switch (category) {
    case MemoryCategory::preferences:
        return QStringLiteral("Preferences");
    case MemoryCategory::currentContext:
        return QStringLiteral("Current Context");
    case MemoryCategory::goals:
        return QStringLiteral("Goals");
    case MemoryCategory::aspirations:
        return QStringLiteral("Aspirations");
    case MemoryCategory::history:
        return QStringLiteral("History");
    case MemoryCategory::misc:
        return QStringLiteral("Misc");
    case MemoryCategory::journeys:
        return QStringLiteral("Journeys");
    }
    return {};
}

bool isExpired(const MemoryNote& note, TimePoint now)
{
    return note.isTemporary && note.expiresAt && *note.expiresAt <= now;
}

} // namespace pobblewig
