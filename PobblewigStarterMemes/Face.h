#pragma once

#include <QPoint>

namespace pobblewig {

enum class Eyes {
    open,
    closed,
    /// Arched upwards, as when laughing.
    happy,
    /// Arched downwards, as when dozing.
    content,
    /// Shows the white; where it looks is seen best.
    wide,
    /// The same under heavy lids.
    half,
    /// One under a heavy lid, the other wide.
    doubtful,
    squeezed,
    crossed,
    hearts,
    /// Large and moist.
    pleading,
    /// Small dots that have seen too much.
    dots
};

enum class Brows { none, flat, raised, worried, angry };

enum class Mouth { none, smile, laugh, frown, wobble, flat, smirk, small, gasp, clenched };

struct Face {
    Eyes eyes = Eyes::open;
    /// Where wide eyes look, from -2 to 2 each way; those under a lid look to the sides only.
    QPoint look = {};
    Brows brows = Brows::none;
    Mouth mouth = Mouth::smile;
    bool isBlushing = false;
};

} // namespace pobblewig
