#pragma once

#include "PobblewigDesktop/contactsheet/WindowScenes.h"

#include <QByteArray>
#include <QImage>

/// Pictures of everything that there is to see. `ratio` is that of device pixels.
namespace pobblewig::ContactSheet {

/// Every moment of every scene, with a column for each sprite, on bright and on dark.
QImage sheet(double ratio);

/// One moment of each scene, each by another sprite.
QImage poster(double ratio);

/// Each of these scenes in light and dark, in the screen's ratio.
QImage windows(const std::vector<WindowScene>& scenes);

/// A day in the life of the buddy, as an animated PNG.
QByteArray film(double ratio);

} // namespace pobblewig::ContactSheet
