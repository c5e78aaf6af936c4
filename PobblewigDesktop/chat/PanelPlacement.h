#pragma once

#include <QRect>

/// Where the chat panel opens.
namespace pobblewig::PanelPlacement {

/// Beside the buddy on the side with more room, never over it and never off the screen. The panel
/// becomes smaller than `wanted` only where the screen leaves no such place.
QRect beside(const QRect& buddy, const QSize& wanted, const QRect& screen);

} // namespace pobblewig::PanelPlacement
