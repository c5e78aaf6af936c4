#pragma once

#include "memory/DailySession.h"
#include "memory/history/ChatArchive.h"

/// Links to what belongs to an entry of the memory.
namespace pobblewig::MemoryLinks {

/// Opens the conversation of a session. The current one has no name.
inline QString conversation(const DailySession& session)
{
    return QStringLiteral("pobblewig:past/")
        + (session.endedAt ? ChatArchive::name(session.dayKey, session.id) : QString());
}

} // namespace pobblewig::MemoryLinks
