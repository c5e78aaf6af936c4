#pragma once

#include "connections/ComingUpEntry.h"
#include "foundation/Calendar.h"
#include "memory/ReferenceItem.h"

/// Selects from the reference memory what the user has to expect.
namespace pobblewig::ComingUpLogic {

inline constexpr int upcomingDays = 14;
inline constexpr int overdueDays = 7;

/// What was due in the last days and is not done, then today and the next days that have anything,
/// then the reminders without a date. An event over several days stands on each of them; one that
/// has ended is left out. Soonest first; what lasts all day stands before that.
std::vector<ComingUpSection> sections(
    const std::vector<ReferenceItem>& items, TimePoint now, const Calendar& calendar);

/// Whether a message asks what is due, as in "What's due?".
bool isAskedFor(const QString& message);

} // namespace pobblewig::ComingUpLogic
