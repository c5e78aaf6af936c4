#pragma once

#include "foundation/Calendar.h"
#include "foundation/StoreFile.h"
#include "memory/CleanupSnapshot.h"

#include <functional>
#include <optional>
#include <vector>

namespace pobblewig {

/// The contents of "memory.json".
struct MemoryStoreData {
    static constexpr int currentVersion = 2;

    int version = currentVersion;
    /// Newest first.
    std::vector<MemoryNote> notes;
    /// Oldest first.
    std::vector<PatternNote> patterns;
    std::optional<TimePoint> lastCleanupAt = std::nullopt;
    std::optional<int> lastCleanupTokenCount = std::nullopt;
    /// When a model was last asked to clean up, whatever came of it.
    std::optional<TimePoint> lastCleanupTriedAt = std::nullopt;
    std::optional<TimePoint> updatedAt = std::nullopt;

    bool operator==(const MemoryStoreData&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { defaulted("version", &MemoryStoreData::version),
            defaulted("notes", &MemoryStoreData::notes),
            defaulted("patterns", &MemoryStoreData::patterns),
            optional("lastCleanupAt", &MemoryStoreData::lastCleanupAt),
            optional("lastCleanupTokenCount", &MemoryStoreData::lastCleanupTokenCount),
            optional("lastCleanupTriedAt", &MemoryStoreData::lastCleanupTriedAt),
            optional("updatedAt", &MemoryStoreData::updatedAt) };
    }
};

struct NewNote {
    QString text;
    MemoryCategory category = MemoryCategory::misc;
    MemoryKind kind = MemoryKind::fact;
    MemorySource source = MemorySource::librarianSynthesis;
    std::optional<double> confidence = std::nullopt;
    bool isTemporary = false;
    std::optional<TimePoint> expiresAt = std::nullopt;
};

struct AddNoteResult {
    enum class Kind { added, reinforced };

    Kind kind = Kind::added;
    QUuid id;

    bool operator==(const AddNoteResult&) const = default;
};

/// The durable notes about the user and the patterns seen in them, kept in "memory.json". This is
/// the only tier of memory that every prompt contains in full.
///
/// Lives on the main thread. Without a directory it works in memory only. Every change is saved at
/// once; a failed save is logged, and the next one includes the change.
class MemoryStore {
public:
    enum class IncludeArchived { no, yes };

    /// These are in estimated tokens.
    static constexpr int softTargetTokens = 6000;
    static constexpr int hardCapTokens = 10000;
    static constexpr int hygieneIntervalTokens = 2000;
    static constexpr int archivedNoteRetentionDays = 30;
    /// In characters, of a note or a pattern that a model writes.
    static constexpr qsizetype longestText = 500;

    /// `calendar` tells which instants fall on the same day, for the promotion of patterns.
    MemoryStore(const std::optional<DataDirectory>& directory, std::function<Calendar()> calendar);

    /// Grows with every change.
    int revision() const { return m_file.revision(); }

    const std::vector<MemoryNote>& notes() const { return m_data.notes; }

    /// Returns only the active notes unless archived ones are included.
    std::vector<MemoryNote> allNotes(IncludeArchived includeArchived) const;
    const std::vector<PatternNote>& allPatterns() const { return m_data.patterns; }

    /// Sections of notes by category, then the patterns, each cut to its share of `maxTokens` if
    /// they are too long. Empty without notes and patterns.
    QString residentMemory(int maxTokens, TimePoint now) const;

    /// The size of the whole resident memory, headings included, even if a prompt has less room.
    int residentTokenEstimate(TimePoint now) const;
    bool isBelowSoftThreshold(TimePoint now) const;

    /// Depends on the size of the notes, never on the calendar.
    bool shouldRunCleanup(TimePoint now) const;

    /// The notes as in the prompt, for the user.
    QString exportText(TimePoint now) const;

    /// Reinforces the first note, of whatever status, that makes the same statement, ignoring case
    /// and spacing, or else adds a new one at the front. A blank text changes nothing and returns
    /// nothing. The text is put on one line and cut.
    std::optional<AddNoteResult> addNote(const NewNote& note, TimePoint now);

    /// The same for each of them at once. The task ends when they are on disk; it returns how many
    /// were new.
    Task<int> addNotes(std::vector<NewNote> notes, TimePoint now);

    /// Replaces the note's text with the user's own wording, on one line. An unknown id or a blank
    /// text changes nothing.
    void correctNote(const QUuid& id, const QString& newText, TimePoint now);

    /// Removes the note or the pattern with that id.
    void deleteNote(const QUuid& id, TimePoint now);

    /// Makes an archived or superseded note active again. An unknown id changes nothing.
    void revive(const QUuid& id, TimePoint now);

    /// Takes back a deletion or a change: replaces the entry with that id, or else puts it back
    /// where its age belongs.
    void putBack(const MemoryNote& note, TimePoint now);
    void putBack(const PatternNote& pattern, TimePoint now);

    /// Removes temporary notes that have expired.
    void pruneExpired(TimePoint now);

    /// Records a pattern, or adds evidence to the one that makes the same statement. Returns
    /// nothing and changes nothing if the evidence does not span two days. The text is put on one
    /// line and cut.
    std::optional<PatternNote> synthesizePattern(NewPattern pattern, TimePoint now);

    std::optional<TimePoint> lastCleanupTriedAt() const { return m_data.lastCleanupTriedAt; }
    void markCleanupTried(TimePoint now);

    /// Replaces what was seen with what it was rewritten to, as in `CleanupGuard::cleaned`. Also
    /// purges archived notes whose time is over.
    void applyCleanup(const CleanupSnapshot& seen, const CleanupSnapshot& rewritten, TimePoint now);

    /// Removes archived notes last observed more than `olderThan` days ago. Returns their number.
    int purgeArchivedNotes(int olderThan, TimePoint now);

    void deleteAll(TimePoint now);

    /// Tries again to read a file that could not be read at the start.
    void readAgain(TimePoint now);

    /// A quarter of the characters, rounded up.
    static int estimateTokens(const QString& text);

private:
    std::optional<AddNoteResult> put(const NewNote& note, TimePoint now);
    /// The normalised texts of the notes, in the same order.
    std::vector<QString>& statements();
    size_t eraseNotes(const std::function<bool(const MemoryNote&)>& isUnwanted);
    void save(TimePoint now);

    StoreFile m_file;
    std::function<Calendar()> m_calendar;
    MemoryStoreData m_data;
    /// Reset when the notes change, until the next addition needs it.
    std::optional<std::vector<QString>> m_statements;
};

} // namespace pobblewig
