#pragma once

#include <QImage>

namespace pobblewig {

/// All reactions with their names and emotions, as small as they are on a screen, on a light and a
/// dark ground; four shots of what moves.
QImage reactionSheet();

} // namespace pobblewig
