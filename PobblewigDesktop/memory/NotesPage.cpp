#include "PobblewigDesktop/memory/NotesPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/memory/MemoryLinks.h"
#include "PobblewigDesktop/memory/MemoryTexts.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTreeView>

#include <algorithm>

namespace pobblewig {

namespace {

QComboBox* choice(const QString& name, const QString& all)
{
    auto* const box = new QComboBox;
    box->setAccessibleName(name);
    box->addItem(all, -1);
    return box;
}

template <typename Enum>
std::optional<Enum> chosen(const QComboBox& box)
{
    const auto value = box.currentData().toInt();
    return value < 0 ? std::nullopt : std::optional(Enum(value));
}

} // namespace

NotesPage::NotesPage(AppCoordinator& coordinator, const Calendar& calendar)
    : EntryPage({ .title = tr("Notes"),
        .explanation = tr("What Pobblewig knows about you. The model reads the active notes with "
                          "every message; of very many, the newest. Correct a note below the list, "
                          "or delete it."),
        .empty = tr("Notes appear here as you talk: say \"remember that I like tea\" in the "
                    "chat."),
        .search = tr("Search notes"),
        .text = tr("Note") })
    , m_coordinator(coordinator)
    , m_calendar(calendar)
    , m_category(choice(tr("Category"), tr("All categories")))
    , m_status(choice(tr("Status"), tr("Any status")))
    , m_open(&addButton(tr("Read the conversation")))
    , m_revive(&addButton(tr("Bring back")))
    , m_delete(&addButton(tr("Delete")))
    , m_save(&addButton(tr("Save the correction")))
{
    addFilters();
    addButtons();
}

void NotesPage::addFilters()
{
    for (const auto category : { MemoryCategory::preferences, MemoryCategory::currentContext,
             MemoryCategory::goals, MemoryCategory::aspirations, MemoryCategory::history,
             MemoryCategory::misc, MemoryCategory::journeys })
        m_category->addItem(displayName(category), int(category));
    for (const auto status :
        { MemoryStatus::active, MemoryStatus::archived, MemoryStatus::superseded })
        m_status->addItem(MemoryTexts::status(status), int(status));
    m_status->setCurrentIndex(1);
    for (auto* const box : { m_category, m_status }) {
        addFilter(*box);
        connect(box, &QComboBox::currentIndexChanged, this, [this] { list(); });
    }
}

void NotesPage::addButtons()
{
    PanelStyle::setRole(*m_save, QStringLiteral("primary"));
    text().setReadOnly(false);
    connect(m_open, &QPushButton::clicked, this, &NotesPage::openConversation);
    connect(m_revive, &QPushButton::clicked, this, &NotesPage::revive);
    connect(m_save, &QPushButton::clicked, this, &NotesPage::correct);
    connect(m_delete, &QPushButton::clicked, this, &NotesPage::remove);
    connect(&text(), &QPlainTextEdit::textChanged, this, &NotesPage::showButtons);
    auto* const key = new QShortcut(QKeySequence::Delete, &view());
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, this, &NotesPage::remove);
}

void NotesPage::list()
{
    m_notes = NoteLogic::listed(m_coordinator.memory().notes.notes(), filter());
    std::optional<size_t> kept;
    if (m_shown) {
        const auto found = std::ranges::find(m_notes, m_shown->id, &MemoryNote::id);
        if (found != m_notes.end())
            kept = size_t(found - m_notes.begin());
    }
    setEntries(
        m_notes.size(),
        [this](size_t index) { return MemoryTexts::row(m_notes[index], m_calendar); }, kept);
    setEmpty(m_notes.empty(), !m_coordinator.memory().notes.notes().empty());
}

void NotesPage::showSelected()
{
    keepDraft();
    const auto* const note = selected();
    m_shown = note ? std::optional(*note) : std::nullopt;
    const auto draft = note ? m_drafts.find(note->id) : m_drafts.end();
    const auto words = draft != m_drafts.end() ? draft->second : note ? note->text : QString();
    if (text().toPlainText() != words)
        text().setPlainText(words);
    const auto origin =
        note ? NoteLogic::origin(*note, m_coordinator.memory().sessions.sessions()) : std::nullopt;
    setFacts(note ? MemoryTexts::facts(*note, origin, m_calendar) : QString());
    m_open->setVisible(origin.has_value());
    showButtons();
}

void NotesPage::keepDraft()
{
    if (!m_shown)
        return;
    const auto words = text().toPlainText();
    if (words == m_shown->text)
        m_drafts.erase(m_shown->id);
    else
        m_drafts.insert_or_assign(m_shown->id, words);
}

void NotesPage::showButtons()
{
    const auto words = text().toPlainText().trimmed();
    m_save->setVisible(m_shown.has_value());
    m_save->setEnabled(m_shown && !words.isEmpty() && words != m_shown->text);
    m_delete->setVisible(m_shown.has_value());
    m_revive->setVisible(m_shown && m_shown->status != MemoryStatus::active);
}

NoteLogic::Filter NotesPage::filter() const
{
    return { wanted(), chosen<MemoryCategory>(*m_category), chosen<MemoryStatus>(*m_status) };
}

const MemoryNote* NotesPage::selected() const
{
    const auto row = selectedRow();
    return row && *row < m_notes.size() ? &m_notes[*row] : nullptr;
}

void NotesPage::correct()
{
    const auto before = *m_shown;
    const auto words = text().toPlainText();
    // Nothing is left to save, so the text field follows the note again.
    m_shown->text = words;
    m_coordinator.memoryDesk().correctNote(before.id, words);
    offerToPutBack(tr("The note is corrected."), before);
}

void NotesPage::remove()
{
    if (!m_shown)
        return;
    const auto before = *m_shown;
    m_coordinator.memoryDesk().deleteNote(before.id);
    offerToPutBack(tr("The note is deleted."), before);
}

void NotesPage::revive()
{
    const auto before = *m_shown;
    m_coordinator.memoryDesk().reviveNote(before.id);
    offerToPutBack(tr("The note is active again."), before);
}

void NotesPage::openConversation()
{
    if (const auto origin = NoteLogic::origin(*m_shown, m_coordinator.memory().sessions.sessions()))
        Q_EMIT linkRequested(MemoryLinks::conversation(*origin));
}

void NotesPage::offerToPutBack(const QString& done, const MemoryNote& before)
{
    Q_EMIT undoOffered(
        done, [&desk = m_coordinator.memoryDesk(), before] { desk.putBack(before); });
}

} // namespace pobblewig
