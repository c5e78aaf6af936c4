#include "memory/MemoryExport.h"

#include "foundation/ISO8601.h"

#include <QStringList>

namespace pobblewig {

namespace {

constexpr int mostObservations = 200;

QString observationLines(const ObservationStore& observations)
{
    const auto newest = observations.search({ .limit = mostObservations });
    QStringList lines;
    lines.reserve(std::ssize(newest));
    for (const auto& observation : newest)
        lines.append(QStringLiteral("- %1: %2")
                         .arg(ISO8601::format(observation.occurredAt), observation.summary));
    return lines.join(u'\n');
}

} // namespace

QString MemoryExport::text(const MemoryTiers& memory, TimePoint now)
{
    using TOC = MemoryTableOfContents;
    QStringList parts { memory.notes.exportText(now) };
    const auto contents = memory.reference.tableOfContents();
    if (!contents.entries.empty())
        parts.append(QStringLiteral("Reference memory — table of contents\n")
            + contents.compactText(TOC::IncludeEmpty::yes, TOC::IncludeTimestamps::yes));
    if (memory.observations.count() > 0)
        parts.append(QStringLiteral("Observations\n") + observationLines(memory.observations));
    return parts.join(QStringLiteral("\n\n---\n\n"));
}

} // namespace pobblewig
