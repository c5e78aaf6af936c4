#pragma once

#include <QRect>

/// Decides where the buddy's bubble appears.
namespace pobblewig::BubblePlacement {

/// The side of the buddy.
enum class Side { above, left, right, below };

struct Place {
    QRect bubble;
    Side side = Side::above;
    /// The point on the bubble's edge where its tail begins.
    QPoint tail;
};

struct Tail {
    int length = 8;
    /// How far it stays away from the bubble's corners.
    int inset = 16;
};

/// Returns a place on the screen, preferably above the buddy, and never over it unless the screen
/// has no room around it. Between the two is room for the tail.
Place beside(const QRect& buddy, const QSize& bubble, const QRect& screen, const Tail& tail);

} // namespace pobblewig::BubblePlacement
