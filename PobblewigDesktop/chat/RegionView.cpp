#include "PobblewigDesktop/chat/RegionView.h"

#include "PobblewigDesktop/chat/RegionLogic.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

#include <algorithm>
#include <optional>

namespace pobblewig {

namespace {

constexpr double mostOfScreen = 0.7;
constexpr int step = 8;

std::optional<QPoint> direction(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return QPoint(-step, 0);
    case Qt::Key_Right:
        return QPoint(step, 0);
    case Qt::Key_Up:
        return QPoint(0, -step);
    case Qt::Key_Down:
        return QPoint(0, step);
    default:
        return std::nullopt;
    }
}

} // namespace

RegionView::RegionView(const QImage& picture, QWidget* parent)
    : QWidget(parent)
    , m_picture(picture)
{
    setAccessibleName(tr("Part of the screen"));
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setMinimumSize(200, 120);
    setRegion(RegionLogic::initial(picture.size()));
}

void RegionView::setTheme(const Palette& palette)
{
    m_accent = palette.accent;
    update();
}

QSize RegionView::sizeHint() const
{
    const auto room = screen()->availableSize() * mostOfScreen;
    return m_picture.size().scaled(m_picture.size().boundedTo(room), Qt::KeepAspectRatio);
}

void RegionView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(place().topLeft());
    painter.scale(scale(), scale());
    painter.drawImage(0, 0, m_picture);
    QPainterPath rest;
    rest.addRect(m_picture.rect());
    rest.addRect(m_region);
    painter.fillPath(rest, QColor(0, 0, 0, 140));
    QPen pen(m_accent, 2);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawRect(m_region);
}

void RegionView::mousePressEvent(QMouseEvent* event)
{
    m_pressedAt = inPicture(event->position());
}

void RegionView::mouseMoveEvent(QMouseEvent* event)
{
    setRegion(RegionLogic::drawn(m_pressedAt, inPicture(event->position()), m_picture.size()));
}

void RegionView::keyPressEvent(QKeyEvent* event)
{
    const auto by = direction(event->key());
    if (!by)
        QWidget::keyPressEvent(event);
    else if (event->modifiers() & Qt::ShiftModifier)
        setRegion(RegionLogic::sized(m_region, *by, m_picture.size()));
    else
        setRegion(RegionLogic::moved(m_region, *by, m_picture.size()));
}

QRectF RegionView::place() const
{
    const auto shown = QSizeF(m_picture.size()).scaled(size(), Qt::KeepAspectRatio);
    return { (width() - shown.width()) / 2, (height() - shown.height()) / 2, shown.width(),
        shown.height() };
}

QPoint RegionView::inPicture(QPointF point) const
{
    return ((point - place().topLeft()) / scale()).toPoint();
}

void RegionView::setRegion(const QRect& region)
{
    m_region = region;
    setAccessibleDescription(tr("%1 × %2 at %3, %4")
                                 .arg(region.width())
                                 .arg(region.height())
                                 .arg(region.x())
                                 .arg(region.y()));
    update();
}

} // namespace pobblewig
