#pragma once

#include "PobblewigStarterMemes/Canvas.h"

/// Grounds to place figures on, and weather.
namespace pobblewig::Scenery {

/// Where the floor of a room begins.
inline constexpr int floor = 38;
inline constexpr QPoint center { Canvas::width / 2, Canvas::height / 2 };

inline constexpr LetterColor heartColors[] { { 'X', Ink::red }, { 'O', Ink::crimson },
    { 'W', Ink::white } };

Canvas room(RGB wall, RGB boards);
/// Beams from a point, turning with each step.
Canvas beams(RGB one, RGB other, QPoint from = center, int step = 0);
Canvas dotted(RGB ground, RGB dots);
Canvas night();
/// A light from above on a dark stage.
Canvas spotlight();
/// Fire that rises from a line, different at each step.
void paintFlames(Canvas& canvas, int left, int right, int bottom, int step);
void paintRain(Canvas& canvas, QRect area, RGB color, int step);
void paintConfetti(Canvas& canvas, int step);
void paintSteam(Canvas& canvas, QPoint from, int step);
/// A puddle or a sea with small waves.
void paintWater(Canvas& canvas, int surface, int step);
/// Lines that rush towards the middle.
void paintSpeedLines(Canvas& canvas, RGB color, int step);
/// The buddy's own heart, as it rises when it is petted.
void paintHeart(Canvas& canvas, QPoint middle, bool isLarge);
/// A stream from below an eye.
void paintTears(Canvas& canvas, QRect eye, int length, int step);

} // namespace pobblewig::Scenery
