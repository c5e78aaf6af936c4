#include "PobblewigDesktop/buddy/BuddyWindow.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWindow>

namespace pobblewig {

namespace {

constexpr std::chrono::milliseconds longestWaitForASize { 100 };

/// A click that waits for a second one must not feel late.
constexpr int longestWaitForAClick = 250;

double handTime(const QMouseEvent& event)
{
    return double(event.timestamp()) / 1000;
}

} // namespace

BuddyWindow::BuddyWindow(BuddyWindowSystem& system, QSettings& settings, BuddyView::Clock clock)
    : QWidget(nullptr,
        Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus
            | Qt::NoDropShadowWindowHint)
    , m_system(system)
    , m_places(settings)
    , m_view(new BuddyView(this, std::move(clock)))
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(QStringLiteral("Pobblewig"));
    setAccessibleName(QStringLiteral("Pobblewig"));
    setMouseTracking(true);
    setAcceptDrops(true);
    m_view->setAccessibleName(tr("Open chat"));
    connect(m_view, &BuddyView::clicked, this, &BuddyWindow::clicked);
    connect(m_view, &BuddyView::appeared, this, &BuddyWindow::appeared);
    connect(m_view, &BuddyView::appeared, this, &BuddyWindow::watchFullScreen);
    // Its picture is looked for among all of a theme's files.
    connect(m_view, &BuddyView::appeared, this, [this] { setCursor(Qt::PointingHandCursor); });
    connect(m_view, &BuddyView::ticked, this, &BuddyWindow::glide);
    connect(m_view, &BuddyView::ticked, this, &BuddyWindow::watchOcclusion);
    connect(m_view, &BuddyView::roomChanged, this, &BuddyWindow::fitAroundView);
    connect(m_view, &BuddyView::shapeChanged, this, &BuddyWindow::applyShape);
    connect(&m_sizeDeadline, &QTimer::timeout, this, &BuddyWindow::paintInNewSize);
    m_sizeDeadline.setSingleShot(true);
    m_sizeDeadline.setInterval(longestWaitForASize);
    connect(&m_click, &QTimer::timeout, this, &BuddyWindow::clicked);
    m_click.setSingleShot(true);
    m_click.setInterval(qMin(QApplication::doubleClickInterval(), longestWaitForAClick));

    setFixedSize(m_view->size());
    restorePlace();
    connect(&m_places, &BuddyPlaces::screensChanged, this, &BuddyWindow::restorePlace);
}

BuddyWindow::~BuddyWindow()
{
    m_system.watchFullScreen({});
}

void BuddyWindow::setSizeScale(double sizeScale)
{
    m_view->setSizeScale(sizeScale);
    if (m_view->size() == size())
        return;
    setFixedSize(m_view->size());
    restorePlace();
}

void BuddyWindow::setHiddenFor(HidingReason reason, bool isHidden)
{
    const auto isNews =
        isHidden ? m_hidingReasons.insert(reason).second : m_hidingReasons.erase(reason) > 0;
    if (isNews)
        setVisible(m_isWanted);
}

void BuddyWindow::setVisible(bool isVisible)
{
    m_isWanted = isVisible;
    QWidget::setVisible(isVisible && m_hidingReasons.empty());
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
        m_occlusionAskedAt = m_view->now();
        break;
    case QEvent::Hide:
        letGo(std::nullopt);
        rest();
        break;
    case QEvent::Leave:
        m_view->lookAhead();
        break;
    case QEvent::ScreenChangeInternal:
        m_view->fitToScreen();
        fitAroundView();
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
    m_view->stir();
    if (event->button() != Qt::LeftButton)
        return;
    const auto pressedAt = event->globalPosition().toPoint();
    // Caught in its glide it is in the hand at once, and that was no click.
    const auto isCaught = m_glide.isGliding();
    const auto offset = isCaught ? pressedAt - m_corner : event->position().toPoint();
    m_grip = Grip { .pressedAt = pressedAt, .offset = offset, .isDragging = isCaught };
    m_glide.grab(place(), handTime(*event));
    if (isCaught)
        m_view->beginDragging();
}

void BuddyWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_grip) {
        m_view->lookAt(event->position());
        return;
    }
    const auto position = event->globalPosition().toPoint();
    const auto distance = (position - m_grip->pressedAt).manhattanLength();
    if (!m_grip->isDragging && distance > QApplication::startDragDistance()) {
        m_grip->isDragging = true;
        m_view->beginDragging();
    }
    if (!m_grip->isDragging)
        return;
    carryTo(position - m_grip->offset);
    m_glide.carry(place(), handTime(*event));
}

void BuddyWindow::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_grip)
        return;
    if (!m_grip->isDragging)
        m_click.start();
    letGo(handTime(*event));
    giveWayToFullScreen();
}

void BuddyWindow::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_click.stop();
    m_view->pet();
}

void BuddyWindow::contextMenuEvent(QContextMenuEvent* event)
{
    Q_EMIT menuRequested(event->globalPos());
}

void BuddyWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!event->mimeData()->hasText() && !DropContents::isAttachable(*event->mimeData()))
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_view->stir();
}

void BuddyWindow::dropEvent(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const auto contents = DropContents::of(*event->mimeData());
    if (contents.isAttachable())
        Q_EMIT attachmentDropped(contents);
    else
        Q_EMIT textDropped(contents.text);
}

void BuddyWindow::standAt(QPoint corner)
{
    m_corner = corner;
    m_view->setReach(m_places.reach(place(), size()));
    move(corner);
}

void BuddyWindow::carryTo(QPoint corner)
{
    m_view->windowMoved(corner - m_corner);
    standAt(corner);
}

void BuddyWindow::letGo(std::optional<double> handTime)
{
    const auto grip = std::exchange(m_grip, std::nullopt);
    if (!grip || !grip->isDragging)
        return;
    m_view->endDragging();
    if (handTime)
        m_glide.release(m_places.surroundings(place(), size()), *handTime);
    m_places.keep(place());
}

void BuddyWindow::glide()
{
    if (!m_glide.isGliding())
        return;
    carryTo(BuddyPlacement::windowAt(m_glide.tick(m_view->now()), size()).topLeft());
    if (!m_glide.isGliding())
        m_places.keep(place());
}

void BuddyWindow::rest()
{
    if (!m_glide.isGliding())
        return;
    m_glide.stop();
    m_places.keep(place());
}

void BuddyWindow::fitAroundView()
{
    const auto size = m_view->size();
    if (size == this->size())
        return;
    const auto frame = BuddyPlacement::windowAt(place(), size);
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
    const auto place = m_places.place(size());
    if (!place)
        return;
    m_glide.stop();
    standAt(BuddyPlacement::windowAt(*place, size()).topLeft());
    giveWayToFullScreen();
}

void BuddyWindow::watchOcclusion()
{
    // Every second, or two for a sleeper, along with a frame: one wake-up for both.
    const auto interval = m_view->sleepAmount() < 1 ? 0.9 : 1.9;
    if (m_view->now() - m_occlusionAskedAt < interval)
        return;
    m_occlusionAskedAt = m_view->now();
    m_isSettling = false;
    m_view->setOccluded(m_system.isCovered(winId()));
}

void BuddyWindow::watchFullScreen()
{
    m_system.watchFullScreen([this] { giveWayToFullScreen(); });
    giveWayToFullScreen();
}

void BuddyWindow::giveWayToFullScreen()
{
    if (!m_isWanted)
        return;
    const auto screen = m_places.screen(place(), size());
    setHiddenFor(HidingReason::fullScreen, m_system.isFullScreenInFront(screen));
}

void BuddyWindow::applyShape()
{
    if (updatesEnabled())
        m_system.setShape(winId(), m_view->shape());
}

} // namespace pobblewig
