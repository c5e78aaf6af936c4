#pragma once

#include "mascots/MascotColorScheme.h"

/// The colours of everything but the creatures, by name and by the letters of small drawings.
namespace pobblewig::Ink {

inline constexpr RGB black { 38, 32, 38 };
inline constexpr RGB white { 255, 252, 246 };
inline constexpr RGB cream { 250, 232, 196 };
inline constexpr RGB silver { 190, 194, 206 };
inline constexpr RGB gray { 112, 114, 130 };
inline constexpr RGB slate { 66, 68, 86 };
inline constexpr RGB brown { 126, 82, 54 };
inline constexpr RGB tan { 206, 154, 98 };
inline constexpr RGB red { 218, 62, 66 };
inline constexpr RGB crimson { 150, 36, 56 };
inline constexpr RGB orange { 246, 142, 48 };
inline constexpr RGB yellow { 255, 214, 74 };
inline constexpr RGB green { 92, 176, 92 };
inline constexpr RGB mint { 164, 222, 190 };
inline constexpr RGB teal { 46, 140, 148 };
inline constexpr RGB sky { 130, 200, 240 };
inline constexpr RGB blue { 64, 118, 206 };
inline constexpr RGB navy { 36, 42, 86 };
inline constexpr RGB violet { 124, 88, 176 };
inline constexpr RGB lilac { 206, 186, 236 };
inline constexpr RGB pink { 246, 146, 168 };
inline constexpr RGB rose { 250, 206, 214 };

inline constexpr LetterColor letters[] { { 'k', black }, { 'w', white }, { 'c', cream },
    { 's', silver }, { 'a', gray }, { 'l', slate }, { 'm', brown }, { 't', tan }, { 'r', red },
    { 'd', crimson }, { 'o', orange }, { 'y', yellow }, { 'g', green }, { 'e', mint },
    { 'q', teal }, { 'u', sky }, { 'b', blue }, { 'n', navy }, { 'v', violet }, { 'i', lilac },
    { 'p', pink }, { 'h', rose } };

} // namespace pobblewig::Ink
