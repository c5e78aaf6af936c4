#include "memory/librarian/LibrarianFeature.h"

namespace pobblewig {

LibrarianFeature::LibrarianFeature(Surroundings surroundings)
    : m_moment(surroundings.moment)
    , m_memory(surroundings.stores.memory)
    , m_service(surroundings.stores, m_moment, surroundings.models)
    , m_rollover({ .moment = m_moment,
          .memory = m_memory,
          .history = surroundings.stores.history,
          .librarian = m_service,
          .chatArchiveDirectory = std::move(surroundings.directory),
          .activitySummaryProvider = std::move(surroundings.activitySummary),
          .keeping =
              [&settings = surroundings.stores.settings] {
                  return settings.settings().keepConversations;
              } })
    , m_readingAlong(surroundings.stores, m_service, std::move(surroundings.situation))
{
}

void LibrarianFeature::start()
{
    m_rollover.finishInterrupted();
    m_memory.sessions.ensureActiveSession(m_moment.now(), m_moment.calendar());
    spawn(m_rollover.rollUpWeek());
}

void LibrarianFeature::publish(PublishedState& state) const
{
    state.set(LibrarianState { m_service.lastError() });
}

} // namespace pobblewig
