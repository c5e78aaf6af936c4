#include "PobblewigStarterMemes/Alphabet.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

struct Letter {
    char letter;
    std::array<std::string_view, Alphabet::height> rows;
};

// clang-format off
constexpr std::array letters {
    Letter { ' ', { "..", "..", "..", "..", ".." } },
    Letter { 'A', { ".X.", "X.X", "XXX", "X.X", "X.X" } },
    Letter { 'B', { "XX.", "X.X", "XX.", "X.X", "XX." } },
    Letter { 'C', { ".XX", "X..", "X..", "X..", ".XX" } },
    Letter { 'D', { "XX.", "X.X", "X.X", "X.X", "XX." } },
    Letter { 'E', { "XXX", "X..", "XX.", "X..", "XXX" } },
    Letter { 'F', { "XXX", "X..", "XX.", "X..", "X.." } },
    Letter { 'G', { ".XX", "X..", "X.X", "X.X", ".XX" } },
    Letter { 'H', { "X.X", "X.X", "XXX", "X.X", "X.X" } },
    Letter { 'I', { "X", "X", "X", "X", "X" } },
    Letter { 'J', { "..X", "..X", "..X", "X.X", ".X." } },
    Letter { 'K', { "X.X", "X.X", "XX.", "X.X", "X.X" } },
    Letter { 'L', { "X..", "X..", "X..", "X..", "XXX" } },
    Letter { 'M', { "X...X", "XX.XX", "X.X.X", "X...X", "X...X" } },
    Letter { 'N', { "X..X", "XX.X", "X.XX", "X..X", "X..X" } },
    Letter { 'O', { ".X.", "X.X", "X.X", "X.X", ".X." } },
    Letter { 'P', { "XX.", "X.X", "XX.", "X..", "X.." } },
    Letter { 'Q', { ".X.", "X.X", "X.X", "XX.", ".XX" } },
    Letter { 'R', { "XX.", "X.X", "XX.", "X.X", "X.X" } },
    Letter { 'S', { ".XX", "X..", ".X.", "..X", "XX." } },
    Letter { 'T', { "XXX", ".X.", ".X.", ".X.", ".X." } },
    Letter { 'U', { "X.X", "X.X", "X.X", "X.X", "XXX" } },
    Letter { 'V', { "X.X", "X.X", "X.X", "X.X", ".X." } },
    Letter { 'W', { "X...X", "X...X", "X.X.X", "XX.XX", "X...X" } },
    Letter { 'X', { "X.X", "X.X", ".X.", "X.X", "X.X" } },
    Letter { 'Y', { "X.X", "X.X", ".X.", ".X.", ".X." } },
    Letter { 'Z', { "XXX", "..X", ".X.", "X..", "XXX" } },
    Letter { '0', { "XXX", "X.X", "X.X", "X.X", "XXX" } },
    Letter { '1', { ".X", "XX", ".X", ".X", ".X" } },
    Letter { '2', { "XX.", "..X", ".X.", "X..", "XXX" } },
    Letter { '3', { "XX.", "..X", ".X.", "..X", "XX." } },
    Letter { '4', { "X.X", "X.X", "XXX", "..X", "..X" } },
    Letter { '5', { "XXX", "X..", "XX.", "..X", "XX." } },
    Letter { '6', { ".XX", "X..", "XXX", "X.X", "XXX" } },
    Letter { '7', { "XXX", "..X", ".X.", ".X.", ".X." } },
    Letter { '8', { "XXX", "X.X", "XXX", "X.X", "XXX" } },
    Letter { '9', { "XXX", "X.X", "XXX", "..X", "XX." } },
    Letter { '!', { "X", "X", "X", ".", "X" } },
    Letter { '?', { "XX.", "..X", ".X.", "...", ".X." } },
    Letter { '.', { ".", ".", ".", ".", "X" } },
    Letter { ',', { "..", "..", "..", ".X", "X." } },
    Letter { '\'', { "X", "X", ".", ".", "." } },
    Letter { ':', { ".", "X", ".", "X", "." } },
    Letter { '+', { "...", ".X.", "XXX", ".X.", "..." } },
    Letter { '-', { "...", "...", "XXX", "...", "..." } },
    Letter { '=', { "...", "XXX", "...", "XXX", "..." } },
    Letter { '%', { "X.X", "..X", ".X.", "X..", "X.X" } },
};
// clang-format on

} // namespace

PixelArt Alphabet::letter(char letter)
{
    const auto* const found = std::ranges::find(letters, letter, &Letter::letter);
    return { found == letters.end() ? letters.front().rows : found->rows };
}

int Alphabet::width(std::string_view words)
{
    int width = -gap;
    for (const auto letter : words)
        width += Alphabet::letter(letter).width() + gap;
    return width;
}

} // namespace pobblewig
