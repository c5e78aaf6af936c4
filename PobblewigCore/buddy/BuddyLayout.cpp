#include "buddy/BuddyLayout.h"

#include <cmath>

namespace pobblewig {

namespace {

constexpr int columns = BuddyBitmap::columns;
constexpr int rows = BuddyBitmap::rows;
constexpr int perCell = BuddyBitmap::dotsPerCell;
constexpr int cellsAcross = columns / perCell;
constexpr int cellsDown = rows / perCell;

/// Whole pixels for the body at large, so that all its cells change in the same frame.
int halves(double pixels)
{
    return 2 * qRound(pixels / 2);
}

} // namespace

BuddyLayout::BuddyLayout(const BuddyPose& pose, const BuddyCanvas& canvas)
    : m_cell(canvas.cell)
    , m_ground(canvas.size().height())
    , m_middle(canvas.size().width() / 2 + canvas.pixels(pose.xOff))
    , m_bodyWidth(halves(cellsAcross * canvas.cell * pose.sx))
    , m_height(qRound(cellsDown * canvas.cell * pose.sy))
    , m_lift(canvas.pixels(pose.yOff))
    , m_feetLift(canvas.pixels(std::trunc(pose.yOff)))
    , m_headLean(qRound(-m_height * pose.tilt))
{
}

QRect BuddyLayout::rect(const BuddyBlock& block) const
{
    const auto from = left(block.row, block.col);
    const auto to = left(block.row, block.col + block.cols);
    const auto upper = top(block.row);
    return { from + lean(block.row), upper, to - from, top(block.row + block.rows) - upper };
}

int BuddyLayout::top(int row) const
{
    if (row >= rows)
        return m_ground - m_feetLift;
    return m_ground - m_lift - qRound(double(rows - row) / rows * m_height);
}

int BuddyLayout::left(int row, int col) const
{
    const auto isLeg = row >= BuddyBitmap::bodyRows;
    const auto width = isLeg ? cellsAcross * m_cell : m_bodyWidth;
    return m_middle + qRound((double(col) / columns - 0.5) * width);
}

int BuddyLayout::lean(int row) const
{
    constexpr int lastCell = cellsDown - 1;
    const auto cell = std::floor(double(row) / perCell);
    return qRound((lastCell - cell) / lastCell * m_headLean);
}

} // namespace pobblewig
