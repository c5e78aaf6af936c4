#pragma once

#include "connections/CalendarDataProviding.h"
#include "conversation/proposals/RuleProposal.h"
#include "foundation/Calendar.h"
#include "memory/MemoryTiers.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// Carries out what the user allows: the changes that the assistant proposed, rules aside.
class ProposalWriter {
public:
    /// All of it outlives the writer.
    struct Dependencies {
        SettingsStore& settings;
        MemoryTiers& memory;
        CalendarDataProviding& calendarProvider;
        std::function<Calendar()> calendar;
        Clock clock;
    };

    struct Outcome {
        /// What was done, for the user.
        QString text;
        /// What the assistant adds about itself.
        std::optional<QString> selfNote = std::nullopt;
    };
    using Result = tl::expected<Outcome, WriteError>;

    explicit ProposalWriter(Dependencies dependencies);

    Task<Result> performWrite(RuleProposal proposal);

private:
    Task<Result> addReminder(RuleProposal proposal);
    Task<Result> addEvent(RuleProposal proposal);
    Result changeSetting(const RuleProposal& proposal);
    Result forget(const RuleProposal& proposal);

    Dependencies m;
};

} // namespace pobblewig
