#include "PobblewigDesktop/pages/PageWindow.h"

#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/pages/UndoBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListWidget>
#include <QScrollArea>
#include <QStackedWidget>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr QSize usualSize(780, 580);
constexpr QSize leastSize(520, 360);
constexpr QSize usualSizeOfOnly(460, 580);
constexpr QSize leastSizeOfOnly(300, 360);
constexpr int sideWidth = 190;
constexpr int widestSide = 260;
constexpr int margin = 16;
constexpr int gap = 8;

QScrollArea* scrolling(QWidget& content)
{
    auto* const area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidget(&content);
    content.setAutoFillBackground(false);
    area->viewport()->setAutoFillBackground(false);
    return area;
}

} // namespace

PageWindow::PageWindow(const QString& title, PageEntries pages, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , m_entries(std::move(pages))
    , m_pages(m_entries.size())
    , m_side(new QVBoxLayout)
    , m_beside(new QVBoxLayout)
    , m_names(new QListWidget(this))
    , m_stack(new QStackedWidget(this))
    , m_undo(new UndoBar(this))
{
    setWindowTitle(title);
    const auto isOnlyPage = m_entries.size() == 1;
    setMinimumSize(isOnlyPage ? leastSizeOfOnly : leastSize);
    resize(isOnlyPage ? usualSizeOfOnly : usualSize);
    m_names->setHidden(isOnlyPage);
    m_names->setObjectName(QStringLiteral("pages"));
    m_names->setAccessibleName(tr("Pages"));
    for (const auto& entry : m_entries) {
        m_names->addItem(entry.title);
        m_stack->addWidget(new QWidget);
    }
    arrange();
    connect(m_names, &QListWidget::currentRowChanged, this, &PageWindow::openRow);
}

void PageWindow::openPage(const QString& id)
{
    const auto found = std::ranges::find(m_entries, id, &PageEntry::id);
    if (found != m_entries.end())
        m_names->setCurrentRow(int(found - m_entries.begin()));
}

QString PageWindow::currentPage() const
{
    return m_names->currentRow() < 0 ? QString() : m_entries[size_t(m_names->currentRow())].id;
}

void PageWindow::showState(const PublishedState& state)
{
    m_state = &state;
    if (m_names->currentRow() < 0)
        m_names->setCurrentRow(0);
    for (const auto& page : m_pages) {
        if (page)
            page->showState(state);
    }
}

void PageWindow::setTheme(const Palette& palette)
{
    if (m_palette == palette)
        return;
    m_palette = palette;
    PanelStyle::apply(*this, palette);
    m_undo->setTheme(palette);
    for (int row = 0; row < m_names->count(); ++row)
        m_names->item(row)->setIcon(
            Icons::icon(m_entries[size_t(row)].icon, palette.text, palette.muted));
    m_names->setFixedWidth(std::clamp(m_names->sizeHintForColumn(0), sideWidth, widestSide));
    for (const auto& page : m_pages) {
        if (page)
            page->setTheme(palette);
    }
}

void PageWindow::reveal(const QString& page, const QString& part)
{
    openPage(page);
    if (m_names->currentRow() >= 0)
        this->page(m_names->currentRow()).reveal(part);
}

void PageWindow::addAbovePages(QWidget& widget)
{
    m_side->insertWidget(0, &widget);
}

void PageWindow::addBelowPages(QWidget& widget)
{
    m_beside->addWidget(&widget);
}

void PageWindow::step(int places)
{
    const auto row = m_names->currentRow() + places;
    if (row >= 0 && row < m_names->count())
        m_names->setCurrentRow(row);
}

void PageWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void PageWindow::arrange()
{
    m_names->setFixedWidth(sideWidth);
    m_names->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_names->setTextElideMode(Qt::ElideRight);
    m_names->setFrameShape(QFrame::NoFrame);
    m_side->setSpacing(gap);
    m_side->addWidget(m_names, 1);
    m_beside->setSpacing(gap);
    m_beside->addWidget(m_stack, 1);
    m_beside->addWidget(m_undo);
    auto* const all = new QHBoxLayout(this);
    all->setContentsMargins(margin, margin, margin, margin);
    all->setSpacing(margin);
    all->addLayout(m_side);
    all->addLayout(m_beside, 1);
}

void PageWindow::openRow(int row)
{
    if (row < 0)
        return;
    page(row);
    m_stack->setCurrentIndex(row);
    Q_EMIT pageOpened(m_entries[size_t(row)].id);
}

Page& PageWindow::page(int row)
{
    auto& page = m_pages[size_t(row)];
    if (page)
        return *page;
    page = m_entries[size_t(row)].make().release();
    page->setAccessibleName(m_entries[size_t(row)].title);
    connect(page, &Page::undoOffered, this, &PageWindow::offerUndo);
    connect(page, &Page::linkRequested, this, &PageWindow::linkRequested);
    auto* const empty = m_stack->widget(row);
    m_stack->insertWidget(row, scrolling(*page));
    m_stack->removeWidget(empty);
    empty->deleteLater();
    page->setTheme(m_palette);
    if (m_state)
        page->showState(*m_state);
    return *page;
}

void PageWindow::offerUndo(const QString& done, const std::function<void()>& undo)
{
    m_undo->offer(done, undo);
}

} // namespace pobblewig
