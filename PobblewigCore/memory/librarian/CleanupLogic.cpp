#include "memory/librarian/CleanupLogic.h"

#include "memory/CleanupGuard.h"
#include "memory/MemoryStore.h"
#include "memory/ResidentMemoryLogic.h"

#include <algorithm>
#include <map>

namespace pobblewig {

namespace {

constexpr std::chrono::days patience(1);
constexpr size_t patternsWorthARequest = 2;
constexpr int bytesPerToken = 3;
/// The names and the other values of its members.
constexpr int bytesAroundANote = 120;
constexpr int bytesAroundAPattern = 60;

template <typename Entry>
bool areAllIn(const std::vector<Entry>& seen, const std::vector<Entry>& entries)
{
    return std::ranges::all_of(seen, [&](const auto& entry) {
        const auto same = std::ranges::find(entries, entry.id, &Entry::id);
        return same != entries.end() && same->text == entry.text;
    });
}

/// The tokens of an entry in an answer, rather too many than too few: JSON has short tokens, and so
/// have texts beyond ASCII.
int tokensOf(const MemoryNote& note)
{
    return int(note.text.toUtf8().size() + bytesAroundANote) / bytesPerToken;
}

int tokensOf(const PatternNote& pattern)
{
    return int(pattern.text.toUtf8().size() + bytesAroundAPattern) / bytesPerToken;
}

/// Appends groups to lists of at most `most` tokens, each to the last list if it fits as a whole.
template <typename Entry>
class Packing {
public:
    explicit Packing(int most)
        : m_most(most)
    {
    }

    void add(const std::vector<Entry>& group)
    {
        int tokens = 0;
        for (const auto& entry : group)
            tokens += tokensOf(entry);
        if (m_tokens + tokens > m_most)
            m_tokens = m_most;
        for (const auto& entry : group)
            add(entry);
    }

    const std::vector<std::vector<Entry>>& lists() const { return m_lists; }

private:
    void add(const Entry& entry)
    {
        const auto tokens = tokensOf(entry);
        if (tokens > m_most)
            return;
        if (m_lists.empty() || m_tokens + tokens > m_most) {
            m_lists.emplace_back();
            m_tokens = 0;
        }
        m_lists.back().push_back(entry);
        m_tokens += tokens;
    }

    int m_most;
    int m_tokens = 0;
    std::vector<std::vector<Entry>> m_lists;
};

qsizetype size(const CleanupSnapshot& part, TimePoint now)
{
    return ResidentMemoryLogic::tokens(part.notes, part.patterns, now);
}

size_t count(const CleanupSnapshot& part)
{
    return part.notes.size() + part.patterns.size();
}

/// What would be left of the portion.
CleanupSnapshot left(const CleanupSnapshot& seen, const CleanupSnapshot& rewritten)
{
    CleanupSnapshot left { CleanupGuard::cleaned(seen.notes, seen.notes, rewritten.notes),
        CleanupGuard::cleaned(seen.patterns, seen.patterns, rewritten.patterns) };
    std::erase_if(left.notes, [](const auto& note) { return note.status != MemoryStatus::active; });
    return left;
}

} // namespace

CleanupSnapshot CleanupLogic::candidates(
    CleanupSnapshot memory, std::optional<TimePoint> lastTriedAt, TimePoint now)
{
    std::erase_if(memory.notes, [](const auto& note) {
        return note.status != MemoryStatus::active || (note.isTemporary && note.expiresAt);
    });
    const auto isRecent = lastTriedAt && *lastTriedAt <= now && now < *lastTriedAt + patience;
    if (!isRecent)
        return memory;
    std::erase_if(memory.notes, [&](const auto& note) { return note.createdAt <= *lastTriedAt; });
    const auto tokens = ResidentMemoryLogic::tokens(memory.notes, {}, now);
    return tokens < MemoryStore::hygieneIntervalTokens ? CleanupSnapshot()
                                                       : CleanupSnapshot { memory.notes, {} };
}

std::vector<CleanupSnapshot> CleanupLogic::portions(const CleanupSnapshot& memory, int answerTokens)
{
    std::map<MemoryCategory, std::vector<MemoryNote>> byCategory;
    for (const auto& note : memory.notes)
        byCategory[note.category].push_back(note);
    Packing<MemoryNote> notes(answerTokens);
    for (const auto& [category, group] : byCategory)
        notes.add(group);
    Packing<PatternNote> patterns(answerTokens);
    if (memory.patterns.size() >= patternsWorthARequest)
        patterns.add(memory.patterns);
    std::vector<CleanupSnapshot> portions;
    for (const auto& list : notes.lists())
        portions.push_back({ list, {} });
    for (const auto& list : patterns.lists())
        portions.push_back({ {}, list });
    return portions;
}

bool CleanupLogic::isOvertaken(const CleanupSnapshot& seen, const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& patterns)
{
    return !areAllIn(seen.notes, notes) || !areAllIn(seen.patterns, patterns);
}

auto CleanupLogic::verdict(
    const CleanupSnapshot& seen, const CleanupSnapshot& rewritten, TimePoint now) -> Verdict
{
    const auto rest = left(seen, rewritten);
    if (2 * count(rest) < count(seen) || 2 * size(rest, now) < size(seen, now))
        return Verdict::tooShort;
    return size(rest, now) < size(seen, now) ? Verdict::good : Verdict::noSmaller;
}

} // namespace pobblewig
