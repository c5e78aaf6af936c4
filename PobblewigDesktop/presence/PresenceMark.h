#pragma once

#include "presence/PresenceState.h"

#include <QPainter>

/// The small marks on the buddy's face, drawn in pixels like its own. They differ in shape as well
/// as in colour.
namespace pobblewig::PresenceMark {

/// Paints the mark into the lower right corner of a square.
void paint(QPainter& painter, PresenceBadge badge, const QRect& square);

} // namespace pobblewig::PresenceMark
