#include "conversation/proposals/ProposalWriter.h"

#include "conversation/proposals/MemoryForgetter.h"
#include "conversation/proposals/ProposalTexts.h"
#include "conversation/proposals/SelfChangeNote.h"
#include "settings/SettingsDifference.h"
#include "settings/SettingsWriteLogic.h"

namespace pobblewig {

namespace {

tl::unexpected<WriteError> unsupported(QString reason)
{
    return tl::unexpected(WriteError::unsupported(std::move(reason)));
}

/// The same at each attempt, so that no second attempt adds what the first has already saved.
QString calendarID(const RuleProposal& proposal)
{
    return proposal.id.toString(QUuid::WithoutBraces);
}

} // namespace

ProposalWriter::ProposalWriter(
    const Stores& stores, const Moment& moment, CalendarDataProviding& calendarProvider)
    : m_settings(stores.settings)
    , m_memory(stores.memory)
    , m_moment(moment)
    , m_calendarProvider(calendarProvider)
{
}

auto ProposalWriter::performWrite(RuleProposal proposal) -> Task<Result>
{
    switch (proposal.kind) {
    case RuleProposal::Kind::rule:
        break;
    case RuleProposal::Kind::calendarEvent:
        co_return co_await addEvent(std::move(proposal));
    case RuleProposal::Kind::reminder:
        co_return co_await addReminder(std::move(proposal));
    case RuleProposal::Kind::settingsChange:
        co_return changeSetting(proposal);
    case RuleProposal::Kind::forgetMemory:
        co_return forget(proposal);
    }
    co_return unsupported(QStringLiteral("rules are confirmed through the rule store"));
}

auto ProposalWriter::addReminder(RuleProposal proposal) -> Task<Result>
{
    if (!proposal.reminder)
        co_return unsupported(QStringLiteral("missing reminder payload"));
    const auto& [title, due, notes, allDay] = *proposal.reminder;
    const auto saved = co_await m_calendarProvider.saveReminder({ .id = calendarID(proposal),
        .title = title,
        .dueDate = due,
        .notes = notes,
        .isAllDay = allDay });
    if (!saved)
        co_return tl::unexpected(saved.error());
    auto text = QStringLiteral("Added reminder '%1'").arg(title);
    if (due)
        text += QStringLiteral(" due ") + ProposalTexts::when(*due, allDay, m_moment.calendar());
    co_return Outcome { std::move(text) };
}

auto ProposalWriter::addEvent(RuleProposal proposal) -> Task<Result>
{
    if (!proposal.event)
        co_return unsupported(QStringLiteral("missing event payload"));
    const auto& event = *proposal.event;
    const auto saved = co_await m_calendarProvider.saveEvent({ .id = calendarID(proposal),
        .title = event.title,
        .startDate = event.start,
        .endDate = event.end,
        .calendarName = event.calendarName,
        .notes = event.notes,
        .isAllDay = event.allDay });
    if (!saved)
        co_return tl::unexpected(saved.error());
    co_return Outcome {
        QStringLiteral("Added '%1' to your calendar for %2")
            .arg(event.title, ProposalTexts::when(event.start, event.allDay, m_moment.calendar()))
    };
}

auto ProposalWriter::changeSetting(const RuleProposal& proposal) -> Result
{
    if (!proposal.settingsChange)
        return unsupported(QStringLiteral("missing settings payload"));
    const auto& [key, value] = *proposal.settingsChange;
    const auto before = m_settings.settings();
    auto after = before;
    const auto applied = SettingsWriteLogic::apply(key, value, after);
    if (!applied)
        return unsupported(applied.error().reason);
    m_settings.update([&](AppSettings& settings) { settings = after; });
    return Outcome { .text = QStringLiteral("Changed setting: ") + proposal.name,
        .selfNote = selfChangeNote(key, before, after),
        .replaced = SettingsDifference::replaced(before, after) };
}

auto ProposalWriter::forget(const RuleProposal& proposal) -> Result
{
    const auto forgotten = MemoryForgetter::forget(proposal, m_memory, m_moment.now());
    if (!forgotten)
        return unsupported(forgotten.error());
    return Outcome { *forgotten };
}

} // namespace pobblewig
