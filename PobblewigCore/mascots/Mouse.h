#pragma once

#include "mascots/MascotColorScheme.h"
#include "mascots/MascotShape.h"

/// The mouse, and its colours for mascots that have none of their own.
namespace pobblewig::Mouse {

inline constexpr std::string_view body[] {
    "..EE........EE..",
    ".EeeEBBBBBBEeeE.",
    ".BBBBBBBBBBBBBB.",
    ".BBBBBBBBBBBBBB.",
    ".BBBBBBNNBBBBBB.",
    ".BBBBLLLLLLBBBB.",
};

inline constexpr LetterColor original[] {
    { 'B', { 150, 142, 140 } },
    { 'E', { 108, 98, 96 } },
    { 'e', { 214, 162, 158 } },
    { 'N', { 196, 116, 120 } },
    { 'L', { 204, 195, 189 } },
    { 'F', { 186, 144, 140 } },
};
inline constexpr LetterColor brown[] {
    { 'B', { 150, 110, 80 } },
    { 'E', { 102, 72, 52 } },
    { 'e', { 214, 162, 158 } },
    { 'N', { 196, 116, 120 } },
    { 'L', { 216, 190, 166 } },
    { 'F', { 130, 94, 68 } },
};
inline constexpr LetterColor white[] {
    { 'B', { 233, 227, 221 } },
    { 'E', { 176, 166, 160 } },
    { 'e', { 229, 172, 168 } },
    { 'N', { 205, 116, 122 } },
    { 'L', { 245, 240, 234 } },
    { 'F', { 206, 196, 189 } },
};

inline constexpr std::array schemes {
    MascotColorScheme { QLatin1String("original"), QLatin1String("Original"), original,
        { 40, 34, 36 }, { 150, 142, 140 } },
    MascotColorScheme {
        QLatin1String("brown"), QLatin1String("Brown"), brown, { 44, 32, 24 }, { 150, 110, 80 } },
    MascotColorScheme {
        QLatin1String("white"), QLatin1String("White"), white, { 50, 44, 46 }, { 233, 227, 221 } },
};

inline constexpr MascotShape shape {
    .id = QLatin1String("mouse"),
    .body = body,
    .legLetter = 'F',
    .eyeRow = 2,
    .eyeCols = { 4, 10 },
    .hiddenWithGlasses = "N",
};

} // namespace pobblewig::Mouse
