#include "buddy/DotCanvas.h"

namespace pobblewig {

namespace {

constexpr int perCell = BuddyBitmap::dotsPerCell;

/// The block over this one, if they are halves of a higher one.
BuddyBlock* upperHalf(std::vector<BuddyBlock>& blocks, const BuddyBlock& lower)
{
    if (lower.row % perCell == 0)
        return nullptr;
    for (auto& block : blocks) {
        const auto isOver = block.row == lower.row - 1 && block.col == lower.col;
        if (isOver && block.cols == lower.cols && block.rgb == lower.rgb)
            return &block;
    }
    return nullptr;
}

} // namespace

void DotCanvas::paint(int row, int col, RGB rgb)
{
    if (auto* painted = dot(row, col))
        *painted = rgb;
}

void DotCanvas::tint(int row, int col, RGB rgb, double amount)
{
    if (auto* painted = dot(row, col); painted && *painted)
        *painted = mixed(**painted, rgb, amount);
}

void DotCanvas::paint(const std::vector<MascotSprite::Cell>& cells, int firstCellRow)
{
    for (const auto& cell : cells) {
        for (int row = 0; row < perCell; ++row) {
            for (int col = 0; col < perCell; ++col)
                paint(
                    (firstCellRow + cell.row) * perCell + row, cell.col * perCell + col, cell.rgb);
        }
    }
}

void DotCanvas::paint(const PixelArt& art, int row, int col, const Colors& colors)
{
    for (int y = 0; y < art.height(); ++y) {
        for (int x = 0; x < art.width(); ++x) {
            const auto letter = art.rows[size_t(y)][size_t(x)];
            if (letter != '.')
                paint(row + y, col + x,
                    letter == 'O'       ? colors.outline
                        : letter == 'W' ? colors.light
                                        : colors.fill);
        }
    }
}

std::vector<BuddyBlock> DotCanvas::blocks() const
{
    std::vector<BuddyBlock> blocks;
    for (int row = 0; row < rows; ++row)
        appendRow(row, blocks);
    return blocks;
}

std::optional<RGB>* DotCanvas::dot(int row, int col)
{
    const auto y = row + above;
    const auto x = col + beside;
    const auto isInside = y >= 0 && y < rows && x >= 0 && x < columns;
    return isInside ? &m_rows[size_t(y)][size_t(x)] : nullptr;
}

void DotCanvas::appendRow(int row, std::vector<BuddyBlock>& blocks) const
{
    std::vector<BuddyBlock> runs;
    const auto& dots = m_rows[size_t(row)];
    for (int col = 0; col < columns; ++col) {
        const auto& dot = dots[size_t(col)];
        if (col > 0 && dot && dot == dots[size_t(col - 1)])
            ++runs.back().cols;
        else if (dot)
            runs.push_back(
                { .row = row - above, .col = col - beside, .rows = 1, .cols = 1, .rgb = *dot });
    }
    for (const auto& run : runs) {
        if (auto* upper = upperHalf(blocks, run))
            ++upper->rows;
        else
            blocks.push_back(run);
    }
}

} // namespace pobblewig
