#pragma once

#include "PobblewigDesktop/buddy/BuddyPlaces.h"
#include "PobblewigDesktop/buddy/BuddyView.h"
#include "PobblewigDesktop/controls/DropContents.h"

#include "buddy/BuddyGlide.h"
#include "buddy/BuddyWindowSystem.h"

#include <QWidget>

#include <optional>
#include <set>

namespace pobblewig {

/// The buddy on the desktop: above all windows and on every desktop. It never takes the focus, nor
/// a click beside it.
///
/// It can be dragged and thrown, and is back in its place when the program starts again; each
/// arrangement of screens has a place of its own. It hides while another program has the screen to
/// itself.
class BuddyWindow : public QWidget {
    Q_OBJECT

public:
    /// The reasons for hiding the buddy.
    enum class HidingReason { fullScreen, sharedScreen, putAway };

    /// Reads and writes the group "buddy" of the settings.
    BuddyWindow(BuddyWindowSystem& system, QSettings& settings, BuddyView::Clock clock = {});
    ~BuddyWindow() override;

    /// The view, through which the buddy is told what happens.
    BuddyView& view() { return *m_view; }

    void setSprite(const MascotSprite& sprite) { m_view->setSprite(sprite); }

    /// The feet stay where the user has put them.
    void setSizeScale(double sizeScale);

    /// The buddy is shown again once no reason is left, provided that it is meant to be shown at
    /// all.
    void setHiddenFor(HidingReason reason, bool isHidden);

    void setVisible(bool isVisible) override;

Q_SIGNALS:
    /// Emitted once, when the user sees the buddy for the first time.
    void appeared();

    /// The user wants to talk, and was not just starting to pet the buddy.
    void clicked();

    /// The user wants the menu, at this point of the desktop.
    void menuRequested(QPoint place);

    /// The user has dropped this text on the buddy.
    void textDropped(const QString& text);

    /// The user has dropped files or a picture on the buddy.
    void attachmentDropped(const DropContents& contents);

protected:
    bool event(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct Grip {
        QPoint pressedAt;
        /// From the window's corner to the pointer.
        QPoint offset;
        bool isDragging = false;
    };

    QPoint place() const { return m_corner + QPoint(width() / 2, height()); }
    void standAt(QPoint corner);
    void carryTo(QPoint corner);
    /// Lets go at this time of the hand, or without one because the window goes.
    void letGo(std::optional<double> handTime);
    void glide();
    void rest();

    /// Makes the window as large as the view, with the feet where they are. Until the desktop has
    /// done so, the old picture stays: a new one in the old window would stand in the wrong place.
    void fitAroundView();
    void paintInNewSize();
    void restorePlace();
    void watchOcclusion();
    void watchFullScreen();
    void giveWayToFullScreen();
    void applyShape();

    BuddyWindowSystem& m_system;
    BuddyPlaces m_places;
    BuddyView* m_view;
    double m_occlusionAskedAt = 0;
    /// Runs while a new size is pending.
    QTimer m_sizeDeadline;
    /// Runs while a click may still become a double click.
    QTimer m_click;
    std::optional<Grip> m_grip;
    BuddyGlide m_glide;
    /// The window's latest corner.
    QPoint m_corner;
    bool m_isSettling = false;
    bool m_isWanted = false;
    std::set<HidingReason> m_hidingReasons;
};

} // namespace pobblewig
