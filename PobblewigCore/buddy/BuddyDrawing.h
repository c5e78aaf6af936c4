#pragma once

#include "buddy/BuddyFrame.h"
#include "buddy/BuddyRain.h"
#include "buddy/BuddyShape.h"
#include "buddy/PixelArt.h"

#include <QRect>

#include <optional>
#include <vector>

namespace pobblewig {

/// What is painted for a frame, in whole device pixels and in this order. Two equal drawings look
/// the same on the screen.
struct BuddyDrawing {
    struct Rain {
        /// 0 if there is no rain, whatever the other fields say.
        int opacity = 0;
        /// The side of a glyph's dot.
        int dot = 0;
        /// The place of the first column and row, and the distances between them.
        QPoint origin;
        double columnWidth = 0;
        int rowHeight = 0;
        std::vector<BuddyRain::Drop> drops;

        /// The corner of a glyph.
        QPoint place(const BuddyRain::Drop& drop) const;

        bool operator==(const Rain& other) const;
    };

    struct Part {
        QRect rect;
        RGB rgb;

        bool operator==(const Part&) const = default;
    };

    /// Fills its frame with the colour, with the corners cut off, and shows its pictures inside.
    struct Card {
        QRect frame;
        int dot = 0;
        RGB rgb;
        QImage picture;
        QImage next;
        int nextOpacity = 0;

        QRect inside() const { return frame.adjusted(dot, dot, -dot, -dot); }

        bool operator==(const Card& other) const;
    };

    struct Stamp {
        enum class Art { smallHeart, largeHeart, smallZ, middleZ, largeZ };
        static constexpr int arts = 5;

        Art art = Art::smallHeart;
        QPoint corner;
        int opacity = 0;

        bool operator==(const Stamp&) const = default;
    };

    struct Badge {
        BuddyBadge::Mark mark = BuddyBadge::Mark::reminder;
        QString label;
        QRect rect;
        int opacity = 0;

        bool operator==(const Badge&) const = default;
    };

    static constexpr int opaque = 255;

    Rain rain;
    std::vector<Part> parts;
    std::optional<Card> card;
    /// The side of a stamp's dot.
    int stampDot = 0;
    std::vector<Stamp> stamps;
    std::optional<Badge> badge;

    static PixelArt art(Stamp::Art art);

    /// Replaces the shape. Nearly transparent parts are not part of it, nor is the badge: only
    /// whoever writes its words knows how far they reach.
    void outline(BuddyShape& shape) const;

    bool operator==(const BuddyDrawing&) const = default;
};

} // namespace pobblewig
