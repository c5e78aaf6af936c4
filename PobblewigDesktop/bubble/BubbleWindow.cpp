#include "PobblewigDesktop/bubble/BubbleWindow.h"

#include "PobblewigDesktop/controls/Icons.h"
#include "PobblewigDesktop/controls/PanelStyle.h"
#include "PobblewigDesktop/controls/WrappedLabel.h"
#include "presence/BubbleLogic.h"

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace pobblewig {

namespace {

using Side = BubblePlacement::Side;

constexpr int margin = 12;
constexpr int gap = 8;
constexpr int corner = 10;
constexpr int closeSide = 24;
constexpr BubblePlacement::Tail tail;

/// From one foot of the tail over its tip to the other.
QPolygonF tailOf(const BubblePlacement::Place& place)
{
    const auto isUpright = place.side == Side::above || place.side == Side::below;
    const auto outward = place.side == Side::above || place.side == Side::left ? 1 : -1;
    const QPointF along = isUpright ? QPointF(tail.length, 0) : QPointF(0, tail.length);
    const QPointF out = isUpright ? QPointF(0, outward) : QPointF(outward, 0);
    const auto root = QPointF(place.tail) - out;
    return { { root - along, QPointF(place.tail) + out * (tail.length - 1), root + along } };
}

QRect windowAround(const BubblePlacement::Place& place)
{
    return place.bubble.united(tailOf(place).boundingRect().toAlignedRect());
}

} // namespace

BubbleWindow::BubbleWindow(BuddyWindowSystem& system)
    : QWidget(nullptr,
        Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus
            | Qt::NoDropShadowWindowHint)
    , m_system(system)
    , m_label(new WrappedLabel({}, this))
    , m_close(new QToolButton(this))
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(tr("Pobblewig says"));
    setAccessibleName(windowTitle());
    setCursor(Qt::PointingHandCursor);
    m_label->setAccessibleName(tr("Bubble"));
    m_label->setMostLines(BubbleLogic::lines);
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_close->setObjectName(QStringLiteral("expander"));
    m_close->setAccessibleName(tr("Dismiss bubble"));
    m_close->setToolTip(tr("Dismiss bubble"));
    m_close->setFocusPolicy(Qt::NoFocus);
    m_close->setIconSize({ 16, 16 });
    connect(m_close, &QToolButton::clicked, this, &BubbleWindow::dismissed);
}

void BubbleWindow::setTheme(const Palette& palette)
{
    m_palette = palette;
    PanelStyle::apply(*this, palette);
    m_close->setIcon(Icons::icon(Icons::Name::close, palette.muted, palette.muted));
    update();
}

void BubbleWindow::setText(const QString& text)
{
    auto lines = text;
    lines.replace(u'\n', QChar(QChar::LineSeparator));
    if (lines == m_label->text())
        return;
    m_label->setText(lines);
    m_label->setAccessibleDescription(text);
    QAccessibleEvent alert(m_label, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void BubbleWindow::standBeside(const QRect& buddy, const QRect& screen)
{
    const auto area = screen.adjusted(gap, gap, -gap, -gap);
    const auto place = BubblePlacement::beside(buddy, bodySize(), area, tail);
    const auto frame = windowAround(place);
    m_outline = outline(place).translated(-frame.topLeft());
    m_corner = frame.topLeft();
    setFixedSize(frame.size());
    move(m_corner);

    const auto body = place.bubble.translated(-frame.topLeft());
    const auto words = body.adjusted(margin, gap, -closeSide - gap / 2, -gap);
    const QRect close(body.right() - closeSide - 2, body.top() + 4, closeSide, closeSide);
    m_label->setGeometry(QStyle::visualRect(layoutDirection(), body, words));
    m_close->setGeometry(QStyle::visualRect(layoutDirection(), body, close));
    cutOut();
    update();
}

bool BubbleWindow::event(QEvent* event)
{
    if (event->type() == QEvent::Show)
        m_system.accompanyUser(winId());
    return QWidget::event(event);
}

void BubbleWindow::enterEvent(QEnterEvent*)
{
    Q_EMIT heldChanged(true);
}

void BubbleWindow::leaveEvent(QEvent*)
{
    Q_EMIT heldChanged(false);
}

void BubbleWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_pressedAt = event->globalPosition().toPoint();
}

void BubbleWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (m_pressedAt)
        move(m_corner + QPoint(event->globalPosition().toPoint().x() - m_pressedAt->x(), 0));
}

void BubbleWindow::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_pressedAt)
        return;
    const auto way = event->globalPosition().toPoint() - *m_pressedAt;
    m_pressedAt.reset();
    move(m_corner);
    if (std::abs(way.x()) > dismissalDistance)
        Q_EMIT dismissed();
    else if (way.manhattanLength() <= QApplication::startDragDistance())
        Q_EMIT clicked();
}

void BubbleWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(m_palette.outline);
    painter.setBrush(m_palette.surface);
    painter.drawPath(m_outline);
}

QSize BubbleWindow::bodySize() const
{
    m_label->ensurePolished();
    const auto metrics = m_label->fontMetrics();
    auto width = 0;
    for (const auto& line : m_label->text().split(QChar(QChar::LineSeparator)))
        width = std::max(width, metrics.horizontalAdvance(line) + 1);
    width = std::min(width, BubbleLogic::charactersPerLine * metrics.averageCharWidth());
    const auto height = std::max(m_label->heightForWidth(width), closeSide - gap);
    return { width + margin + closeSide + gap / 2, height + 2 * gap };
}

QPainterPath BubbleWindow::outline(const BubblePlacement::Place& place) const
{
    QPainterPath body;
    body.addRoundedRect(QRectF(place.bubble).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    QPainterPath pointer;
    pointer.addPolygon(tailOf(place));
    pointer.closeSubpath();
    return body.united(pointer);
}

void BubbleWindow::cutOut()
{
    if (m_system.canBlend())
        clearMask();
    else
        setMask(QRegion(m_outline.toFillPolygon().toPolygon()));
}

} // namespace pobblewig
