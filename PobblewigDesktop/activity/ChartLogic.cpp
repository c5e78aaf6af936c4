#include "PobblewigDesktop/activity/ChartLogic.h"

#include <algorithm>
#include <cmath>

namespace pobblewig {

namespace {

constexpr double gap = 4;
constexpr double lineThickness = 44;
constexpr double barGap = 12;
constexpr double columnsHeight = 180;
constexpr double widestColumn = 48;
/// A value that is there can be seen.
constexpr double leastSize = 2;

constexpr auto centred = Qt::AlignHCenter | Qt::AlignVCenter;
constexpr auto atEnd = Qt::AlignRight | Qt::AlignVCenter;

ChartPicture picture(const LineChart& chart, double width, double lineHeight)
{
    ChartPicture picture { .size = { width, lineThickness + gap + lineHeight } };
    picture.ground.emplace_back(0, 0, width, lineThickness);
    for (const auto& piece : chart.pieces) {
        const auto from = piece.from * width;
        const auto length = std::max(leastSize, piece.to * width - from);
        const auto top = piece.isLow ? lineThickness * 2 / 3 : 0;
        picture.marks.push_back(
            { QRectF(std::min(from, width - length), top, length, lineThickness - top), piece.color,
                piece.words });
    }
    const auto share = width / std::max<double>(1, double(chart.ticks.size()) - 1);
    for (const auto& tick : chart.ticks) {
        const auto at = tick.at * width;
        const auto left = std::clamp(at - share / 2, 0.0, width - share);
        const auto alignment = tick.at <= 0 ? Qt::AlignLeft | Qt::AlignVCenter
            : tick.at >= 1                  ? atEnd
                                            : centred;
        picture.labels.push_back(
            { QRectF(left, lineThickness + gap, share, lineHeight), tick.text, alignment });
    }
    return picture;
}

ChartPicture picture(const BarChart& chart, double width, double lineHeight)
{
    const auto side = width * 0.28;
    const auto room = width - 2 * side - 2 * gap;
    const auto rowHeight = lineHeight + barGap;
    ChartPicture picture { .size = { width, rowHeight * double(chart.bars.size()) } };
    double most = 0;
    for (const auto& bar : chart.bars)
        most = std::max(most, bar.value);
    for (double top = barGap / 2; const auto& bar : chart.bars) {
        const auto length = bar.value > 0 ? std::max(leastSize, room * bar.value / most) : 0.0;
        picture.labels.push_back({ QRectF(0, top, side, lineHeight), bar.name });
        picture.marks.push_back({ QRectF(side + gap, top, length, lineHeight), bar.color,
            QStringLiteral("%1: %2").arg(bar.name, bar.valueText) });
        picture.labels.push_back(
            { QRectF(width - side, top, side, lineHeight), bar.valueText, atEnd });
        top += rowHeight;
    }
    return picture;
}

void addColumn(
    ChartPicture& picture, const ColumnChart::Column& column, const QRectF& area, double top)
{
    auto bottom = area.bottom();
    for (const auto& part : column.parts) {
        if (part.value <= 0)
            continue;
        const auto height = std::max(leastSize, area.height() * part.value / top);
        bottom -= height;
        picture.marks.push_back(
            { QRectF(area.left(), bottom, area.width(), height), part.color, part.words });
    }
}

ChartPicture picture(const ColumnChart& chart, double width, double lineHeight)
{
    const auto axis = lineHeight * 4;
    const auto room = width - axis;
    const auto above = lineHeight / 2;
    const auto bottom = above + columnsHeight;
    ChartPicture picture { .size = { width, bottom + gap + lineHeight } };
    const auto top = chart.ticks.empty() ? 1.0 : chart.ticks.back().at;
    for (const auto& tick : chart.ticks) {
        const auto y = bottom - columnsHeight * tick.at / top;
        picture.ground.emplace_back(axis, y, room, 1);
        picture.labels.push_back(
            { QRectF(0, y - lineHeight / 2, axis - 2 * gap, lineHeight), tick.text, atEnd });
    }
    const auto share = room / std::max<double>(1, double(chart.columns.size()));
    const auto breadth = std::min(widestColumn, share * 0.7);
    for (auto left = axis; const auto& column : chart.columns) {
        const auto centre = left + share / 2;
        addColumn(
            picture, column, QRectF(centre - breadth / 2, above, breadth, columnsHeight), top);
        // Names may be wider than their column if its neighbours have none.
        picture.labels.push_back({ QRectF(centre - std::max(share, axis) / 2, bottom + gap,
                                       std::max(share, axis), lineHeight),
            column.name, centred });
        left += share;
    }
    return picture;
}

} // namespace

ChartPicture ChartLogic::layout(const ChartValues& values, double width, double lineHeight)
{
    return std::visit([&](const auto& chart) { return picture(chart, width, lineHeight); }, values);
}

ChartPicture ChartLogic::mirrored(ChartPicture picture)
{
    const auto mirror = [&](QRectF& box) { box.moveLeft(picture.size.width() - box.right()); };
    for (auto& mark : picture.marks)
        mirror(mark.box);
    for (auto& label : picture.labels) {
        mirror(label.box);
        if (label.alignment & (Qt::AlignLeft | Qt::AlignRight))
            label.alignment ^= Qt::AlignLeft | Qt::AlignRight;
    }
    std::ranges::for_each(picture.ground, mirror);
    return picture;
}

std::vector<double> ChartLogic::steps(double most)
{
    constexpr double mostSteps = 5;
    if (most <= 0)
        return { 0, 1 };
    const auto power = std::pow(10, std::floor(std::log10(most / mostSteps)));
    auto step = power;
    for (const auto factor : { 1, 2, 5, 10 }) {
        step = factor * power;
        if (step * mostSteps >= most)
            break;
    }
    std::vector<double> values { 0 };
    while (values.back() < most)
        values.push_back(step * double(values.size()));
    return values;
}

} // namespace pobblewig
