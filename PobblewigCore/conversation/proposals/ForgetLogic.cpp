#include "conversation/proposals/ForgetLogic.h"

#include "conversation/proposals/ForgetTexts.h"
#include "foundation/IDPrefix.h"
#include "foundation/Text.h"
#include "tools/ToolArguments.h"

#include <limits>

namespace pobblewig {

namespace {

using Resolved = tl::expected<RuleProposal, QString>;

tl::unexpected<QString> refused(QString reason)
{
    return tl::unexpected(std::move(reason));
}

/// Returns nothing for a blank text.
std::optional<QString> given(const std::optional<QString>& text)
{
    const auto trimmed = text.value_or(QString()).trimmed();
    return trimmed.isEmpty() ? std::nullopt : std::optional(trimmed);
}

Resolved resolveNote(RuleProposal proposal, const std::vector<MemoryNote>& notes)
{
    const auto id = given(proposal.forget->id);
    if (!id)
        return refused(
            QStringLiteral("which note? I need its [id:xxxxxxxx] from memory_find_notes"));
    const auto meant = IDPrefix::resolve(*id, notes);
    if (meant.isAmbiguous())
        return refused(
            QStringLiteral("%1 matches more than one note — give me more characters").arg(*id));
    const auto* note = meant.found();
    if (!note)
        return refused(QStringLiteral("no memory note with id %1").arg(*id));
    proposal.forget->id = json::keyText(note->id);
    proposal.name = QStringLiteral("Delete the memory note \"%1\"").arg(note->text);
    return proposal;
}

Resolved resolveItem(RuleProposal proposal, const std::vector<ReferenceItem>& items)
{
    const auto id = given(proposal.forget->id);
    if (!id)
        return refused(QStringLiteral("which item? I need its [id:xxxxxxxx] from "
                                      "memory_read_section or memory_search_reference"));
    const auto meant = IDPrefix::resolve(*id, items);
    if (meant.isAmbiguous())
        return refused(
            QStringLiteral("%1 matches more than one item — give me more characters").arg(*id));
    const auto* item = meant.found();
    if (!item)
        return refused(QStringLiteral("no reference item with id %1").arg(*id));
    proposal.forget->id = json::keyText(item->id);
    proposal.name = QStringLiteral("Delete the reference item \"%1\"").arg(item->title);
    return proposal;
}

Resolved resolveSection(RuleProposal proposal, const ReferenceMemoryStore& reference)
{
    const auto path = given(proposal.forget->path);
    if (!path)
        return refused(QStringLiteral("which section? I need its path, e.g. academics.courses"));
    const auto count = reference.countItems(*path);
    if (count == 0)
        return refused(QStringLiteral("nothing is stored under %1").arg(*path));
    proposal.forget->path = path;
    proposal.name = QStringLiteral("Delete %1 under %2 (the section itself stays)")
                        .arg(Text::counted(count, u"reference item"), *path);
    return proposal;
}

/// A bound that is blank but not empty stays and is refused later, since without it more would
/// match.
ProposedForget withoutEmptyConditions(ProposedForget forget)
{
    forget.query = given(forget.query);
    for (auto* bound : { &forget.from, &forget.to }) {
        if (*bound && (*bound)->isEmpty())
            bound->reset();
    }
    if (forget.tags && forget.tags->empty())
        forget.tags.reset();
    return forget;
}

Resolved resolveObservations(RuleProposal proposal, const ObservationStore& observations)
{
    const auto forget = withoutEmptyConditions(*proposal.forget);
    const auto matching =
        ForgetLogic::matchingObservations(forget, observations, proposal.createdAt);
    if (!matching)
        return refused(matching.error());
    if (matching->empty())
        return refused(QStringLiteral("no observations match that filter"));
    const auto count = Text::counted(std::ssize(*matching), u"dated observation");
    proposal.forget = forget;
    proposal.name = QStringLiteral("Delete %1 matching %2").arg(count, ForgetTexts::filter(forget));
    return proposal;
}

tl::expected<ObservationStore::Query, ArgError> query(const ProposedForget& forget)
{
    const auto fromName = QStringLiteral("from");
    const auto toName = QStringLiteral("to");
    const ToolArguments bounds({ { fromName, forget.from.value_or(QString()) },
        { toName, forget.to.value_or(QString()) } });
    const auto from = bounds.date(fromName);
    if (!from)
        return tl::unexpected(from.error());
    const auto to = bounds.date(toName, ToolArguments::BareDate::endOfDay);
    if (!to)
        return tl::unexpected(to.error());
    return ObservationStore::Query {
        .text = forget.query.value_or(QString()),
        .from = *from,
        .to = *to,
        .tags = forget.tags.value_or(std::vector<QString>()),
        .limit = std::numeric_limits<int>::max(),
    };
}

} // namespace

tl::expected<RuleProposal, QString> ForgetLogic::resolveForget(
    RuleProposal proposal, const MemoryTiers& memory)
{
    using Target = ProposedForget::Target;
    if (!proposal.forget)
        return refused(QStringLiteral("the forget request was malformed"));
    switch (proposal.forget->target) {
    case Target::note:
        return resolveNote(std::move(proposal), memory.notes.notes());
    case Target::referenceItem:
        return resolveItem(std::move(proposal), memory.reference.allItems());
    case Target::referenceSection:
        return resolveSection(std::move(proposal), memory.reference);
    case Target::observations:
        return resolveObservations(std::move(proposal), memory.observations);
    }
    Q_UNREACHABLE();
}

tl::expected<std::vector<DatedObservation>, QString> ForgetLogic::matchingObservations(
    const ProposedForget& forget, const ObservationStore& observations, TimePoint askedAt)
{
    if (ForgetTexts::filter(withoutEmptyConditions(forget)).isEmpty())
        return refused(
            QStringLiteral("which observations? Give me a text, date-range, or tag filter"));
    const auto wanted = query(forget);
    if (!wanted)
        return refused(wanted.error().description());
    auto found = observations.search(*wanted);
    std::erase_if(found, [&](const auto& observation) { return observation.recordedAt > askedAt; });
    return found;
}

} // namespace pobblewig
