#pragma once

#include "buddy/BuddyState.h"
#include "mascots/MascotSprite.h"

#include <QPointF>
#include <QSizeF>

/// Decides where the buddy looks, and how.
namespace pobblewig::BuddyEyes {

/// Blinks for a moment every few seconds, now and then twice. `time` counts from the buddy's first
/// appearance.
bool isBlinking(double time);

/// The eyes for a state of mind.
EyeStyle style(BuddyState::Kind state, double elapsed);

/// Looks towards the pointer, by -1, 0 or 1 each way, and straight ahead while the pointer is near
/// the middle.
QPoint look(QPointF pointer, QSizeF view);

/// Reads along a line, starting at the left, and goes back for the next one.
int reading(double elapsed);

} // namespace pobblewig::BuddyEyes
