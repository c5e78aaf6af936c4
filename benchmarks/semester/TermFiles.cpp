#include "TermFiles.h"

#include "foundation/JSONFileStore.h"

#include <algorithm>

namespace pobblewig {

TermFiles TermFiles::read(const QDir& directory)
{
    TermFiles files;
    files.directory = directory;
    files.history = files.load<std::vector<ChatMessage>>(QStringLiteral("transcript.json"));
    files.sessions = files.load<std::vector<DailySession>>(QStringLiteral("sessions.json"));
    files.periods = files.load<std::vector<PeriodSummary>>(QStringLiteral("summaries.json"));
    files.observations =
        files.load<std::vector<DatedObservation>>(QStringLiteral("observations.json"));
    files.memory = files.load<MemoryStoreData>(QStringLiteral("memory.json"));
    files.reference = files.load<ReferenceMemoryData>(QStringLiteral("reference.json"));
    for (const auto& name : directory.entryList({ QStringLiteral("chat-*.json") }))
        files.archives[name] = files.load<std::vector<ChatMessage>>(name);
    return files;
}

std::vector<PeriodSummary> TermFiles::summaries(PeriodType type) const
{
    std::vector<PeriodSummary> found;
    std::ranges::copy_if(periods, std::back_inserter(found),
        [&](const auto& period) { return period.periodType == type; });
    return found;
}

template <typename Value>
Value TermFiles::load(const QString& name)
{
    // A store that never held anything has no file.
    const auto mayBeMissing = !directory.exists(name);
    auto value = JSONFileStore(directory, name).load<Value>();
    if (!value && !mayBeMissing)
        unreadable.append(name);
    return value ? *std::move(value) : Value();
}

} // namespace pobblewig
