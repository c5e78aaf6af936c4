#pragma once

#include "PobblewigStarterMemes/Figure.h"

namespace pobblewig {

/// Paints eyes, brows, mouth and blush of a figure. All lengths grow with the figure's cells.
class FacePainter {
public:
    FacePainter(const Figure& figure, Canvas& canvas);

    void paint();

private:
    void paintEye(Side side);
    void paintOpen(QRect eye);
    void paintGaze(QRect eye, QPoint look, int pupil);
    void paintHalf(QRect eye);
    /// Up is 1, down is -1; for mouths it tells where the ends are.
    void paintArch(QRect eye, int up);
    void paintSqueezed(QRect eye, Side side);
    void paintCross(QRect eye);
    void paintPleading(QRect eye);
    void paintBrow(Side side);
    void paintMouth();
    void paintCurve(int up);
    void paintSmirk();
    void paintWobble();
    void paintHole(QSize size, RGB inside);
    void paintTeeth(QSize size);
    void paintLaugh(QSize size);

    const Figure& m_figure;
    Canvas& m_canvas;
    /// A cell, and the thickness of a line.
    int m_cell;
    int m_line;
    RGB m_dark;
};

} // namespace pobblewig
