#include "PobblewigDesktop/memory/ObservationsPage.h"

#include "PobblewigDesktop/memory/MemoryTexts.h"
#include "PobblewigDesktop/memory/ObservationLogic.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTreeView>

#include <limits>

namespace pobblewig {

namespace {

constexpr size_t mostTags = 50;

} // namespace

ObservationsPage::ObservationsPage(AppCoordinator& coordinator, const Calendar& calendar)
    : EntryPage({ .title = tr("Observations"),
        .explanation = tr("What happened when, the newest first. The model looks these up when "
                          "it needs them."),
        .empty = tr("What you tell about your days appears here, each with its time."),
        .search = tr("Search observations"),
        .text = tr("Observation") })
    , m_coordinator(coordinator)
    , m_calendar(calendar)
    , m_tag(new QComboBox)
    , m_time(new QComboBox)
    , m_delete(&addButton(tr("Delete")))
{
    addFilters();
    connect(m_delete, &QPushButton::clicked, this, &ObservationsPage::remove);
    auto* const key = new QShortcut(QKeySequence::Delete, &view());
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, this, &ObservationsPage::remove);
}

void ObservationsPage::addFilters()
{
    m_tag->setAccessibleName(tr("Tag"));
    m_tag->addItem(tr("All tags"));
    m_tag->setMaximumWidth(160);
    m_time->setAccessibleName(tr("Time"));
    m_time->addItem(tr("Any time"), 0);
    for (const auto& [name, days] : { std::pair(tr("Last day"), 1), { tr("Last 7 days"), 7 },
             { tr("Last 30 days"), 30 }, { tr("Last year"), 365 } })
        m_time->addItem(name, days);
    for (auto* const box : { m_tag, m_time }) {
        addFilter(*box);
        connect(box, &QComboBox::currentIndexChanged, this, [this] { list(); });
    }
}

void ObservationsPage::list()
{
    const auto shown = m_shown;
    m_observations = m_coordinator.memory().observations.search(query());
    std::optional<size_t> kept;
    for (size_t index = 0; shown && !kept && index < m_observations.size(); ++index) {
        if (m_observations[index].id == *shown)
            kept = index;
    }
    setEntries(
        m_observations.size(),
        [this](size_t index) { return MemoryTexts::row(m_observations[index], m_calendar); }, kept);
    setEmpty(m_observations.empty(), isNarrowed());
    if (!isNarrowed())
        showTags();
}

void ObservationsPage::showTags()
{
    const QSignalBlocker quiet(m_tag);
    while (m_tag->count() > 1)
        m_tag->removeItem(1);
    for (const auto& tag : ObservationLogic::commonTags(m_observations, mostTags))
        m_tag->addItem(tag);
}

void ObservationsPage::showSelected()
{
    const auto row = selectedRow();
    const auto* const observation =
        row && *row < m_observations.size() ? &m_observations[*row] : nullptr;
    m_shown = observation ? std::optional(observation->id) : std::nullopt;
    text().setPlainText(observation ? MemoryTexts::text(*observation) : QString());
    setFacts(observation ? MemoryTexts::facts(*observation, m_calendar) : QString());
    m_delete->setVisible(observation);
}

ObservationStore::Query ObservationsPage::query() const
{
    ObservationStore::Query query { .text = wanted(), .limit = std::numeric_limits<int>::max() };
    if (m_tag->currentIndex() > 0)
        query.tags = { m_tag->currentText() };
    if (const auto days = m_time->currentData().toInt(); days > 0)
        query.from = systemNow() - std::chrono::days(days);
    return query;
}

bool ObservationsPage::isNarrowed() const
{
    return EntryPage::isNarrowed() || m_tag->currentIndex() > 0 || m_time->currentIndex() > 0;
}

void ObservationsPage::remove()
{
    const auto row = selectedRow();
    if (!row)
        return;
    const auto before = m_observations[*row];
    auto& desk = m_coordinator.memoryDesk();
    desk.deleteObservation(before.id);
    Q_EMIT undoOffered(
        tr("The observation is deleted."), [&desk, before] { desk.putBack(before); });
}

} // namespace pobblewig
