#pragma once

#include "PobblewigDesktop/BuddyView.h"

#include "buddy/BuddyWindowSystem.h"

#include <QSettings>
#include <QWidget>

#include <optional>

namespace pobblewig {

/// The buddy on the desktop: above all windows, on every desktop, never in the way of a click
/// beside it and never with the focus.
///
/// It can be dragged, and stands where it was left when the program comes up again; each
/// arrangement of screens has a place of its own.
class BuddyWindow : public QWidget {
    Q_OBJECT

public:
    /// Reads and writes the group "buddy" of the settings.
    BuddyWindow(BuddyWindowSystem& system, QSettings& settings, BuddyView::Clock clock = {});

    /// To tell the buddy what happens.
    BuddyView& view() { return *m_view; }

    void setSprite(const MascotSprite& sprite) { m_view->setSprite(sprite); }

    /// The feet stay where the user has put them.
    void setSizeScale(double sizeScale);

Q_SIGNALS:
    /// Once, when the user sees the buddy for the first time.
    void appeared();

    /// The user wants to talk.
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

    void standAt(QPoint corner);

    /// As large as the view, with the feet where they are. Until the desktop has made it so, what
    /// was seen stays: a new picture in the old window would stand in the wrong place.
    void fitAroundView();
    void paintInNewSize();
    void restorePlace();
    void savePlace();
    void watchScreens();
    void watchOcclusion();
    void applyShape();

    BuddyWindowSystem& m_system;
    QSettings& m_settings;
    BuddyView* m_view;
    QTimer m_occlusionWatch;
    /// Runs while a new size was asked for.
    QTimer m_sizeDeadline;
    std::optional<Grip> m_grip;
    /// Where the window was put last.
    QPoint m_corner;
    bool m_isSettling = false;
};

} // namespace pobblewig
