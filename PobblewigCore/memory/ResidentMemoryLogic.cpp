#include "memory/ResidentMemoryLogic.h"

#include "foundation/Text.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <map>
#include <numeric>
#include <set>

namespace pobblewig {

namespace {

constexpr qsizetype charactersPerToken = 4;
constexpr QStringView separator = u"\n\n";

/// Formats as "%.1f" does, in every locale. QString would round 0.25 up.
QString oneDecimal(double number)
{
    std::array<char, 320> digits;
    const auto end = std::to_chars(
        digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, 1);
    return QString::fromLatin1(digits.data(), end.ptr - digits.data());
}

/// An entry of a section.
struct Line {
    QString text;
    int confirmations = 0;
    TimePoint lastObservedAt;
};

struct Section {
    QString title;
    std::vector<Line> lines;
};

Line line(const MemoryNote& note)
{
    const auto isCorrection = note.kind == MemoryKind::correction;
    auto text = QStringLiteral("\n- ") + note.text;
    if (isCorrection)
        text += u" [user correction — overrides older notes]";
    if (note.observationCount >= 2)
        text += QStringLiteral(" (noted %1x)").arg(note.observationCount);
    const auto confirmations =
        isCorrection ? std::numeric_limits<int>::max() : note.observationCount;
    return { std::move(text), confirmations, note.lastObservedAt };
}

Line line(const PatternNote& pattern)
{
    return { QStringLiteral("\n- %1 (evidence: %2, confidence: %3)")
                 .arg(pattern.text, QString::number(pattern.evidenceCount),
                     oneDecimal(pattern.confidence)),
        pattern.evidenceCount, pattern.lastObservedAt };
}

std::vector<Section> sections(
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns, TimePoint now)
{
    std::map<MemoryCategory, std::vector<Line>> byCategory;
    for (const auto& note : notes) {
        if (note.status == MemoryStatus::active && !isExpired(note, now))
            byCategory[note.category].push_back(line(note));
    }
    std::vector<Section> sections;
    sections.reserve(byCategory.size() + 1);
    for (auto& [category, lines] : byCategory)
        sections.push_back({ displayName(category), std::move(lines) });
    if (patterns.empty())
        return sections;
    sections.push_back({ QStringLiteral("Patterns"), {} });
    sections.back().lines.reserve(patterns.size());
    for (const auto& pattern : patterns)
        sections.back().lines.push_back(line(pattern));
    return sections;
}

QString textOf(const Section& section)
{
    auto text = section.title;
    for (const auto& line : section.lines)
        text += line.text;
    return text;
}

QString joined(const std::vector<Section>& sections)
{
    QStringList texts;
    for (const auto& section : sections)
        texts.append(textOf(section));
    return texts.join(separator);
}

qsizetype length(const Section& section)
{
    return Text::characterCount(textOf(section)) + separator.size();
}

/// The indices of the lines, by turns the newest and the most confirmed of those that are left.
std::vector<size_t> byWorth(const std::vector<Line>& lines)
{
    std::vector<size_t> newest(lines.size());
    std::iota(newest.begin(), newest.end(), size_t(0));
    auto confirmed = newest;
    std::ranges::stable_sort(
        newest, std::greater(), [&](size_t index) { return lines[index].lastObservedAt; });
    std::ranges::stable_sort(confirmed, std::greater(), [&](size_t index) {
        return std::pair(lines[index].confirmations, lines[index].lastObservedAt);
    });
    std::vector<size_t> order;
    std::vector<bool> isTaken(lines.size());
    for (size_t rank = 0; rank < lines.size(); ++rank) {
        for (const auto index : { confirmed[rank], newest[rank] }) {
            if (!isTaken[index])
                order.push_back(index);
            isTaken[index] = true;
        }
    }
    return order;
}

/// Keeps the order of the lines.
Section cut(const Section& section, qsizetype limit)
{
    limit -= Text::characterCount(section.title) + separator.size();
    std::set<size_t> kept;
    for (const auto index : byWorth(section.lines)) {
        const auto length = Text::characterCount(section.lines[index].text);
        if (length > limit)
            continue;
        limit -= length;
        kept.insert(index);
    }
    Section rest { section.title, {} };
    for (const auto index : kept)
        rest.lines.push_back(section.lines[index]);
    return rest;
}

/// The smallest sections come first, so that what they leave over goes to the larger ones.
QString withinLimit(std::vector<Section> sections, qsizetype limit)
{
    std::vector<std::pair<qsizetype, Section*>> bySize;
    bySize.reserve(sections.size());
    for (auto& section : sections)
        bySize.emplace_back(length(section), &section);
    std::ranges::sort(bySize);
    auto left = std::ssize(bySize);
    for (const auto& [size, section] : bySize) {
        const auto share = limit / left--;
        if (size > share)
            *section = cut(*section, share);
        if (!section->lines.empty())
            limit -= length(*section);
    }
    std::erase_if(sections, [](const auto& section) { return section.lines.empty(); });
    return joined(sections);
}

} // namespace

QString ResidentMemoryLogic::text(const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& patterns, int maxTokens, TimePoint now)
{
    auto parts = sections(notes, patterns, now);
    const auto limit = maxTokens * charactersPerToken;
    auto whole = joined(parts);
    // A character has at least one unit, so most texts fit without being counted.
    if (whole.size() + separator.size() <= limit)
        return whole;
    return withinLimit(std::move(parts), limit);
}

int ResidentMemoryLogic::tokens(
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns, TimePoint now)
{
    return estimateTokens(joined(sections(notes, patterns, now)));
}

int ResidentMemoryLogic::estimateTokens(const QString& text)
{
    return int((Text::characterCount(text) + charactersPerToken - 1) / charactersPerToken);
}

} // namespace pobblewig
