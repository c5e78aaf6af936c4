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
    const auto point = canvas.cell / BuddyCanvas::pointsPerCell;
    const auto middle = canvas.size().width() / 2;
    for (int col = 0; col <= BuddyBitmap::columns; ++col) {
        const auto fromMiddle = (col - BuddyBitmap::columns / 2) * canvas.cell;
        m_bodyColumns[size_t(col)] = middle + qRound(fromMiddle * pose.sx + pose.xOff * point);
        m_legColumns[size_t(col)] = middle + qRound(fromMiddle + pose.xOff * point);
    }

    const auto ground = canvas.size().height();
    m_rows.back() = ground - qRound(std::trunc(pose.yOff) * point);
    for (int row = 0; row < BuddyBitmap::rows; ++row) {
        const auto height = (BuddyBitmap::rows - row) * canvas.cell * pose.sy;
        m_rows[size_t(row)] = ground - qRound(height + pose.yOff * point);
        m_leans[size_t(row)] = -qRound((height - canvas.cell) * pose.tilt);
    }
}

QRect BuddyLayout::rect(const BuddyRun& run) const
{
    const auto row = size_t(run.row);
    const auto& columns = run.row < BuddyBitmap::bodyRows ? m_bodyColumns : m_legColumns;
    const auto left = columns[size_t(run.col)];
    const auto right = columns[size_t(run.col + run.length)];
    return { left + m_leans[row], m_rows[row], right - left, m_rows[row + 1] - m_rows[row] };
}

} // namespace pobblewig
