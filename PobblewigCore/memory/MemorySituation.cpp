#include "memory/MemorySituation.h"

#include "foundation/IDPrefix.h"
#include "foundation/Text.h"
#include "memory/SessionBoundary.h"

#include <QStringList>

#include <algorithm>
#include <span>

namespace pobblewig {

namespace {

constexpr size_t daysOfIntent = 3;
constexpr qsizetype mostIntents = 10;
constexpr size_t weeksOfIndex = 3;
constexpr size_t daysOfIndex = 5;
constexpr qsizetype indexCharacters = 160;

std::span<const PeriodSummary> last(const std::vector<PeriodSummary>& summaries, size_t count)
{
    return std::span(summaries).last(std::min(count, summaries.size()));
}

/// "- [id:1a2b3c4d] day 2026-03-01: Calm"
QString indexLine(const PeriodSummary& summary, const Calendar& calendar)
{
    auto period = SessionBoundary::dayKey(summary.startDate, calendar);
    if (summary.periodType == PeriodType::week)
        period += QStringLiteral(" – ") + SessionBoundary::dayKey(summary.endDate, calendar);
    const auto beginning = Text::firstCharacters(summary.summary, indexCharacters);
    return QStringLiteral("- [id:%1] %2 %3: %4")
        .arg(IDPrefix::shortID(summary.id), EnumNames::text(summary.periodType), period,
            QString(beginning).replace(u'\n', u' '));
}

} // namespace

QString MemorySituation::sessionInfo(
    const std::optional<DailySession>& active, const Calendar& calendar)
{
    if (!active)
        return {};
    const auto time = calendar.dateTime(active->startedAt).time();
    return QStringLiteral("Day %1, session started %2, %3 turns today.")
        .arg(active->dayKey, calendar.locale.toString(time, QLocale::ShortFormat),
            QString::number(active->turnCount));
}

QString MemorySituation::unfinishedIntent(const std::vector<PeriodSummary>& dailies)
{
    QStringList lines;
    for (const auto& daily : last(dailies, daysOfIntent)) {
        for (const auto& intent : daily.unresolvedIntent) {
            if (!intent.trimmed().isEmpty())
                lines += QStringLiteral("- ") + intent;
        }
    }
    return lines.mid(0, mostIntents).join(u'\n');
}

QString MemorySituation::chronologicalIndex(const std::vector<PeriodSummary>& weeklies,
    const std::vector<PeriodSummary>& dailies, const Calendar& calendar)
{
    QStringList lines;
    for (const auto& weekly : last(weeklies, weeksOfIndex))
        lines += indexLine(weekly, calendar);
    for (const auto& daily : last(dailies, daysOfIndex))
        lines += indexLine(daily, calendar);
    return lines.join(u'\n');
}

QString MemorySituation::referenceTOC(const MemoryTableOfContents& contents)
{
    using Contents = MemoryTableOfContents;
    if (contents.entries.empty())
        return {};
    return contents.compactText(Contents::IncludeEmpty::no, Contents::IncludeTimestamps::no);
}

} // namespace pobblewig
