#include "PobblewigDesktop/memory/DaysPage.h"

#include "PobblewigDesktop/memory/MemoryLinks.h"
#include "PobblewigDesktop/memory/MemoryTexts.h"

#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int textHeight = 220;

void append(QStringList& parts, const QString& heading, const std::vector<QString>& lines)
{
    if (lines.empty())
        return;
    QStringList part(heading);
    for (const auto& line : lines)
        part.append(QStringLiteral("• ") + line);
    parts.append(part.join(u'\n'));
}

} // namespace

DaysPage::DaysPage(AppCoordinator& coordinator, const Calendar& calendar)
    : EntryPage({ .title = tr("Days"),
        .explanation = tr("Each day and week in summary, the newest first."),
        .empty = tr("A day appears here once you have talked, its summary when it is over."),
        .search = tr("Search summaries"),
        .text = tr("Day or week") })
    , m_coordinator(coordinator)
    , m_calendar(calendar)
    , m_open(&addButton(tr("Read the conversation")))
{
    text().setFixedHeight(textHeight);
    connect(m_open, &QPushButton::clicked, this, [this] {
        const auto selected = selectedRow();
        if (selected && m_days[*selected].session)
            Q_EMIT linkRequested(MemoryLinks::conversation(*m_days[*selected].session));
    });
}

void DaysPage::list()
{
    const auto& memory = m_coordinator.memory();
    m_days = DayLogic::entries(memory.sessions.sessions(), memory.summaries.all(), wanted());
    const auto found = m_shown ? std::ranges::find(m_days, *m_shown, &DayEntry::id) : m_days.end();
    setEntries(
        m_days.size(), [this](size_t index) { return row(m_days[index]); },
        found != m_days.end() ? std::optional(size_t(found - m_days.begin())) : std::nullopt);
    setEmpty(m_days.empty(), isNarrowed());
}

void DaysPage::showSelected()
{
    const auto selected = selectedRow();
    const auto* const day = selected && *selected < m_days.size() ? &m_days[*selected] : nullptr;
    m_shown = day ? std::optional(day->id()) : std::nullopt;
    text().setPlainText(day ? textOf(*day) : QString());
    m_open->setVisible(day && day->session && !day->session->isImported);
}

EntryRow DaysPage::row(const DayEntry& entry) const
{
    const auto words = entry.summary ? entry.summary->summary
        : entry.session->summary     ? *entry.session->summary
        : entry.session->endedAt     ? tr("No summary")
                                     : tr("Going on now");
    return { title(entry), words };
}

QString DaysPage::textOf(const DayEntry& entry) const
{
    const auto& memory = m_coordinator.memory();
    QStringList parts { row(entry).detail };
    if (entry.summary) {
        append(parts, tr("What happened:"), entry.summary->chronologicalHighlights);
        append(parts, tr("Left open:"), entry.summary->unresolvedIntent);
    }
    if (entry.session && entry.session->activitySummary)
        parts.append(tr("At the computer: %1").arg(*entry.session->activitySummary));
    std::vector<QString> lines;
    for (const auto& observation :
        memory.observations.withIDs(DayLogic::observationIDs(entry, memory.summaries.all())))
        lines.push_back(observation.summary);
    append(parts, tr("Observations:"), lines);
    return parts.join(QStringLiteral("\n\n"));
}

QString DaysPage::title(const DayEntry& entry) const
{
    if (entry.isWeek())
        return tr("Week of %1").arg(MemoryTexts::day(entry.start, m_calendar));
    auto day = m_calendar.locale.toString(m_calendar.day(entry.start), QLocale::LongFormat);
    if (!entry.session)
        return day;
    const auto turns = entry.session->turnCount;
    return QStringLiteral("%1 · %2").arg(
        day, turns == 1 ? tr("1 question") : tr("%1 questions").arg(turns));
}

} // namespace pobblewig
