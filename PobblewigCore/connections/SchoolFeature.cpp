#include "connections/SchoolFeature.h"

#include "foundation/Log.h"

namespace pobblewig {

Task<> SchoolFeature::tick()
{
    record().readAgain();
    if (isEnabled() && record().isDue(m.moment.now(), intervalMinutes()))
        co_await syncNow();
}

Task<> SchoolFeature::syncNow()
{
    if (std::exchange(m_isSyncing, true))
        co_return;
    changed();
    co_await sync();
    m_isSyncing = false;
    const auto& state = record().state();
    if (state.lastError)
        Log::line(QStringLiteral("buddy: %1 sync failed: %2").arg(name(), *state.lastError));
    changed();
}

} // namespace pobblewig
