#pragma once

#include "PobblewigDesktop/buddy/BuddyPlaces.h"
#include "PobblewigDesktop/buddy/BuddyView.h"

#include "buddy/BuddyGlide.h"
#include "buddy/BuddyWindowSystem.h"

#include <QWidget>

#include <optional>
#include <set>

namespace pobblewig {

/// The buddy on the desktop: above all windows, on every desktop, never in the way of a click
/// beside it and never with the focus.
///
/// It can be dragged and thrown, and stands where it was left when the program comes up again; each
/// arrangement of screens has a place of its own. It goes out of sight while another program has
/// its screen for itself.
class BuddyWindow : public QWidget {
    Q_OBJECT

public:
    /// Why the buddy is out of sight.
    enum class HidingReason { fullScreen, sharedScreen };

    /// Reads and writes the group "buddy" of the settings.
    BuddyWindow(BuddyWindowSystem& system, QSettings& settings, BuddyView::Clock clock = {});
    ~BuddyWindow() override;

    /// To tell the buddy what happens.
    BuddyView& view() { return *m_view; }

    void setSprite(const MascotSprite& sprite) { m_view->setSprite(sprite); }

    /// The feet stay where the user has put them.
    void setSizeScale(double sizeScale);

    /// Shown again once no reason is left, if it is to be shown at all.
    void setHiddenFor(HidingReason reason, bool isHidden);

    void setVisible(bool isVisible) override;

Q_SIGNALS:
    /// Once, when the user sees the buddy for the first time.
    void appeared();

    /// The user wants to talk, and has not just begun to pet the buddy.
    void clicked();

    /// The user wants the menu, at this point of the desktop.
    void menuRequested(QPoint place);

protected:
    bool event(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

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
    /// At this time of the hand, or because the window goes.
    void letGo(std::optional<double> handTime);
    void glide();
    void rest();

    /// As large as the view, with the feet where they are. Until the desktop has made it so, what
    /// was seen stays: a new picture in the old window would stand in the wrong place.
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
    /// Runs while a new size was asked for.
    QTimer m_sizeDeadline;
    /// Runs while a click may become a double one.
    QTimer m_click;
    std::optional<Grip> m_grip;
    BuddyGlide m_glide;
    /// Where the window was put last.
    QPoint m_corner;
    bool m_isSettling = false;
    bool m_isWanted = false;
    std::set<HidingReason> m_hidingReasons;
};

} // namespace pobblewig
