#pragma once

#include "buddy/PixelArt.h"

/// A small alphabet for captions, in "X".
namespace pobblewig::Alphabet {

inline constexpr int height = 5;
inline constexpr int gap = 1;

/// A gap for a letter that it lacks.
PixelArt letter(char letter);

/// How many dots the words take.
int width(std::string_view words);

} // namespace pobblewig::Alphabet
