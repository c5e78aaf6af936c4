#include "buddy/BuddyLayout.h"

#include <QtMath>

#include <cmath>

namespace pobblewig {

BuddyCanvas BuddyCanvas::ofScale(double sizeScale, double devicePixelRatio)
{
    return { .cell = qMax(1, qRound(pointsPerCell * sizeScale * devicePixelRatio)) };
}

QSize BuddyCanvas::size() const
{
    return { (BuddyBitmap::columns + 2 * cellsAround) * cell,
        (BuddyBitmap::rows + cellsAbove) * cell };
}

BuddyLayout::BuddyLayout(const BuddyPose& pose, const BuddyCanvas& canvas)
{
    constexpr auto columns = BuddyBitmap::columns;
    constexpr auto halfColumns = columns / 2;
    constexpr auto rows = BuddyBitmap::rows;
    const auto point = canvas.cell / BuddyCanvas::pointsPerCell;
    const auto ground = canvas.size().height();
    const auto middle = canvas.size().width() / 2 + qRound(pose.xOff * point);
    // Whole pixels for the body at large, so that all its cells change in the same frame.
    const auto bodyWidth = 2 * qRound(halfColumns * canvas.cell * pose.sx);
    const auto height = qRound(rows * canvas.cell * pose.sy);
    const auto lift = qRound(pose.yOff * point);
    const auto headLean = qRound(-height * pose.tilt);

    for (int col = 0; col <= columns; ++col) {
        const auto fromMiddle = double(col) / columns - 0.5;
        m_bodyColumns[size_t(col)] = middle + qRound(fromMiddle * bodyWidth);
        m_legColumns[size_t(col)] = middle + (col - halfColumns) * canvas.cell;
    }
    for (int row = 0; row < rows; ++row) {
        m_rows[size_t(row)] = ground - lift - qRound(double(rows - row) / rows * height);
        m_leans[size_t(row)] = qRound(double(rows - 1 - row) / (rows - 1) * headLean);
    }
    m_rows.back() = ground - qRound(std::trunc(pose.yOff) * point);
}

QRect BuddyLayout::rect(const BuddyRun& run) const
{
    const auto row = size_t(run.row);
    const auto& columns = run.row < BuddyBitmap::bodyRows ? m_bodyColumns : m_legColumns;
    const auto left = columns[size_t(run.col)];
    const auto right = columns[size_t(run.col) + size_t(run.length)];
    return { left + m_leans[row], m_rows[row], right - left, m_rows[row + 1] - m_rows[row] };
}

} // namespace pobblewig
