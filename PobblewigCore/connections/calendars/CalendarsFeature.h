#pragma once

#include "features/Feature.h"
#include "foundation/Moment.h"
#include "memory/ReferenceMemoryStore.h"

namespace pobblewig {

/// The events and reminders of the user's calendars.
class CalendarsFeature : public Feature {
public:
    /// Both must outlive the feature.
    CalendarsFeature(const ReferenceMemoryStore& reference, const Moment& moment);

    std::vector<QString> situation(TimePoint now) const override;

private:
    const ReferenceMemoryStore& m_reference;
    const Moment& m_moment;
};

} // namespace pobblewig
