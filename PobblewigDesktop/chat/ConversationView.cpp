#include "PobblewigDesktop/chat/ConversationView.h"

#include "PobblewigDesktop/chat/ConversationModel.h"
#include "PobblewigDesktop/chat/MessageButtons.h"
#include "PobblewigDesktop/chat/MessageMenu.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QToolButton>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

constexpr int lineStep = 20;
constexpr int nearTheEnd = 8;
constexpr int jumpSide = 32;
constexpr int jumpMargin = 12;

void setClipboard(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace

ConversationView::ConversationView(ConversationModel& model, QWidget* parent)
    : QListView(parent)
    , m_model(model)
    , m_delegate(model, m_layouts, m_marks)
    , m_hits(*this, model, m_layouts, m_delegate)
    , m_texts(model, m_layouts, m_marks)
    , m_buttons(new MessageButtons(viewport()))
    , m_jump(new QToolButton(this))
{
    setAccessibleName(tr("Conversation"));
    setAccessibleDescription(
        tr("Your conversation with Pobblewig appears here. Write something below to begin."));
    setModel(&model);
    setItemDelegate(&m_delegate);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setSelectionMode(NoSelection);
    setAutoScroll(false);
    setFrameShape(NoFrame);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setMouseTracking(true);
    verticalScrollBar()->setSingleStep(lineStep);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ConversationView::noteScrolling);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this,
        [this](int, int maximum) { verticalScrollBar()->setEnabled(maximum > 0); });
    m_nextSlice.setSingleShot(true);
    connect(&m_nextSlice, &QTimer::timeout, this, [this] { scheduleDelayedItemsLayout(); });

    m_jump->setObjectName(QStringLiteral("jumpToLatest"));
    m_jump->setAccessibleName(tr("Jump to latest"));
    m_jump->setToolTip(tr("Jump to latest"));
    m_jump->setCursor(Qt::ArrowCursor);
    m_jump->setFixedSize(jumpSide, jumpSide);
    m_jump->hide();
    connect(m_jump, &QToolButton::clicked, this, &ConversationView::followLatest);
    connectButtons();
}

QString ConversationView::textToCopy() const
{
    auto selected = m_texts.selected();
    if (!selected.isEmpty() || !currentIndex().isValid())
        return selected;
    return shownText(m_model.row(currentIndex().row()));
}

QString ConversationView::shownText(const ConversationRow& row) const
{
    return m_texts.shown(row);
}

void ConversationView::setTheme(const Palette& palette)
{
    m_delegate.setPalette(palette);
    m_buttons->setTheme(palette);
    m_jump->setIcon(Icons::icon(Icons::Name::chevronDown, palette.text, palette.muted));
    viewport()->update();
}

void ConversationView::setOffers(const MessageOffers& offers)
{
    m_offers = offers;
    showButtons();
}

void ConversationView::setMatches(
    const std::vector<MessageRange>& matches, const std::optional<MessageRange>& current)
{
    m_marks.matches.clear();
    m_marks.currentMatch = current;
    for (const auto& match : matches)
        m_marks.matches[match.message].push_back(match.range);
    viewport()->update();
}

void ConversationView::reveal(const MessageRange& place)
{
    const auto row = m_model.rowOf(place.message);
    if (!row)
        return;
    m_layouts.layout(m_model.row(*row)).layOut();
    doItemsLayout();
    const auto top = topOf(m_model.index(*row), place.range.start);
    const auto height = viewport()->height();
    if (top < 0 || top > height - 2 * lineStep)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + top - height / 3);
}

void ConversationView::followLatest()
{
    m_isFollowing = true;
    restorePlace();
}

void ConversationView::copy() const
{
    if (const auto text = textToCopy(); !text.isEmpty())
        setClipboard(text);
}

void ConversationView::doItemsLayout()
{
    const QScopedValueRollback settling(m_isSettling, true);
    m_layouts.setMeasure(font(), viewport()->width(), layoutDirection());
    m_layouts.retain(m_model);
    const auto isAnchored = !m_isFollowing && m_place.row.isValid();
    const auto first = isAnchored ? m_place.row.row() : m_model.rowCount();
    if (!m_layouts.layOutSlice(m_model, first))
        m_nextSlice.start(0);
    QListView::doItemsLayout();
    restorePlace();
}

bool ConversationView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        showButtons();
    return QListView::viewportEvent(event);
}

void ConversationView::paintEvent(QPaintEvent* event)
{
    QListView::paintEvent(event);
    if (m_model.rowCount() > 0)
        return;
    constexpr int inset = 48;
    QPainter painter(viewport());
    painter.setPen(m_delegate.palette().muted);
    painter.drawText(viewport()->rect().adjusted(inset, 0, -inset, 0),
        Qt::AlignCenter | Qt::TextWordWrap, accessibleDescription());
}

void ConversationView::resizeEvent(QResizeEvent* event)
{
    {
        const QScopedValueRollback settling(m_isSettling, true);
        QListView::resizeEvent(event);
    }
    scheduleDelayedItemsLayout();
    placeJumpButton();
}

void ConversationView::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        scheduleDelayedItemsLayout();
}

void ConversationView::focusInEvent(QFocusEvent* event)
{
    // The latest is where reading begins; the list itself would begin with the first.
    if (!currentIndex().isValid() && m_model.rowCount() > 0)
        selectionModel()->setCurrentIndex(
            m_model.index(m_model.rowCount() - 1), QItemSelectionModel::NoUpdate);
    QListView::focusInEvent(event);
}

void ConversationView::keyPressEvent(QKeyEvent* event)
{
    static const std::map<int, QAbstractSlider::SliderAction> scrolling {
        { Qt::Key_PageUp, QAbstractSlider::SliderPageStepSub },
        { Qt::Key_PageDown, QAbstractSlider::SliderPageStepAdd },
        { Qt::Key_Home, QAbstractSlider::SliderToMinimum },
        { Qt::Key_End, QAbstractSlider::SliderToMaximum },
    };
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::SelectAll) && currentIndex().isValid())
        selectCurrent();
    else if (const auto found = scrolling.find(event->key()); found != scrolling.end())
        verticalScrollBar()->triggerAction(found->second);
    else if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)
        stepCurrent(event->key() == Qt::Key_Up ? -1 : 1);
    else
        event->ignore();
}

void ConversationView::mousePressEvent(QMouseEvent* event)
{
    const auto point = event->position().toPoint();
    const auto index = m_hits.messageAt(point);
    if (event->button() != Qt::LeftButton || !index.isValid()) {
        event->ignore();
        return;
    }
    if (const auto code = m_hits.codeAt(point); !code.isEmpty()) {
        setClipboard(code);
        QToolTip::showText(viewport()->mapToGlobal(point), tr("Copied"), viewport());
        return;
    }
    m_pressedLink = m_hits.linkAt(point);
    m_pressedUndo = m_hits.undoAt(point);
    const auto extends =
        event->modifiers().testFlag(Qt::ShiftModifier) && m_selectionOrigin.row.isValid();
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    if (!extends)
        m_selectionOrigin = m_hits.placeIn(index, point);
    selectTo(index, point);
}

void ConversationView::mouseMoveEvent(QMouseEvent* event)
{
    const auto point = event->position().toPoint();
    if (!(event->buttons() & Qt::LeftButton)) {
        showCursor(point);
        showButtons();
        return;
    }
    const auto beyond = point.y() - std::clamp(point.y(), 0, viewport()->height());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + beyond);
    const auto index = m_hits.messageAt(point);
    if (index.isValid() && m_selectionOrigin.row.isValid())
        selectTo(index, point);
}

void ConversationView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    auto* const clipboard = QGuiApplication::clipboard();
    const auto point = event->position().toPoint();
    const auto link = std::exchange(m_pressedLink, {});
    const auto undo = std::exchange(m_pressedUndo, {});
    if (!undo.isEmpty() && undo == m_hits.undoAt(point))
        Q_EMIT undoRequested(undo);
    else if (!m_marks.selection.empty() && clipboard->supportsSelection())
        clipboard->setText(textToCopy(), QClipboard::Selection);
    else if (!link.isEmpty() && link == m_hits.linkAt(point))
        Q_EMIT linkRequested(link);
}

void ConversationView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const auto point = event->position().toPoint();
    if (const auto index = m_hits.messageAt(point); index.isValid())
        m_texts.selectWordAt(m_hits.placeIn(index, point));
    viewport()->update();
}

void ConversationView::selectCurrent()
{
    m_texts.selectAllOf(currentIndex());
    viewport()->update();
}

void ConversationView::selectTo(const QModelIndex& row, const QPoint& point)
{
    m_texts.select(m_selectionOrigin, m_hits.placeIn(row, point));
    viewport()->update();
}

template <typename Actions>
void ConversationView::connectActions(const Actions& actions)
{
    connect(&actions, &Actions::editRequested, this, &ConversationView::editRequested);
    connect(
        &actions, &Actions::answerAgainRequested, this, &ConversationView::answerAgainRequested);
    connect(
        &actions, &Actions::otherAnswerRequested, this, &ConversationView::otherAnswerRequested);
}

void ConversationView::contextMenuEvent(QContextMenuEvent* event)
{
    const auto isByKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const auto index = isByKeyboard ? currentIndex() : m_hits.messageAt(event->pos());
    auto* const menu = new MessageMenu(this);
    connect(menu, &MessageMenu::linkRequested, this, &ConversationView::linkRequested);
    connect(menu, &MessageMenu::retryRequested, this, &ConversationView::retryRequested);
    connect(menu, &MessageMenu::undoRequested, this, &ConversationView::undoRequested);
    connectActions(*menu);
    if (!m_marks.selection.empty())
        menu->addAction(tr("Copy selection"), this, &ConversationView::copy);
    if (const auto link = isByKeyboard ? QString() : m_hits.linkAt(event->pos()); !link.isEmpty())
        menu->addLink(link);
    if (index.isValid())
        menu->addMessage(
            m_model.row(index.row()), m_layouts.layout(m_model.row(index.row())).shown(), m_offers);
    menu->addAction(tr("Find…"), this, &ConversationView::findRequested);
    menu->popup(
        isByKeyboard ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos());
}

void ConversationView::connectButtons()
{
    connect(m_buttons, &MessageButtons::copyRequested, this, [this](const auto& message) {
        if (const auto row = m_model.rowOf(message))
            setClipboard(shownText(m_model.row(*row)));
    });
    connectActions(*m_buttons);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
        &ConversationView::showButtons);
}

void ConversationView::showButtons()
{
    const auto pointed = viewport()->underMouse()
        ? m_hits.messageAt(viewport()->mapFromGlobal(QCursor::pos()))
        : QModelIndex();
    const auto index = pointed.isValid() || !hasFocus() ? pointed : currentIndex();
    const auto* const row = index.isValid() ? &m_model.row(index.row()) : nullptr;
    const auto hasButtons = row && row->isMessage() && row->kind != ConversationRow::Kind::note
        && row->kind != ConversationRow::Kind::card;
    if (!hasButtons) {
        m_buttons->hide();
        return;
    }
    const auto footer = m_delegate.footer(*row, visualRect(index).topLeft());
    m_buttons->showFor(*row, m_offers, footer.toAlignedRect());
}

void ConversationView::noteScrolling()
{
    showButtons();
    if (m_isSettling)
        return;
    m_isFollowing = verticalScrollBar()->value() >= verticalScrollBar()->maximum() - nearTheEnd;
    keepPlace();
    m_jump->setVisible(!m_isFollowing);
}

void ConversationView::keepPlace()
{
    const auto index = indexAt({ viewport()->width() / 2, 0 });
    if (!index.isValid())
        return;
    m_place = m_hits.placeIn(index, {});
    m_placeTop = topOf(index, m_place.position);
}

void ConversationView::restorePlace()
{
    {
        const QScopedValueRollback settling(m_isSettling, true);
        auto* const bar = verticalScrollBar();
        if (m_isFollowing || !m_place.row.isValid())
            bar->setValue(bar->maximum());
        else
            bar->setValue(bar->value() + topOf(m_place.row, m_place.position) - m_placeTop);
    }
    showButtons();
    m_jump->setVisible(!m_isFollowing);
}

int ConversationView::topOf(const QModelIndex& index, qsizetype position) const
{
    return m_delegate.lineTop(m_model.row(index.row()), visualRect(index).topLeft(), position);
}

void ConversationView::showCursor(const QPoint& point)
{
    viewport()->setCursor(m_hits.isButtonAt(point) ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void ConversationView::stepCurrent(int step)
{
    const auto shown = currentIndex().isValid() ? visualRect(currentIndex()) : QRect();
    const auto area = viewport()->rect();
    const auto isCutOff = step < 0 ? shown.top() < area.top() : shown.bottom() > area.bottom();
    if (currentIndex().isValid() && isCutOff && shown.intersects(area)) {
        verticalScrollBar()->triggerAction(
            step < 0 ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
        return;
    }
    const auto last = m_model.rowCount() - 1;
    const auto wanted = currentIndex().isValid() ? currentIndex().row() + step : last;
    if (wanted < 0 || wanted > last)
        return;
    m_marks.selection.clear();
    selectionModel()->setCurrentIndex(m_model.index(wanted), QItemSelectionModel::NoUpdate);
    scrollTo(currentIndex());
    viewport()->update();
}

void ConversationView::placeJumpButton()
{
    const auto area = viewport()->geometry();
    const QRect place(area.right() - jumpSide - jumpMargin, area.bottom() - jumpSide - jumpMargin,
        jumpSide, jumpSide);
    m_jump->move(QStyle::visualRect(layoutDirection(), area, place).topLeft());
}

} // namespace pobblewig
