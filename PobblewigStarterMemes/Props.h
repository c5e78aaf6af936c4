#pragma once

#include "buddy/PixelArt.h"

/// Things in the letters of `Ink`.
namespace pobblewig::Props {

extern const PixelArt mug;
extern const PixelArt teaCup;
extern const PixelArt partyHat;
extern const PixelArt sunglasses;
extern const PixelArt helmet;
extern const PixelArt toothpick;
extern const PixelArt questionMark;
extern const PixelArt popcorn;
extern const PixelArt cookie;
extern const PixelArt microphone;
extern const PixelArt monocle;
extern const PixelArt sweatDrop;
extern const PixelArt star;
extern const PixelArt anger;
extern const PixelArt fish;
extern const PixelArt paperBoat;
extern const PixelArt rubberRing;
extern const PixelArt trophy;
extern const PixelArt note;
extern const PixelArt topHat;
extern const PixelArt phone;

} // namespace pobblewig::Props
