#pragma once

#include <QPoint>
#include <QRect>
#include <QString>

#include <vector>

/// Where on the screens the buddy stands. Its place is the point on the ground between its feet,
/// which stays when its size changes. Never called without a screen.
namespace pobblewig::BuddyPlacement {

struct Screen {
    QRect geometry;
    /// What the desktop's panels leave free.
    QRect available;
    double devicePixelRatio = 1;
};

/// The same for the same screens, in whatever order they are listed.
QString layoutName(std::vector<QRect> screens);

/// For the first time: near the lower right corner of what the desktop leaves free.
QPoint initialPlace(QSize size, const QRect& available);

QRect windowAt(QPoint place, QSize size);

/// The places where all of the buddy can be seen in an area: at least one.
QRect placesIn(const QRect& area, QSize size);

/// The place itself if the middle of the buddy can be seen there; else the nearest one where all
/// of it can, and no panel is in the way.
QPoint visiblePlace(QPoint place, QSize size, const std::vector<Screen>& screens);

/// The screen that the buddy is on, or the nearest one.
const Screen& screenAt(QPoint place, QSize size, const std::vector<Screen>& screens);

} // namespace pobblewig::BuddyPlacement
