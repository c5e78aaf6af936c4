#pragma once

#include <QPoint>
#include <QRect>
#include <QString>

#include <vector>

/// Decides where the buddy stands on the screens. Its place is the point on the ground between its
/// feet, which stays when its size changes. Never called without a screen.
namespace pobblewig::BuddyPlacement {

struct Screen {
    QRect geometry;
    /// The part that the desktop's panels leave free.
    QRect available;
    double devicePixelRatio = 1;
};

/// Returns the same name for the same screens, in whatever order they are listed.
QString layoutName(std::vector<QRect> screens);

/// Returns the place for the first start: near the lower right corner of the area that the desktop
/// leaves free.
QPoint initialPlace(QSize size, const QRect& available);

QRect windowAt(QPoint place, QSize size);

/// Returns the places where the whole buddy is visible within an area: at least one.
QRect placesIn(const QRect& area, QSize size);

/// Returns the place itself if the middle of the buddy is visible there; otherwise the nearest one
/// where all of it is visible and no panel is in the way.
QPoint visiblePlace(QPoint place, QSize size, const std::vector<Screen>& screens);

/// Returns the screen that the buddy is on, or the nearest one.
const Screen& screenAt(QPoint place, QSize size, const std::vector<Screen>& screens);

} // namespace pobblewig::BuddyPlacement
