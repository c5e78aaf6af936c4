#include "PobblewigDesktop/memory/PatternsPage.h"

#include "PobblewigDesktop/memory/MemoryTexts.h"
#include "PobblewigDesktop/memory/SearchWords.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>

namespace pobblewig {

PatternsPage::PatternsPage(AppCoordinator& coordinator, const Calendar& calendar)
    : EntryPage({ .title = tr("Patterns"),
        .explanation = tr("What Pobblewig sees in notes of several days. The model reads them "
                          "with every message."),
        .empty = tr("Patterns appear here once notes of different days show the same."),
        .search = tr("Search patterns"),
        .text = tr("Pattern and its evidence") })
    , m_coordinator(coordinator)
    , m_calendar(calendar)
    , m_delete(&addButton(tr("Delete")))
{
    connect(m_delete, &QPushButton::clicked, this, &PatternsPage::remove);
}

void PatternsPage::list()
{
    m_patterns = m_coordinator.memory().notes.allPatterns();
    const SearchWords words(wanted());
    std::erase_if(m_patterns, [&](const auto& pattern) { return !words.match(pattern.text); });
    setEntries(
        m_patterns.size(),
        [this](size_t index) { return MemoryTexts::row(m_patterns[index], m_calendar); },
        std::nullopt);
    setEmpty(m_patterns.empty(), isNarrowed());
}

void PatternsPage::showSelected()
{
    const auto row = selectedRow();
    m_delete->setVisible(row.has_value());
    text().setPlainText(row
            ? MemoryTexts::text(m_patterns[*row], m_coordinator.memory().notes.notes())
            : QString());
    setFacts(row ? MemoryTexts::facts(m_patterns[*row], m_calendar) : QString());
}

void PatternsPage::remove()
{
    const auto row = selectedRow();
    if (!row)
        return;
    const auto before = m_patterns[*row];
    auto& desk = m_coordinator.memoryDesk();
    desk.deleteNote(before.id);
    Q_EMIT undoOffered(tr("The pattern is deleted."), [&desk, before] { desk.putBack(before); });
}

} // namespace pobblewig
