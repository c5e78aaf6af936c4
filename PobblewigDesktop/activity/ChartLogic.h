#pragma once

#include <QRectF>
#include <QString>

#include <variant>
#include <vector>

namespace pobblewig {

/// A part of a chart that stands for a value.
struct ChartMark {
    /// Stands for a gap and is not painted.
    static constexpr int noColor = -1;

    QRectF box;
    int color = noColor;
    /// What it says when it is pointed at.
    QString words;

    bool operator==(const ChartMark&) const = default;
};

struct ChartLabel {
    QRectF box;
    QString text;
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter;
};

/// A chart as it is painted, from left to right.
struct ChartPicture {
    QSizeF size;
    /// In the order in which they are read.
    std::vector<ChartMark> marks;
    std::vector<ChartLabel> labels;
    /// Areas and lines that carry no value.
    std::vector<QRectF> ground;
};

struct ChartTick {
    double at = 0;
    QString text;
};

/// One line from 0 to 1, with pieces on it.
struct LineChart {
    struct Piece {
        double from = 0;
        double to = 0;
        int color = ChartMark::noColor;
        QString words;
        /// Lower than the others.
        bool isLow = false;
    };

    std::vector<Piece> pieces;
    std::vector<ChartTick> ticks;
};

/// Bars below each other, each with its name before it and its value after it.
struct BarChart {
    struct Bar {
        QString name;
        double value = 0;
        QString valueText;
        int color = 0;
    };

    std::vector<Bar> bars;
};

/// Columns beside each other, each a stack of parts.
struct ColumnChart {
    struct Part {
        double value = 0;
        int color = 0;
        QString words;
    };
    struct Column {
        QString name;
        /// From the bottom.
        std::vector<Part> parts;
    };

    std::vector<Column> columns;
    /// The last one is the top of the chart.
    std::vector<ChartTick> ticks;
};

using ChartValues = std::variant<LineChart, BarChart, ColumnChart>;

/// Places what a chart shows.
namespace ChartLogic {

/// The height of the picture follows from the values.
ChartPicture layout(const ChartValues& values, double width, double lineHeight);

/// The same from right to left.
ChartPicture mirrored(ChartPicture picture);

/// Values from 0 in at most five equal steps of 1, 2 or 5 times a power of ten; the last one is at
/// least `most`.
std::vector<double> steps(double most);

} // namespace ChartLogic

} // namespace pobblewig
