#pragma once

#include "mascots/MascotColorScheme.h"
#include "mascots/MascotShape.h"

/// The earliest mascot.
namespace pobblewig::Crab {

inline constexpr std::string_view body[] {
    "..BBBBBBBBBBBB..",
    "..BBBBBBBBBBBB..",
    "..BBBBBBBBBBBB..",
    "..BBBBBBBBBBBB..",
    "..BBBBBBBBBBBB..",
    "..BBBBBBBBBBBB..",
};

inline constexpr MascotShape::Position claws[] { { 2, 1 }, { 3, 0 }, { 3, 1 }, { 2, 14 }, { 3, 14 },
    { 3, 15 } };

inline constexpr LetterColor coral[] { { 'B', { 217, 119, 87 } } };

inline constexpr MascotColorScheme colors { QLatin1String("original"), QLatin1String("Original"),
    coral, { 64, 33, 23 }, { 217, 119, 87 } };

inline constexpr MascotShape shape {
    .id = QLatin1String("skrit"),
    .body = body,
    .claws = claws,
    .eyeRow = 1,
    .eyeCols = { 4, 10 },
};

} // namespace pobblewig::Crab
