#include "PobblewigDesktop/memory/EntryPage.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "PobblewigDesktop/memory/EntryDelegate.h"
#include "memory/MemorySnapshot.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTreeView>

#include <algorithm>

namespace pobblewig {

namespace {

constexpr int gap = 8;
constexpr int leastListHeight = 160;
constexpr int textHeight = 110;

} // namespace

EntryPage::EntryPage(const Words& words)
    : m_emptyWords(words.empty)
    , m_entries(new EntryModel(this))
    , m_delegate(new EntryDelegate(this))
    , m_search(new QLineEdit(this))
    , m_filters(new QHBoxLayout)
    , m_view(new QTreeView(this))
    , m_empty(new WrappedLabel(words.empty, this))
    , m_text(new QPlainTextEdit(this))
    , m_facts(new WrappedLabel({}, this))
    , m_buttons(new QHBoxLayout)
{
    m_search->setPlaceholderText(words.search);
    m_search->setAccessibleName(words.search);
    m_search->setClearButtonEnabled(true);
    m_view->setObjectName(QStringLiteral("entries"));
    m_view->setAccessibleName(words.title);
    m_view->setItemDelegate(m_delegate);
    m_view->setHeaderHidden(true);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->setMinimumHeight(leastListHeight);
    m_text->setAccessibleName(words.text);
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setFixedHeight(textHeight);
    arrange(words);
    setModel(*m_entries);
    connect(m_search, &QLineEdit::textChanged, this, [this] { list(); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search,
        qOverload<>(&QWidget::setFocus));
}

void EntryPage::showState(const PublishedState& state)
{
    m_published = state.of<MemorySnapshot>().revision;
    listIfSeen();
}

void EntryPage::setTheme(const Palette& palette)
{
    m_delegate->setTheme(palette);
    m_view->viewport()->update();
}

void EntryPage::setEntries(size_t count, EntryModel::MakeRow make, std::optional<size_t> selected)
{
    const auto row = selected.value_or(selectedRow().value_or(0));
    const auto place = m_view->verticalScrollBar()->value();
    {
        const QSignalBlocker quiet(m_view->selectionModel());
        m_entries->setEntries(count, std::move(make));
        if (count > 0)
            m_view->setCurrentIndex(m_entries->index(int(std::min(row, count - 1))));
    }
    m_view->scrollTo(m_view->currentIndex());
    m_view->verticalScrollBar()->setValue(place);
    showSelected();
}

std::optional<size_t> EntryPage::selectedRow() const
{
    const auto index = m_view->currentIndex();
    return index.isValid() ? std::optional(size_t(index.row())) : std::nullopt;
}

QString EntryPage::wanted() const
{
    return m_search->text();
}

void EntryPage::addFilter(QWidget& filter)
{
    m_filters->addWidget(&filter);
}

QPushButton& EntryPage::addButton(const QString& text)
{
    auto* const button = new QPushButton(text, this);
    button->setAutoDefault(false);
    m_buttons->addWidget(button);
    return *button;
}

void EntryPage::setEmpty(bool isEmpty, bool isNarrowed)
{
    PanelStyle::setText(*m_empty, isNarrowed ? tr("Nothing matches.") : m_emptyWords);
    m_empty->setVisible(isEmpty);
    m_view->setHidden(isEmpty);
    m_text->setHidden(isEmpty);
    m_facts->setHidden(isEmpty || m_facts->text().isEmpty());
}

void EntryPage::setFacts(const QString& facts)
{
    PanelStyle::setText(*m_facts, facts);
    m_facts->setHidden(facts.isEmpty());
}

void EntryPage::setModel(QAbstractItemModel& model)
{
    m_view->setModel(&model);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this] { showSelected(); });
}

void EntryPage::showEvent(QShowEvent* event)
{
    Page::showEvent(event);
    listIfSeen();
}

void EntryPage::arrange(const Words& words)
{
    auto* const title = new QLabel(words.title, this);
    PanelStyle::setRole(*title, QStringLiteral("title"));
    auto* const explanation = new WrappedLabel(words.explanation, this);
    for (auto* const quiet : { explanation, m_empty, m_facts })
        PanelStyle::setRole(*quiet, QStringLiteral("detail"));
    m_facts->hide();
    m_empty->hide();
    m_filters->setSpacing(gap);
    m_filters->addWidget(m_search, 1);
    m_buttons->setSpacing(gap);
    m_buttons->addStretch(1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(gap);
    column->addWidget(title);
    column->addWidget(explanation);
    column->addLayout(m_filters);
    column->addWidget(m_view, 1);
    column->addWidget(m_empty);
    column->addWidget(m_text);
    column->addWidget(m_facts);
    column->addLayout(m_buttons);
    // An empty list leaves its place to nothing, so the rest stays at the top.
    column->addStretch(0);
}

void EntryPage::listIfSeen()
{
    if (!isVisible() || m_listed == m_published)
        return;
    m_listed = m_published;
    list();
}

} // namespace pobblewig
