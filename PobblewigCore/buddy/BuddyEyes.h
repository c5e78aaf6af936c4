#pragma once

#include "buddy/BuddyState.h"
#include "mascots/MascotSprite.h"

#include <QPointF>
#include <QSizeF>

/// Where the buddy looks and how.
namespace pobblewig::BuddyEyes {

/// Every few seconds, for a moment, now and then twice. `time` since the buddy came up.
bool isBlinking(double time);

/// The eyes that a state of mind gives.
EyeStyle style(BuddyState::Kind state, double elapsed);

/// Towards the pointer, by -1, 0 or 1 each way: straight ahead while it is near the middle.
QPoint look(QPointF pointer, QSizeF view);

/// Along a line, to the left at first, and back to the next.
int reading(double elapsed);

} // namespace pobblewig::BuddyEyes
