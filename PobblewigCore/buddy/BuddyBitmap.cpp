#include "buddy/BuddyBitmap.h"

#include <array>
#include <optional>

namespace pobblewig {

namespace {

class Canvas {
public:
    void paint(int row, int col, RGB rgb)
    {
        if (row >= 0 && row < BuddyBitmap::rows && col >= 0 && col < BuddyBitmap::columns)
            m_cells[size_t(row)][size_t(col)] = rgb;
    }

    void paint(const std::vector<MascotSprite::Cell>& cells, int firstRow)
    {
        for (const auto& cell : cells)
            paint(firstRow + cell.row, cell.col, cell.rgb);
    }

    std::vector<BuddyRun> runs() const
    {
        std::vector<BuddyRun> runs;
        for (int row = 0; row < BuddyBitmap::rows; ++row)
            appendRuns(row, runs);
        return runs;
    }

private:
    using Row = std::array<std::optional<RGB>, BuddyBitmap::columns>;

    void appendRuns(int row, std::vector<BuddyRun>& runs) const
    {
        const auto& cells = m_cells[size_t(row)];
        for (int col = 0; col < BuddyBitmap::columns; ++col) {
            const auto& cell = cells[size_t(col)];
            if (col > 0 && cell && cell == cells[size_t(col - 1)])
                ++runs.back().length;
            else if (cell)
                runs.push_back({ row, col, 1, *cell });
        }
    }

    std::array<Row, BuddyBitmap::rows> m_cells;
};

void paintEyes(const MascotSprite& sprite, Canvas& canvas)
{
    for (const auto left : sprite.eyeCols) {
        for (const auto row : { sprite.eyeRow, sprite.eyeRow + 1 }) {
            canvas.paint(row, left, sprite.eyeColor);
            canvas.paint(row, left + 1, sprite.eyeColor);
        }
    }
}

} // namespace

BuddyBitmap BuddyBitmap::standing(const MascotSprite& sprite)
{
    Canvas canvas;
    canvas.paint(sprite.cells(sprite.body), 0);
    canvas.paint(sprite.cells(sprite.legRows(MascotGait::idle)), bodyRows);
    for (const auto& claw : sprite.claws)
        canvas.paint(claw.row, claw.col, sprite.pawColor);
    paintEyes(sprite, canvas);
    return { .runs = canvas.runs() };
}

} // namespace pobblewig
