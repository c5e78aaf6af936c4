#pragma once

#include "buddy/BuddyCanvas.h"
#include "buddy/BuddyDrawing.h"
#include "buddy/BuddyLayout.h"
#include "buddy/BuddyPill.h"

#include <map>

namespace pobblewig {

/// Draws a frame with a sprite, from bitmaps that are put together only once.
class BuddyArtist {
public:
    explicit BuddyArtist(const MascotSprite& sprite);

    /// Returns the cells that the frame needs around the buddy, including the pill of its badge.
    static BuddyRoom room(const BuddyFrame& frame, int cell, const BuddyPill& pill);

    void setSprite(const MascotSprite& sprite);

    /// Replaces the drawing. The canvas must have the room that the frame needs.
    void draw(const BuddyFrame& frame, const BuddyCanvas& canvas, const BuddyPill& pill,
        BuddyDrawing& drawing);

private:
    const BuddyBitmap& bitmap(const BitmapKey& look);
    const BuddyBitmap& cardHolder(MascotGait gait);
    void drawRain(const BuddyFrame& frame, const BuddyCanvas& canvas, BuddyDrawing::Rain& rain);
    void drawBody(const BuddyFrame& frame, const BuddyLayout& layout, BuddyDrawing& drawing);
    static void drawBadge(const BuddyFrame& frame, const BuddyCanvas& canvas, const BuddyPill& pill,
        int headTop, BuddyDrawing& drawing);
    void drawCard(const BuddyFrame& frame, const BuddyCanvas& canvas, const BuddyLayout& layout,
        BuddyDrawing& drawing);

    MascotSprite m_sprite;
    BuddyBitmap m_claws;
    /// A sprite in other colours has another name, so no entry is ever wrong.
    std::map<BitmapKey, BuddyBitmap> m_bitmaps;
    std::map<std::pair<QString, MascotGait>, BuddyBitmap> m_cardHolders;
    BuddyRain m_rain;
};

} // namespace pobblewig
