#pragma once

#include <QRect>
#include <QSize>

/// The rectangle that the user draws on a picture. Everything is in the picture's pixels, and the
/// rectangle always lies within the picture.
namespace pobblewig::RegionLogic {

/// On each side, unless the picture is smaller.
inline constexpr int least = 16;

/// The middle of the picture.
QRect initial(QSize picture);

/// Between two points, in any order and even beyond the picture.
QRect drawn(QPoint from, QPoint to, QSize picture);

QRect moved(const QRect& region, QPoint by, QSize picture);

/// Moves the lower right corner.
QRect sized(const QRect& region, QPoint by, QSize picture);

} // namespace pobblewig::RegionLogic
