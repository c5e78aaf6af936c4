#pragma once

#include "mascots/MascotSprite.h"
#include "presence/PresenceState.h"

#include <QIcon>

/// The buddy as a small still picture, for the tray and the title bars.
namespace pobblewig::BuddyFace {

/// Returns a square of this many device pixels, filled by the buddy from side to side, or nearly so
/// where its own pixels stay equally large then. The badge is in the lower right corner.
QPixmap pixmap(const MascotSprite& sprite, PresenceBadge badge, int side);

/// Returns the face in every size that trays and task lists ask for.
QIcon icon(const MascotSprite& sprite, PresenceBadge badge = PresenceBadge::none);

} // namespace pobblewig::BuddyFace
