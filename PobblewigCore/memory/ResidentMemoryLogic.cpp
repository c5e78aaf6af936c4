#include "memory/ResidentMemoryLogic.h"

#include "foundation/Text.h"

#include <QStringList>

#include <array>
#include <charconv>
#include <map>

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

void appendLine(QString& section, const MemoryNote& note)
{
    section += u"\n- ";
    section += note.text;
    if (note.kind == MemoryKind::correction)
        section += u" [user correction — overrides older notes]";
    if (note.observationCount >= 2)
        section += QStringLiteral(" (noted %1x)").arg(note.observationCount);
}

void appendLine(QString& section, const PatternNote& pattern)
{
    section += QStringLiteral("\n- %1 (evidence: %2, confidence: %3)")
                   .arg(pattern.text, QString::number(pattern.evidenceCount),
                       oneDecimal(pattern.confidence));
}

QStringList sections(
    const std::vector<MemoryNote>& notes, const std::vector<PatternNote>& patterns, TimePoint now)
{
    std::map<MemoryCategory, QString> byCategory;
    for (const auto& note : notes) {
        if (note.status == MemoryStatus::active && !isExpired(note, now))
            appendLine(byCategory[note.category], note);
    }
    QStringList sections;
    for (const auto& [category, lines] : byCategory)
        sections.append(displayName(category) + lines);
    if (patterns.empty())
        return sections;

    sections.append(QStringLiteral("Patterns"));
    for (const auto& pattern : patterns)
        appendLine(sections.last(), pattern);
    return sections;
}

QString withinLimit(const QStringList& sections, qsizetype limit)
{
    auto whole = sections.join(separator);
    // A character has at least one unit, so most texts fit without being counted.
    if (whole.size() + separator.size() <= limit)
        return whole;
    QStringList kept;
    for (const auto& section : sections) {
        const auto length = Text::characterCount(section) + separator.size();
        if (length > limit)
            continue;
        limit -= length;
        kept.append(section);
    }
    return kept.join(separator);
}

} // namespace

QString ResidentMemoryLogic::text(const std::vector<MemoryNote>& notes,
    const std::vector<PatternNote>& patterns, int maxTokens, TimePoint now)
{
    return withinLimit(sections(notes, patterns, now), maxTokens * charactersPerToken);
}

int ResidentMemoryLogic::estimateTokens(const QString& text)
{
    return int((Text::characterCount(text) + charactersPerToken - 1) / charactersPerToken);
}

} // namespace pobblewig
