#include "conversation/proposals/MemoryForgetter.h"

#include "conversation/proposals/ForgetLogic.h"
#include "foundation/Text.h"

#include <algorithm>

namespace pobblewig {

namespace {

using Outcome = tl::expected<QString, QString>;

QUuid meantID(const ProposedForget& forget)
{
    return QUuid::fromString(forget.id.value_or(QString()));
}

QString forgetNote(const ProposedForget& forget, MemoryStore& notes, TimePoint now)
{
    const auto note = std::ranges::find(notes.notes(), meantID(forget), &MemoryNote::id);
    if (note == notes.notes().end())
        return QStringLiteral("That note is already gone.");
    auto outcome = QStringLiteral("Forgot the note \"%1\"").arg(note->text);
    notes.deleteNote(meantID(forget), now);
    return outcome;
}

QString forgetItem(const ProposedForget& forget, ReferenceMemoryStore& reference)
{
    const auto& items = reference.allItems();
    const auto item = std::ranges::find(items, meantID(forget), &ReferenceItem::id);
    if (item == items.end())
        return QStringLiteral("That reference item is already gone.");
    auto outcome = QStringLiteral("Forgot the reference item \"%1\"").arg(item->title);
    reference.deleteItem(meantID(forget));
    return outcome;
}

Outcome forgetSection(const ProposedForget& forget, ReferenceMemoryStore& reference)
{
    if (!forget.path)
        return tl::unexpected(QStringLiteral("missing section path"));
    const auto count = reference.deleteItems(*forget.path);
    if (count == 0)
        return QStringLiteral("Nothing was stored under %1 anymore.").arg(*forget.path);
    return QStringLiteral("Forgot %1 under %2")
        .arg(Text::counted(count, u"reference item"), *forget.path);
}

Outcome forgetObservations(
    const ProposedForget& forget, ObservationStore& observations, TimePoint askedAt)
{
    const auto matching = ForgetLogic::matchingObservations(forget, observations, askedAt);
    if (!matching)
        return tl::unexpected(matching.error());
    if (matching->empty())
        return QStringLiteral("Those observations are already gone.");
    std::vector<QUuid> ids;
    std::ranges::transform(*matching, std::back_inserter(ids), &DatedObservation::id);
    observations.remove(ids);
    return QStringLiteral("Forgot %1").arg(Text::counted(std::ssize(ids), u"observation"));
}

} // namespace

tl::expected<QString, QString> MemoryForgetter::forget(
    const RuleProposal& proposal, MemoryTiers& memory, TimePoint now)
{
    using Target = ProposedForget::Target;
    if (!proposal.forget)
        return tl::unexpected(QStringLiteral("missing forget payload"));
    switch (proposal.forget->target) {
    case Target::note:
        return forgetNote(*proposal.forget, memory.notes, now);
    case Target::referenceItem:
        return forgetItem(*proposal.forget, memory.reference);
    case Target::referenceSection:
        return forgetSection(*proposal.forget, memory.reference);
    case Target::observations:
        return forgetObservations(*proposal.forget, memory.observations, proposal.createdAt);
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
