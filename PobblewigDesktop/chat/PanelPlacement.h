#pragma once

#include <QRect>

/// Decides where the chat panel opens.
namespace pobblewig::PanelPlacement {

/// Returns a place beside the buddy, on the side with more room, never over it and never off the
/// screen. The panel is smaller than `wanted` only if the screen leaves no other choice.
QRect beside(const QRect& buddy, const QSize& wanted, const QRect& screen);

} // namespace pobblewig::PanelPlacement
