#pragma once

#include <QList>
#include <QRect>

/// Decides where the chat panel opens.
namespace pobblewig::PanelPlacement {

/// Returns a place beside the buddy, on the side with more room, never over it and never off the
/// screen. The panel is smaller than `wanted` only if the screen leaves no other choice.
QRect beside(const QRect& buddy, const QSize& wanted, const QRect& screen);

/// Returns the corner of a panel whose title bar the user can reach on one of the screens: its own
/// if that is so, otherwise one nearby.
QPoint inReach(const QRect& panel, const QList<QRect>& screens);

} // namespace pobblewig::PanelPlacement
