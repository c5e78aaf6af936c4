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
    QStringList texts;
    for (const auto& row : m_model.rows()) {
        const auto marked = m_marks.selection.find(row.id);
        if (marked == m_marks.selection.end() || row.kind == ConversationRow::Kind::day)
            continue;
        texts += MessageLayout::asShown(m_layouts.layout(row).shown().copied(marked->second));
    }
    if (texts.isEmpty() && currentIndex().isValid())
        texts += shownText(m_model.row(currentIndex().row()));
    return texts.join(QStringLiteral("\n\n"));
}

QString ConversationView::shownText(const ConversationRow& row) const
{
    if (row.kind == ConversationRow::Kind::day)
        return row.text;
    return MessageLayout::asShown(m_layouts.layout(row).text());
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
    m_layouts.setMeasure(font(), viewport()->width());
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
        select({ currentIndex(), 0 }, { currentIndex(), layoutOf(currentIndex()).text().size() });
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
    const auto index = messageAt(point);
    if (event->button() != Qt::LeftButton || !index.isValid()) {
        event->ignore();
        return;
    }
    if (copyCodeAt(point))
        return;
    m_pressedLink = linkAt(point);
    m_pressedUndo = undoAt(point);
    const auto extends =
        event->modifiers().testFlag(Qt::ShiftModifier) && m_selectionOrigin.row.isValid();
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    if (!extends)
        m_selectionOrigin = placeAt(index, point);
    select(m_selectionOrigin, placeAt(index, point));
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
    if (const auto index = messageAt(point); index.isValid() && m_selectionOrigin.row.isValid())
        select(m_selectionOrigin, placeAt(index, point));
}

void ConversationView::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    auto* const clipboard = QGuiApplication::clipboard();
    const auto link = std::exchange(m_pressedLink, {});
    const auto undo = std::exchange(m_pressedUndo, {});
    if (!undo.isEmpty() && undo == undoAt(event->position().toPoint()))
        Q_EMIT undoRequested(undo);
    else if (!m_marks.selection.empty() && clipboard->supportsSelection())
        clipboard->setText(textToCopy(), QClipboard::Selection);
    else if (!link.isEmpty() && link == linkAt(event->position().toPoint()))
        Q_EMIT linkRequested(link);
}

void ConversationView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const auto index = messageAt(event->position().toPoint());
    if (!index.isValid())
        return;
    const auto position = positionIn(index, event->position().toPoint());
    const auto word = layoutOf(index).wordAt(position);
    select({ index, word.start }, { index, word.end() });
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
    const auto index = isByKeyboard ? currentIndex() : messageAt(event->pos());
    auto* const menu = new MessageMenu(this);
    connect(menu, &MessageMenu::linkRequested, this, &ConversationView::linkRequested);
    connect(menu, &MessageMenu::retryRequested, this, &ConversationView::retryRequested);
    connect(menu, &MessageMenu::undoRequested, this, &ConversationView::undoRequested);
    connectActions(*menu);
    if (!m_marks.selection.empty())
        menu->addAction(tr("Copy selection"), this, &ConversationView::copy);
    if (const auto link = isByKeyboard ? QString() : linkAt(event->pos()); !link.isEmpty())
        menu->addLink(link);
    if (index.isValid())
        menu->addMessage(m_model.row(index.row()), layoutOf(index).shown(), m_offers);
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
        ? messageAt(viewport()->mapFromGlobal(QCursor::pos()))
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
    const auto position = positionIn(index, {});
    m_place = { .row = index, .position = position, .top = topOf(index, position) };
}

void ConversationView::restorePlace()
{
    {
        const QScopedValueRollback settling(m_isSettling, true);
        auto* const bar = verticalScrollBar();
        if (m_isFollowing || !m_place.row.isValid())
            bar->setValue(bar->maximum());
        else
            bar->setValue(bar->value() + topOf(m_place.row, m_place.position) - m_place.top);
    }
    showButtons();
    m_jump->setVisible(!m_isFollowing);
}

int ConversationView::topOf(const QModelIndex& index, qsizetype position) const
{
    return m_delegate.lineTop(m_model.row(index.row()), visualRect(index).topLeft(), position);
}

qsizetype ConversationView::positionIn(const QModelIndex& index, const QPoint& point) const
{
    const auto& row = m_model.row(index.row());
    return m_delegate.positionAt(row, visualRect(index).topLeft(), point);
}

QModelIndex ConversationView::messageAt(const QPoint& point) const
{
    const auto index = indexAt(point);
    if (!index.isValid() || m_model.row(index.row()).kind == ConversationRow::Kind::day)
        return {};
    return index;
}

auto ConversationView::placeAt(const QModelIndex& index, const QPoint& point) const -> TextPlace
{
    return { index, positionIn(index, point) };
}

MessageLayout& ConversationView::layoutOf(const QModelIndex& index) const
{
    return m_layouts.layout(m_model.row(index.row()));
}

QPointF ConversationView::textPoint(const QModelIndex& index, const QPoint& point) const
{
    const auto& row = m_model.row(index.row());
    return point - m_delegate.textTop(row, visualRect(index).topLeft());
}

QString ConversationView::linkAt(const QPoint& point) const
{
    const auto index = messageAt(point);
    return index.isValid() ? layoutOf(index).linkAt(textPoint(index, point)) : QString();
}

QString ConversationView::undoAt(const QPoint& point) const
{
    const auto index = messageAt(point);
    if (!index.isValid())
        return {};
    const auto& row = m_model.row(index.row());
    const auto place = m_delegate.undoPlace(row, visualRect(index).topLeft());
    return place.contains(point) ? row.card.proposalId : QString();
}

bool ConversationView::copyCodeAt(const QPoint& point)
{
    const auto index = messageAt(point);
    const auto code = layoutOf(index).copyButtonAt(textPoint(index, point));
    if (!code)
        return false;
    setClipboard(layoutOf(index).text().mid(code->start, code->length));
    QToolTip::showText(viewport()->mapToGlobal(point), tr("Copied"), viewport());
    return true;
}

void ConversationView::showCursor(const QPoint& point)
{
    const auto index = messageAt(point);
    const auto isButton = index.isValid()
        && (!undoAt(point).isEmpty() || !linkAt(point).isEmpty()
            || layoutOf(index).copyButtonAt(textPoint(index, point)));
    viewport()->setCursor(isButton ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void ConversationView::select(const TextPlace& from, const TextPlace& to)
{
    m_marks.selection.clear();
    const auto isForward =
        std::pair(from.row.row(), from.position) <= std::pair(to.row.row(), to.position);
    const auto& first = isForward ? from : to;
    const auto& last = isForward ? to : from;
    for (auto number = first.row.row(); number <= last.row.row(); ++number) {
        const auto& row = m_model.row(number);
        if (row.kind == ConversationRow::Kind::day)
            continue;
        const auto start = number == first.row.row() ? first.position : 0;
        const auto end =
            number == last.row.row() ? last.position : m_layouts.layout(row).text().size();
        if (end > start)
            m_marks.selection[row.id] = { start, end - start };
    }
    viewport()->update();
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
    m_jump->move(area.right() - jumpSide - jumpMargin, area.bottom() - jumpSide - jumpMargin);
}

} // namespace pobblewig
