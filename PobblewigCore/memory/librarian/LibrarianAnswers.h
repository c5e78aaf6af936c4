#pragma once

#include "memory/MemoryStore.h"
#include "memory/PeriodSummary.h"
#include "memory/ReferenceItem.h"

#include <tl/expected.hpp>

#include <vector>

namespace pobblewig {

/// What the librarian wants to have remembered, cleaned of what is empty and of words that nobody
/// knows.
struct ExtractionResult {
    std::vector<NewNote> notes;
    /// Without ids and times.
    std::vector<DatedObservation> observations;
    std::vector<ReferenceItem> referenceItems;
    std::vector<ReferenceSectionMeta> proposedSections;
};

struct CloseoutIntentItem {
    QString text;
    IntentKind kind = IntentKind::task;

    bool operator==(const CloseoutIntentItem&) const = default;
};

/// The account of a day.
struct DailyCloseout {
    QString summary;
    std::vector<QString> highlights;
    std::vector<CloseoutIntentItem> unfinishedIntent;

    bool operator==(const DailyCloseout&) const = default;
};

struct WeeklyRollupResult {
    QString summary;
    std::vector<QString> highlights;
    std::vector<QString> unresolvedIntent;

    bool operator==(const WeeklyRollupResult&) const = default;
};

/// The whole list of notes anew.
struct CleanupResult {
    std::vector<MemoryNote> notes;
    std::vector<PatternNote> patterns;
};

/// Reads what a model answered, whatever it wrapped around the JSON. What has the wrong type counts
/// as absent, of a list the first 100 entries count, and long texts are cut. The error is a
/// sentence for the diagnostics, which quotes nothing of the answer.
namespace LibrarianAnswers {

template <typename Value>
using Parsed = tl::expected<Value, QString>;

/// From the first brace to the one that closes it; braces in strings count too. Nothing if none
/// does.
std::optional<QString> extractJSONObject(const QString& text);

/// `noteSource` vouches for the notes that name nobody else. More than 1,000 characters are no
/// note.
Parsed<ExtractionResult> parseExtraction(
    const QString& text, MemorySource noteSource, const QString& itemSource, TimePoint now);

Parsed<DailyCloseout> parseCloseout(const QString& text);
Parsed<WeeklyRollupResult> parseWeekly(const QString& text);

/// Notes that say what an existing one says inherit its history; a new pattern stays only if its
/// evidence spans two days. An answer without patterns keeps those there are. One that lists no
/// notes, or an empty list where there are some, is refused: it would archive most of them.
Parsed<CleanupResult> parseCleanup(const QString& text,
    const std::vector<MemoryNote>& existingNotes, const std::vector<PatternNote>& existingPatterns,
    TimePoint now, const Calendar& calendar);

} // namespace LibrarianAnswers

} // namespace pobblewig
