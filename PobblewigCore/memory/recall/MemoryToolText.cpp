#include "memory/recall/MemoryToolText.h"

#include "foundation/IDPrefix.h"
#include "foundation/ISO8601.h"
#include "foundation/Text.h"

#include <QStringList>

#include <ranges>

namespace pobblewig {

namespace {

QString joined(const std::vector<QString>& texts, const QString& separator)
{
    return QStringList(texts.begin(), texts.end()).join(separator);
}

template <typename Record>
QString joinedLines(
    const std::vector<Record>& records, QString (*line)(const Record&), const QString& none)
{
    if (records.empty())
        return none;
    QStringList lines;
    lines.reserve(qsizetype(records.size()));
    for (const auto& record : records)
        lines.append(line(record));
    return lines.join(u'\n');
}

/// "- [id:1a2b3c4d] "
QString bullet(const QUuid& id)
{
    return QStringLiteral("- [id:%1] ").arg(IDPrefix::shortID(id));
}

QString span(const PeriodSummary& summary)
{
    return ISO8601::format(summary.startDate) + QStringLiteral(" → ")
        + ISO8601::format(summary.endDate) + QStringLiteral(": ") + summary.summary;
}

QString periodLine(const PeriodSummary& summary)
{
    return bullet(summary.id) + EnumNames::text(summary.periodType) + u' ' + span(summary);
}

QString hitLine(const ReferenceSearchResult& hit)
{
    return bullet(hit.item.id)
        + QStringLiteral("[%1] %2: %3").arg(hit.sectionTitle, hit.item.title, hit.item.summary)
        + detailsText(hit.item);
}

QString goalLine(const MemoryNote& note)
{
    return bullet(note.id) + note.text;
}

QString noteLine(const MemoryNote& note)
{
    return bullet(note.id) + QStringLiteral("(%1) ").arg(EnumNames::text(note.category))
        + note.text;
}

} // namespace

QString MemoryToolText::renderObservation(const DatedObservation& observation)
{
    QStringList lines { bullet(observation.id)
        + QStringLiteral("[%1] %2 (source: %3)")
              .arg(ISO8601::format(observation.occurredAt), observation.summary,
                  EnumNames::text(observation.source)) };
    if (!observation.observedFacts.empty())
        lines +=
            QStringLiteral("  facts: ") + joined(observation.observedFacts, QStringLiteral("; "));
    if (observation.inference)
        lines += QStringLiteral("  inference (not established fact): ") + *observation.inference;
    if (observation.uncertainty)
        lines += QStringLiteral("  uncertainty: ") + *observation.uncertainty;
    return lines.join(u'\n');
}

QString MemoryToolText::renderObservations(const std::vector<DatedObservation>& observations)
{
    return joinedLines(observations, renderObservation, QStringLiteral("no observations matched"));
}

QString MemoryToolText::renderPeriods(const std::vector<PeriodSummary>& summaries)
{
    return joinedLines(summaries, periodLine, QStringLiteral("no period summaries yet"));
}

QString MemoryToolText::renderNewestPeriods(
    const std::vector<PeriodSummary>& summaries, qsizetype characters)
{
    constexpr qsizetype longestHeading = 100;
    auto text = renderPeriods(summaries);
    if (Text::characterCount(text) <= characters)
        return text;
    auto room = characters - longestHeading;
    QStringList lines;
    for (const auto& summary : std::views::reverse(summaries)) {
        auto line = periodLine(summary);
        room -= Text::characterCount(line) + 1;
        if (room < 0 && !lines.isEmpty())
            break;
        lines.prepend(std::move(line));
    }
    lines.prepend(QStringLiteral("(%1 earlier summaries omitted — narrow down with from and to)")
                      .arg(std::ssize(summaries) - lines.size()));
    return lines.join(u'\n');
}

QString MemoryToolText::renderExpanded(const ExpandedPeriod& period)
{
    const auto& summary = period.summary;
    QStringList lines { EnumNames::text(summary.periodType) + QStringLiteral(" summary ")
        + span(summary) };
    if (!summary.chronologicalHighlights.empty())
        lines += QStringLiteral("highlights: ")
            + joined(summary.chronologicalHighlights, QStringLiteral(" | "));
    for (const auto& daily : period.dailySummaries)
        lines +=
            QStringLiteral("## day %1: ").arg(ISO8601::format(daily.startDate)) + daily.summary;
    if (!period.observations.empty())
        lines += QStringLiteral("## raw observations\n") + renderObservations(period.observations);
    return lines.join(u'\n');
}

QString MemoryToolText::renderHits(const std::vector<ReferenceSearchResult>& hits)
{
    return joinedLines(hits, hitLine, QStringLiteral("no reference items matched"));
}

QString MemoryToolText::renderSession(const DailySession& session)
{
    return QStringLiteral("session %1, day %2, started %3, turns: %4")
        .arg(json::keyText(session.id), session.dayKey, ISO8601::format(session.startedAt),
            QString::number(session.turnCount));
}

QString MemoryToolText::renderGoals(const std::vector<MemoryNote>& notes)
{
    return joinedLines(notes, goalLine, QStringLiteral("no active goals in memory"));
}

QString MemoryToolText::renderNotes(const std::vector<MemoryNote>& notes)
{
    return joinedLines(notes, noteLine, QStringLiteral("no memory notes matched"));
}

} // namespace pobblewig
