#pragma once

#include "presence/PresenceState.h"

#include <QPainter>

/// The small marks on the buddy's face, as pixels of the buddy's own kind. They differ in shape as
/// well as in colour.
namespace pobblewig::PresenceMark {

/// Into the lower right corner of a square.
void paint(QPainter& painter, PresenceBadge badge, const QRect& square);

} // namespace pobblewig::PresenceMark
