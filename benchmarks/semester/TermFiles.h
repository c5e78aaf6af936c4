#pragma once

#include "memory/DailySession.h"
#include "memory/DatedObservation.h"
#include "memory/MemoryStore.h"
#include "memory/PeriodSummary.h"
#include "memory/ReferenceMemoryStore.h"
#include "memory/history/ChatMessage.h"

#include <QDir>

#include <map>

namespace pobblewig {

/// What a term leaves on the disk, read anew.
struct TermFiles {
    static TermFiles read(const QDir& directory);

    std::vector<PeriodSummary> summaries(PeriodType type) const;

    QDir directory;
    std::vector<ChatMessage> history;
    std::map<QString, std::vector<ChatMessage>> archives;
    std::vector<DailySession> sessions;
    std::vector<PeriodSummary> periods;
    std::vector<DatedObservation> observations;
    MemoryStoreData memory;
    ReferenceMemoryData reference;
    /// There, but not decodable.
    QStringList unreadable;

private:
    template <typename Value>
    Value load(const QString& name);
};

} // namespace pobblewig
