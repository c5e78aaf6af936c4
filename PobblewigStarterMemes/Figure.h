#pragma once

#include "PobblewigStarterMemes/Canvas.h"
#include "PobblewigStarterMemes/Face.h"

#include <array>

namespace pobblewig {

enum class Side { left, right };
inline constexpr std::array bothSides { Side::left, Side::right };

/// One of the buddy's mascots, drawn from its own sprite, with a face that can show more than the
/// buddy's.
struct Figure {
    MascotSprite sprite;
    /// The dot below the middle between the legs.
    QPoint feet = { Canvas::width / 2, 45 };
    /// How many dots a cell of the sprite takes: 2, 3 or 4.
    int cell = 3;
    Face face = {};
    MascotGait gait = MascotGait::idle;
    bool hasLegs = true;
    /// Seen from behind.
    bool isTurnedAway = false;

    /// Where things are attached to it.
    QPoint crown() const;
    QPoint mouth() const;
    QRect eye(Side side) const;
    QPoint cheek(Side side) const;
    QRect body() const;

    void paint(Canvas& canvas) const;
    /// A layer with the figure alone, outlined.
    Canvas layer() const;
    /// A hand with its middle there.
    void paintPaw(Canvas& canvas, QPoint middle) const;
};

namespace Figures {

MascotSprite grayMouse();
MascotSprite brownMouse();
MascotSprite whiteMouse();
MascotSprite goldenAxolotl();
MascotSprite pinkAxolotl();
MascotSprite blueAxolotl();
MascotSprite lavenderAxolotl();

} // namespace Figures

} // namespace pobblewig
