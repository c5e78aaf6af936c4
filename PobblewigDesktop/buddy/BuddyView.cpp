#include "PobblewigDesktop/buddy/BuddyView.h"

#include <QApplication>
#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <utility>

namespace pobblewig {

namespace {

double steadySeconds()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(time).count();
}

} // namespace

BuddyView::BuddyView(QWidget* parent, Clock clock)
    : QAbstractButton(parent)
    , m_clock(clock ? std::move(clock) : steadySeconds)
    , m_animation(now())
    , m_artist(MascotSprite::forID({}))
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_painter.setPalette(Theme::palette(Theme::desktopScheme(qApp->palette()), {}));
    connect(&m_frameTimer, &QTimer::timeout, this, &BuddyView::tick);
    fitToScreen();
}

void BuddyView::setSprite(const MascotSprite& sprite)
{
    m_artist.setSprite(sprite);
    draw();
}

void BuddyView::setSizeScale(double sizeScale)
{
    m_sizeScale = std::clamp(sizeScale, smallestScale, largestScale);
    fitToScreen();
}

void BuddyView::setTheme(const Palette& palette)
{
    m_painter.setPalette(palette);
    update();
}

void BuddyView::setReach(const BuddyReach& reach)
{
    m_reach = reach;
}

void BuddyView::setSleepDelay(std::chrono::seconds delay)
{
    m_animation.setSleepDelay(double(delay.count()));
    updatePacing();
}

void BuddyView::fitToScreen()
{
    const auto ratio = devicePixelRatioF();
    m_painter.setFont(font(), ratio);
    auto canvas = BuddyCanvas::ofScale(m_sizeScale, ratio);
    canvas.room = m_canvas.room;
    if (canvas == m_canvas)
        return;
    setCanvas(canvas);
    draw();
}

void BuddyView::setState(const BuddyState& state)
{
    m_animation.setState(state, now());
    react();
}

void BuddyView::pet()
{
    m_animation.pet(now());
    react();
}

void BuddyView::stir()
{
    m_animation.stir(now());
    react();
}

void BuddyView::dozeOff()
{
    m_animation.dozeOff(now());
    react();
}

void BuddyView::beginDragging()
{
    m_animation.beginDragging(now());
    react();
}

void BuddyView::endDragging()
{
    m_animation.endDragging(now());
    react();
}

void BuddyView::windowMoved(QPointF by)
{
    m_animation.windowMoved(by, now());
    updatePacing();
}

void BuddyView::lookAt(QPointF pointer)
{
    m_animation.mouseMoved(pointer, size());
}

void BuddyView::lookAhead()
{
    m_animation.mouseExited();
}

void BuddyView::showMeme(const MemeAnimation& animation, double duration)
{
    m_animation.showMeme(animation, duration, now());
    react();
}

void BuddyView::dismissMeme()
{
    m_animation.dismissMeme();
    react();
}

void BuddyView::setDefaultMeme(const std::optional<BuddyMeme>& meme)
{
    m_animation.setDefaultMeme(meme, now());
    react();
}

void BuddyView::setSleepingMeme(const std::optional<BuddyMeme>& meme)
{
    m_animation.setSleepingMeme(meme, now());
    react();
}

void BuddyView::setDock(const BuddyDock& dock)
{
    m_animation.setDock(dock);
    react();
}

void BuddyView::setOccluded(bool isOccluded)
{
    if (isOccluded == m_isOccluded)
        return;
    m_isOccluded = isOccluded;
    m_animation.setOccluded(isOccluded);
    react();
}

void BuddyView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const auto point = 1 / devicePixelRatioF();
    painter.scale(point, point);
    m_painter.paint(painter, m_drawing);
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
    m_animation.tick(now());
    Q_EMIT ticked();
    const auto sleep = m_animation.sleepAmount();
    if (std::exchange(m_reportedSleep, sleep) != sleep)
        Q_EMIT sleepAmountChanged(sleep);
    updatePacing();
    if (!m_isOccluded)
        draw();
}

void BuddyView::updatePacing()
{
    const auto interval =
        std::chrono::ceil<std::chrono::milliseconds>(m_animation.untilNextFrame(now()));
    if (interval != m_frameTimer.intervalAsDuration())
        m_frameTimer.setInterval(interval);
}

void BuddyView::react()
{
    if (m_frameTimer.isActive())
        tick();
}

void BuddyView::draw()
{
    const auto frame = m_animation.frame(now());
    const BuddyPill pill { frame.badge ? m_painter.pillSize(*frame.badge) : QSize(), m_reach };
    auto canvas = m_canvas;
    canvas.room = BuddyArtist::room(frame, canvas.cell, pill);
    if (canvas != m_canvas) {
        setCanvas(canvas);
        Q_EMIT roomChanged();
    }

    m_artist.draw(frame, m_canvas, pill, m_nextDrawing);
    if (m_nextDrawing == m_drawing)
        return;
    std::swap(m_drawing, m_nextDrawing);
    m_drawing.outline(m_nextShape);
    m_painter.outlineBadge(m_drawing, m_nextShape);
    if (m_nextShape != m_shape) {
        std::swap(m_shape, m_nextShape);
        Q_EMIT shapeChanged();
    }
    // At once, so that the window never shows a shape without its picture.
    repaint();
}

void BuddyView::setCanvas(const BuddyCanvas& canvas)
{
    m_canvas = canvas;
    const auto ratio = devicePixelRatioF();
    const auto size = canvas.size();
    setFixedSize(qCeil(size.width() / ratio), qCeil(size.height() / ratio));
}

} // namespace pobblewig
