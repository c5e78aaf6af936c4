#include "PobblewigDesktop/BuddyWindow.h"

#include "buddy/BuddyPlacement.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

namespace pobblewig {

namespace {

constexpr std::chrono::milliseconds longestWaitForASize { 100 };

std::vector<QRect> screenRects()
{
    std::vector<QRect> rects;
    for (const auto* screen : QGuiApplication::screens())
        rects.push_back(screen->geometry());
    return rects;
}

QString placeKey()
{
    return QStringLiteral("buddy/") + BuddyPlacement::layoutName(screenRects());
}

} // namespace

BuddyWindow::BuddyWindow(BuddyWindowSystem& system, QSettings& settings, BuddyView::Clock clock)
    : QWidget(nullptr,
        Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus
            | Qt::NoDropShadowWindowHint)
    , m_system(system)
    , m_settings(settings)
    , m_view(new BuddyView(this, std::move(clock)))
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(QStringLiteral("Pobblewig"));
    setAccessibleName(QStringLiteral("Pobblewig"));
    setCursor(Qt::PointingHandCursor);
    m_view->setAccessibleName(tr("Open chat"));
    connect(m_view, &BuddyView::clicked, this, &BuddyWindow::clicked);
    connect(m_view, &BuddyView::appeared, this, &BuddyWindow::appeared);
    connect(m_view, &BuddyView::roomChanged, this, &BuddyWindow::fitAroundView);
    connect(m_view, &BuddyView::shapeChanged, this, &BuddyWindow::applyShape);
    connect(&m_occlusionWatch, &QTimer::timeout, this, &BuddyWindow::watchOcclusion);
    m_occlusionWatch.setInterval(std::chrono::seconds(1));
    connect(&m_sizeDeadline, &QTimer::timeout, this, &BuddyWindow::paintInNewSize);
    m_sizeDeadline.setSingleShot(true);
    m_sizeDeadline.setInterval(longestWaitForASize);

    setFixedSize(m_view->size());
    restorePlace();
    watchScreens();
}

void BuddyWindow::setSizeScale(double sizeScale)
{
    m_view->setSizeScale(sizeScale);
    setFixedSize(m_view->size());
    restorePlace();
}

bool BuddyWindow::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        m_system.accompanyUser(winId());
        applyShape();
        connect(windowHandle(), &QWindow::widthChanged, this, &BuddyWindow::paintInNewSize,
            Qt::UniqueConnection);
        connect(windowHandle(), &QWindow::heightChanged, this, &BuddyWindow::paintInNewSize,
            Qt::UniqueConnection);
        m_isSettling = true;
        m_occlusionWatch.start();
        break;
    case QEvent::Hide:
        m_occlusionWatch.stop();
        break;
    case QEvent::ScreenChangeInternal:
        m_view->fitToScreen();
        setFixedSize(m_view->size());
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void BuddyWindow::moveEvent(QMoveEvent* event)
{
    // Window managers may frame a new window without telling Qt where it stands then. Asked to put
    // it where it stands already, they tell.
    if (event->pos() != m_corner && std::exchange(m_isSettling, false)) {
        const auto ask = [this] { move(m_corner); };
        QMetaObject::invokeMethod(this, ask, Qt::QueuedConnection);
    }
}

void BuddyWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const auto pressedAt = event->globalPosition().toPoint();
    m_grip = Grip { .pressedAt = pressedAt, .offset = event->position().toPoint() };
}

void BuddyWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_grip)
        return;
    const auto position = event->globalPosition().toPoint();
    const auto distance = (position - m_grip->pressedAt).manhattanLength();
    m_grip->isDragging |= distance > QApplication::startDragDistance();
    if (m_grip->isDragging)
        standAt(position - m_grip->offset);
}

void BuddyWindow::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_grip)
        return;
    const auto wasDragging = m_grip->isDragging;
    m_grip.reset();
    if (wasDragging)
        savePlace();
    else
        Q_EMIT clicked();
}

void BuddyWindow::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_view->pet();
}

void BuddyWindow::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT menuRequested(event->globalPos());
}

void BuddyWindow::standAt(QPoint corner)
{
    m_corner = corner;
    move(corner);
}

void BuddyWindow::fitAroundView()
{
    const auto size = m_view->size();
    const auto place = m_corner + QPoint(width() / 2, height());
    const auto frame = BuddyPlacement::windowAt(place, size);
    if (m_grip)
        m_grip->offset += m_corner - frame.topLeft();
    m_corner = frame.topLeft();
    // One change of the geometry rather than a size first and a place later.
    setMinimumSize(this->size().boundedTo(size));
    setMaximumSize(this->size().expandedTo(size));
    setGeometry(frame);
    setFixedSize(size);
    if (isVisible()) {
        setUpdatesEnabled(false);
        m_sizeDeadline.start();
    }
}

void BuddyWindow::paintInNewSize()
{
    const auto isInTime = m_sizeDeadline.isActive();
    if (updatesEnabled() || (isInTime && windowHandle()->size() != size()))
        return;
    m_sizeDeadline.stop();
    setUpdatesEnabled(true);
    applyShape();
    repaint();
}

void BuddyWindow::restorePlace()
{
    const auto screens = screenRects();
    if (screens.empty())
        return;
    const auto saved = m_settings.value(placeKey());
    const auto wanted = saved.canConvert<QPoint>()
        ? saved.toPoint()
        : BuddyPlacement::initialPlace(
            size(), QGuiApplication::primaryScreen()->availableGeometry());
    const auto place = BuddyPlacement::visiblePlace(wanted, size(), screens);
    standAt(BuddyPlacement::windowAt(place, size()).topLeft());
}

void BuddyWindow::savePlace()
{
    m_settings.setValue(placeKey(), m_corner + QPoint(width() / 2, height()));
}

void BuddyWindow::watchScreens()
{
    const auto watch = [this](QScreen* screen) {
        connect(screen, &QScreen::geometryChanged, this, &BuddyWindow::restorePlace,
            Qt::QueuedConnection);
    };
    for (auto* screen : QGuiApplication::screens())
        watch(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &BuddyWindow::restorePlace,
        Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &BuddyWindow::restorePlace,
        Qt::QueuedConnection);
}

void BuddyWindow::watchOcclusion()
{
    m_isSettling = false;
    m_view->setOccluded(m_system.isCovered(winId()));
}

void BuddyWindow::applyShape()
{
    if (updatesEnabled())
        m_system.setShape(winId(), m_view->shape());
}

} // namespace pobblewig
