#pragma once

#include "connections/calendars/CalendarDataProviding.h"
#include "conversation/proposals/RuleProposal.h"
#include "features/Stores.h"
#include "foundation/Moment.h"
#include "memory/MemoryTiers.h"
#include "settings/SettingsStore.h"

namespace pobblewig {

/// Carries out changes that the assistant proposed and the user allows, except rules.
class ProposalWriter {
public:
    struct Outcome {
        /// A text for the user about what was done.
        QString text;
        /// What the assistant says about a change of itself.
        std::optional<QString> selfNote = std::nullopt;
        /// The settings that it replaced.
        std::optional<std::map<QString, JSONValue>> replaced = std::nullopt;
    };
    using Result = tl::expected<Outcome, WriteError>;

    /// All arguments must outlive the writer.
    ProposalWriter(
        const Stores& stores, const Moment& moment, CalendarDataProviding& calendarProvider);

    Task<Result> performWrite(RuleProposal proposal);

private:
    Task<Result> addReminder(RuleProposal proposal);
    Task<Result> addEvent(RuleProposal proposal);
    Result changeSetting(const RuleProposal& proposal);
    Result forget(const RuleProposal& proposal);

    SettingsStore& m_settings;
    MemoryTiers& m_memory;
    const Moment& m_moment;
    CalendarDataProviding& m_calendarProvider;
};

} // namespace pobblewig
