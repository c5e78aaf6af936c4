#include "buddy/PixelArt.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

using Row = std::string_view;

constexpr std::array openEye {
    Row("XXXX"),
    Row("XXXX"),
    Row("XXXX"),
    Row("XXXX"),
};

constexpr std::array closedEye {
    Row("...."),
    Row("...."),
    Row("XXXX"),
    Row("...."),
};

constexpr std::array wideEye {
    Row(".XXXX."),
    Row("XWWXXX"),
    Row("XWWXXX"),
    Row("XXXXXX"),
    Row("XXXXXX"),
    Row(".XXXX."),
};

constexpr std::array happyEye {
    Row("...."),
    Row(".XX."),
    Row("XXXX"),
    Row("X..X"),
};

constexpr std::array glass {
    Row(".........."),
    Row("..XXXXXX.."),
    Row(".XXXXXXXX."),
    Row(".XXXXXXXX."),
    Row(".XXXXXXXX."),
    Row(".XXXXXXXX."),
    Row("..XXXXXX.."),
    Row(".........."),
};

constexpr std::array roundRim {
    Row("..XXXXXX.."),
    Row(".X......X."),
    Row("X........X"),
    Row("X........X"),
    Row("X........X"),
    Row("X........X"),
    Row(".X......X."),
    Row("..XXXXXX.."),
};

constexpr std::array lid {
    Row(".OOOOOOOOOOOOOOOO."),
    Row(".OXXXXXXXXXXXXXXO."),
    Row(".OXXXXXXWWXXXXXXO."),
    Row(".OXXXXXXWWXXXXXXO."),
    Row(".OXXXXXXXXXXXXXXO."),
    Row("OOOOOOOOOOOOOOOOOO"),
};

constexpr std::array fingers {
    Row(".OO."),
    Row("OXXO"),
    Row("OXXO"),
    Row(".OO."),
};

constexpr std::array hand {
    Row("..OOOOOOO.."),
    Row(".OXXXXXXXO."),
    Row("OXXXXXXXXXO"),
    Row("OXXXXXXXXXO"),
    Row("OXXOXXXOXXO"),
    Row(".OOXOOOXOO."),
};

constexpr std::array largeHeart {
    Row(".OO.OO."),
    Row("OXXOXXO"),
    Row("OWXXXXO"),
    Row("OXXXXXO"),
    Row(".OXXXO."),
    Row("..OXO.."),
    Row("...O..."),
};

constexpr std::array smallHeart {
    Row(".O.O."),
    Row("OXOXO"),
    Row("OXXXO"),
    Row(".OXO."),
    Row("..O.."),
};

constexpr std::array smallZ {
    Row("XXXX."),
    Row(".OXOO"),
    Row(".X.O."),
    Row("XXXX."),
    Row(".OOOO"),
};

constexpr std::array middleZ {
    Row("XXXXX."),
    Row(".OOXOO"),
    Row("..X.O."),
    Row(".X.O.."),
    Row("XXXXX."),
    Row(".OOOOO"),
};

constexpr std::array largeZ {
    Row("XXXXXX."),
    Row("XXXXXXO"),
    Row(".OOXXOO"),
    Row("..XXOO."),
    Row(".XXOO.."),
    Row("XXXXXX."),
    Row("XXXXXXO"),
    Row(".OOOOOO"),
};

constexpr std::array exclamation {
    Row("..XXXXX.."),
    Row(".XXXWXXX."),
    Row("XXXXWXXXX"),
    Row("XXXXWXXXX"),
    Row("XXXXWXXXX"),
    Row("XXXXXXXXX"),
    Row("XXXXWXXXX"),
    Row(".XXXXXXX."),
    Row("..XXXXX.."),
};

constexpr std::array check {
    Row("..XXXXX.."),
    Row(".XXXXXXX."),
    Row("XXXXXXWXX"),
    Row("XXXXXWWXX"),
    Row("XXWXWWXXX"),
    Row("XXWWWXXXX"),
    Row("XXXWXXXXX"),
    Row(".XXXXXXX."),
    Row("..XXXXX.."),
};

} // namespace

PixelArt PixelArts::eye(EyeStyle style)
{
    switch (style) {
    case EyeStyle::normal:
        return { openEye };
    case EyeStyle::closed:
        return { closedEye };
    case EyeStyle::wide:
        return { wideEye };
    case EyeStyle::happy:
        return { happyEye };
    }
    return { openEye };
}

PixelArt PixelArts::lens()
{
    return { glass };
}

PixelArt PixelArts::rim()
{
    return { roundRim };
}

PixelArt PixelArts::laptop()
{
    return { lid };
}

PixelArt PixelArts::typingPaw()
{
    return { fingers };
}

PixelArt PixelArts::paw()
{
    return { hand };
}

PixelArt PixelArts::heart(bool isLarge)
{
    return { isLarge ? std::span<const Row>(largeHeart) : std::span<const Row>(smallHeart) };
}

PixelArt PixelArts::letterZ(int size)
{
    const std::array<std::span<const Row>, letterSizes> letters { smallZ, middleZ, largeZ };
    return { letters[size_t(std::clamp(size, 0, letterSizes - 1))] };
}

PixelArt PixelArts::reminderMark()
{
    return { exclamation };
}

PixelArt PixelArts::doneMark()
{
    return { check };
}

} // namespace pobblewig
