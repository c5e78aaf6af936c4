#include "memory/recall/MemoryFeature.h"

#include "memory/MemorySnapshot.h"
#include "memory/recall/MemoryTools.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

MemoryFeature::MemoryFeature(Surroundings surroundings)
    : m(std::move(surroundings))
    , m_memory(m.stores.memory)
    , m_retrieval(m_memory, m.situation)
    , m_desk({ .stores = m.stores,
          .moment = m.moment,
          .retrieval = m_retrieval,
          .directory = m.directory,
          .changed = [this] { changed(); },
          .deleting = m.deleting,
          .forgetting = m.forgetting,
          .forgotten = m.forgotten })
{
}

Task<> MemoryFeature::tick()
{
    m_memory.notes.pruneExpired(m.moment.now());
    co_return;
}

std::vector<QString> MemoryFeature::situation(TimePoint) const
{
    if (m.stores.settings.settings().memoryEnabled)
        return {};
    return { QStringLiteral(
        "The user has turned your memory off (Settings → Memory & Privacy): you "
        "have no remembered personal context and won't retain new memories from "
        "chats until they turn it back on. If asked what you remember, say "
        "memory is off and where to turn it back on.") };
}

std::vector<Tool> MemoryFeature::tools()
{
    return MemoryTools::tools({ m_retrieval, m_memory, m.moment.clock });
}

void MemoryFeature::publish(PublishedState& state) const
{
    state.set(MemorySnapshot::of(m_memory, m.moment.now()));
}

} // namespace pobblewig
