#pragma once

#include "buddy/BuddyBitmap.h"
#include "buddy/PixelArt.h"

#include <array>
#include <optional>

namespace pobblewig {

/// A grid of dots to paint on. Anything outside it is lost.
class DotCanvas {
public:
    struct Colors {
        RGB fill;
        RGB outline;
        RGB light { 255, 255, 255 };
    };

    void paint(int row, int col, RGB rgb);

    /// Tints a dot, if there is one, so that it shines through.
    void tint(int row, int col, RGB rgb, double amount);

    /// Paints whole cells.
    void paint(const std::vector<MascotSprite::Cell>& cells, int firstCellRow);
    void paint(const PixelArt& art, int row, int col, const Colors& colors);

    std::vector<BuddyBlock> blocks() const;

private:
    static constexpr int above = 12;
    static constexpr int beside = 4;
    static constexpr int columns = BuddyBitmap::columns + 2 * beside;
    static constexpr int rows = BuddyBitmap::rows + above;

    using Row = std::array<std::optional<RGB>, columns>;

    std::optional<RGB>* dot(int row, int col);
    void appendRow(int row, std::vector<BuddyBlock>& blocks) const;

    std::array<Row, rows> m_rows;
};

} // namespace pobblewig
