#pragma once

#include "memory/MemoryStore.h"
#include "memory/PeriodSummary.h"
#include "memory/ReferenceItem.h"

#include <tl/expected.hpp>

#include <vector>

namespace pobblewig {

/// What the librarian wants remembered, without empty entries and unknown enum names.
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

/// The summary of a day.
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

/// Reads a model's answer, whatever text surrounds the JSON. A value of the wrong type counts as
/// absent, only the first 100 entries of a list are read, and long texts are cut. The error is a
/// sentence for the diagnostics that quotes nothing from the answer.
namespace LibrarianAnswers {

template <typename Value>
using Parsed = tl::expected<Value, QString>;

/// The text from the first brace to its closing one, counting braces in strings, too. Returns
/// nothing if it is not closed.
std::optional<QString> extractJSONObject(const QString& text);

/// `noteSource` applies to notes that name no source. The stores cut their texts. Of an
/// answer that was cut, the whole entries count. One without any of the lists is refused.
Parsed<ExtractionResult> parseExtraction(
    const QString& text, MemorySource noteSource, const QString& itemSource, TimePoint now);

/// The summary may be missing if there is anything else.
Parsed<DailyCloseout> parseCloseout(const QString& text);
Parsed<WeeklyRollupResult> parseWeekly(const QString& text);

/// A note with the same statement as an existing one inherits its history. A new pattern needs
/// evidence that spans two days. An answer that lists nothing is refused, and so is one that was
/// cut.
Parsed<CleanupSnapshot> parseCleanup(const QString& text,
    const std::vector<MemoryNote>& existingNotes, const std::vector<PatternNote>& existingPatterns,
    TimePoint now, const Calendar& calendar);

} // namespace LibrarianAnswers

} // namespace pobblewig
