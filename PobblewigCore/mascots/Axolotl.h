#pragma once

#include "mascots/MascotColorScheme.h"
#include "mascots/MascotShape.h"

namespace pobblewig::Axolotl {

inline constexpr std::string_view body[] { "GG............GG", ".GGBBBBBBBBBBGG.",
    "GGGBBBBBBBBBBGGG", ".GBBBBBBBBBBBBG.", ".BBBBBSSSSBBBBB.", ".BBBBLLLLLLBBBB." };

inline constexpr LetterColor golden[] {
    { 'B', { 240, 208, 130 } },
    { 'G', { 186, 126, 50 } },
    { 'L', { 250, 234, 188 } },
    { 'S', { 58, 42, 26 } },
};
inline constexpr LetterColor pink[] {
    { 'B', { 240, 176, 194 } },
    { 'G', { 194, 84, 120 } },
    { 'L', { 250, 220, 230 } },
    { 'S', { 52, 36, 44 } },
};
inline constexpr LetterColor blue[] {
    { 'B', { 166, 206, 234 } },
    { 'G', { 82, 128, 186 } },
    { 'L', { 216, 238, 250 } },
    { 'S', { 34, 44, 58 } },
};
inline constexpr LetterColor lavender[] {
    { 'B', { 198, 180, 230 } },
    { 'G', { 126, 94, 178 } },
    { 'L', { 230, 220, 246 } },
    { 'S', { 44, 34, 58 } },
};

inline constexpr std::array schemes {
    MascotColorScheme { QLatin1String("golden"), QLatin1String("Golden"), golden, { 58, 42, 26 },
        { 240, 208, 130 } },
    MascotColorScheme {
        QLatin1String("pink"), QLatin1String("Pink"), pink, { 52, 36, 44 }, { 240, 176, 194 } },
    MascotColorScheme {
        QLatin1String("blue"), QLatin1String("Blue"), blue, { 34, 44, 58 }, { 166, 206, 234 } },
    MascotColorScheme { QLatin1String("lavender"), QLatin1String("Lavender"), lavender,
        { 44, 34, 58 }, { 198, 180, 230 } },
};

inline constexpr MascotShape shape {
    .id = QLatin1String("axolotl"),
    .body = body,
    .legLetter = 'G',
    .eyeRow = 2,
    .eyeCols = { 4, 10 },
    .hiddenWithGlasses = "S",
};

} // namespace pobblewig::Axolotl
