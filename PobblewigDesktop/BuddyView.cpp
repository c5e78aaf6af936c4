#include "PobblewigDesktop/BuddyView.h"

#include "buddy/BuddyPoses.h"

#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <utility>

namespace pobblewig {

BuddyView::BuddyView(QWidget* parent)
    : QAbstractButton(parent)
    , m_bitmap(BuddyBitmap::standing(MascotSprite::sprite(Mascot::mouse)))
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_sinceStart.start();
    connect(&m_frameTimer, &QTimer::timeout, this, &BuddyView::tick);
    fitToScreen();
}

void BuddyView::setSprite(const MascotSprite& sprite)
{
    m_bitmap = BuddyBitmap::standing(sprite);
    drawAnew();
}

void BuddyView::setSizeScale(double sizeScale)
{
    m_sizeScale = std::clamp(sizeScale, smallestScale, largestScale);
    fitToScreen();
}

void BuddyView::fitToScreen()
{
    const auto ratio = devicePixelRatioF();
    const auto canvas = BuddyCanvas::ofScale(m_sizeScale, ratio);
    if (canvas == m_canvas)
        return;
    m_canvas = canvas;
    const auto size = canvas.size();
    setFixedSize(qCeil(size.width() / ratio), qCeil(size.height() / ratio));
    drawAnew();
}

void BuddyView::setOccluded(bool isOccluded)
{
    if (isOccluded == m_isOccluded)
        return;
    m_isOccluded = isOccluded;
    updatePacing();
    tick();
}

void BuddyView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const auto point = 1 / devicePixelRatioF();
    painter.scale(point, point);
    for (const auto& run : m_bitmap.runs) {
        const QColor color(run.rgb.red, run.rgb.green, run.rgb.blue);
        painter.fillRect(m_layout.rect(run), color);
    }
    if (!std::exchange(m_hasAppeared, true))
        QMetaObject::invokeMethod(this, &BuddyView::appeared, Qt::QueuedConnection);
}

void BuddyView::showEvent(QShowEvent*)
{
    updatePacing();
    m_frameTimer.start();
}

void BuddyView::hideEvent(QHideEvent*)
{
    m_frameTimer.stop();
}

void BuddyView::tick()
{
    if (m_isOccluded)
        return;
    const auto seconds = double(m_sinceStart.elapsed()) / 1000;
    if (BuddyLayout(BuddyPoses::ofState({}, seconds, 0), m_canvas) != m_layout)
        drawAnew();
}

void BuddyView::updatePacing()
{
    const auto interval = BuddyFramePacing::interval({ .isOccluded = m_isOccluded });
    m_frameTimer.setInterval(std::chrono::round<std::chrono::milliseconds>(interval));
}

void BuddyView::drawAnew()
{
    const auto seconds = double(m_sinceStart.elapsed()) / 1000;
    m_layout = BuddyLayout(BuddyPoses::ofState({}, seconds, 0), m_canvas);
    if (const auto shape = shapeOf(m_layout); shape != m_shape) {
        m_shape = shape;
        Q_EMIT shapeChanged();
    }
    // At once, so that the window never shows a shape without its picture.
    repaint();
}

QRegion BuddyView::shapeOf(const BuddyLayout& layout) const
{
    QRegion shape;
    for (const auto& run : m_bitmap.runs)
        shape += layout.rect(run);
    return shape;
}

} // namespace pobblewig
