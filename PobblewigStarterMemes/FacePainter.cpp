#include "PobblewigStarterMemes/FacePainter.h"

#include "PobblewigStarterMemes/Scenery.h"

#include <algorithm>

namespace pobblewig {

namespace {

/// How far an eye can look.
constexpr int farthest = 2;

/// A box without its corners.
void paintPill(Canvas& canvas, QRect area, RGB color)
{
    canvas.box(area.adjusted(1, 0, -1, 0), color);
    canvas.box(area.adjusted(0, 1, 0, -1), color);
}

QRect around(QPoint middle, QSize size)
{
    return { middle - QPoint(size.width(), size.height()) / 2, size };
}

/// How far the ends of a brow are sunk.
struct BrowEnds {
    int outer = 0;
    int inner = 0;
};

struct BrowRow {
    Brows brows;
    BrowEnds left;
    BrowEnds right;
};

constexpr BrowRow browRows[] {
    { Brows::flat, {}, {} },
    { Brows::raised, { 0, 0 }, { -1, -2 } },
    { Brows::worried, { 0, -1 }, { 0, -1 } },
    { Brows::angry, { -1, 2 }, { -1, 2 } },
};

} // namespace

FacePainter::FacePainter(const Figure& figure, Canvas& canvas)
    : m_figure(figure)
    , m_canvas(canvas)
    , m_cell(figure.cell)
    , m_line(figure.cell > 2 ? 2 : 1)
    , m_dark(figure.sprite.eyeColor)
{
}

void FacePainter::paint()
{
    for (const auto side : bothSides) {
        if (m_figure.face.isBlushing)
            m_canvas.box(
                around(m_figure.cheek(side), { m_cell + 1, std::max(2, m_cell - 1) }), Ink::pink);
        paintEye(side);
        paintBrow(side);
    }
    paintMouth();
}

void FacePainter::paintEye(Side side)
{
    const auto eye = m_figure.eye(side);
    switch (m_figure.face.eyes) {
    case Eyes::open:
        return paintOpen(eye);
    case Eyes::closed:
        return m_canvas.box({ eye.left(), eye.center().y(), eye.width(), m_line }, m_dark);
    case Eyes::happy:
        return paintArch(eye, 1);
    case Eyes::content:
        return paintArch(eye, -1);
    case Eyes::wide:
        return paintGaze(eye.adjusted(-1, -1, 1, 1), m_figure.face.look, m_cell);
    case Eyes::half:
        return paintHalf(eye);
    case Eyes::doubtful:
        return side == Side::left
            ? paintHalf(eye)
            : paintGaze(eye.adjusted(-1, -1, 1, 1), m_figure.face.look, m_cell);
    case Eyes::squeezed:
        return paintSqueezed(eye, side);
    case Eyes::crossed:
        return paintCross(eye);
    case Eyes::hearts:
        return Scenery::paintHeart(m_canvas, eye.center(), m_cell > 2);
    case Eyes::pleading:
        return paintPleading(eye.adjusted(-1, -1, 1, 1));
    case Eyes::dots:
        return m_canvas.box(around(eye.center(), { m_line, m_line }), m_dark);
    }
}

void FacePainter::paintOpen(QRect eye)
{
    paintPill(m_canvas, eye, m_dark);
    m_canvas.box({ eye.topLeft() + QPoint(1, 1), QSize(m_line, m_line) }, Ink::white);
}

void FacePainter::paintGaze(QRect eye, QPoint look, int pupil)
{
    paintPill(m_canvas, eye.adjusted(-1, -1, 1, 1), m_dark);
    paintPill(m_canvas, eye, Ink::white);
    const auto space = eye.width() - pupil;
    const auto place = (look + QPoint(farthest, farthest)) * space / (2 * farthest);
    m_canvas.box({ eye.topLeft() + place, QSize(pupil, pupil) }, m_dark);
}

void FacePainter::paintArch(QRect eye, int up)
{
    const auto bow = eye.adjusted(m_line, 0, -m_line, 0);
    const auto top = eye.center().y() - up * m_line / 2;
    m_canvas.box({ bow.left(), top, bow.width(), m_line }, m_dark);
    for (const auto end : { eye.left(), eye.right() - m_line + 1 })
        m_canvas.box({ end, top + up * m_line, m_line, m_line }, m_dark);
}

void FacePainter::paintSqueezed(QRect eye, Side side)
{
    const auto tip = side == Side::left ? eye.right() - m_line + 1 : eye.left();
    const auto open = side == Side::left ? eye.left() : eye.right() - m_line + 1;
    const auto middle = eye.top() + m_cell - m_line / 2;
    m_canvas.line({ open, eye.top() }, { tip, middle }, m_dark, m_line);
    m_canvas.line({ tip, middle }, { open, eye.bottom() - m_line + 1 }, m_dark, m_line);
}

void FacePainter::paintCross(QRect eye)
{
    const auto last = eye.bottomRight() - QPoint(m_line - 1, m_line - 1);
    m_canvas.line(eye.topLeft(), last, m_dark, m_line);
    m_canvas.line({ last.x(), eye.top() }, { eye.left(), last.y() }, m_dark, m_line);
}

void FacePainter::paintPleading(QRect eye)
{
    paintPill(m_canvas, eye, m_dark);
    m_canvas.box({ eye.topLeft() + QPoint(1, 1), QSize(m_cell, m_cell) }, Ink::white);
    const auto low = eye.bottomRight() - QPoint(m_line, m_line);
    m_canvas.box({ low, QSize(m_line, m_line) }, Ink::sky);
}

void FacePainter::paintHalf(QRect eye)
{
    paintGaze(eye, { m_figure.face.look.x(), farthest }, m_cell - 1);
    const QRect lid(eye.left() - 1, eye.top() - 1, eye.width() + 2, m_cell);
    m_canvas.box(lid, m_figure.sprite.palette.at('B'));
    m_canvas.box({ lid.left(), lid.bottom(), lid.width(), m_line }, m_dark);
}

void FacePainter::paintBrow(Side side)
{
    const auto brows = std::ranges::find(browRows, m_figure.face.brows, &BrowRow::brows);
    if (brows == std::end(browRows))
        return;
    const auto isLarge = m_figure.face.eyes == Eyes::wide || m_figure.face.eyes == Eyes::pleading;
    const auto eye = m_figure.eye(side).translated(0, -m_cell - (isLarge ? 1 : 0));
    const auto isLeft = side == Side::left;
    const auto sunk = isLeft ? brows->left : brows->right;
    const auto unit = (m_cell + 1) / 2;
    const auto outer = (isLeft ? eye.topLeft() : eye.topRight()) + QPoint(0, sunk.outer * unit);
    const auto inner = (isLeft ? eye.topRight() : eye.topLeft()) + QPoint(0, sunk.inner * unit);
    m_canvas.line(outer, inner, m_dark, m_line);
}

void FacePainter::paintMouth()
{
    switch (m_figure.face.mouth) {
    case Mouth::none:
        return;
    case Mouth::smile:
        return paintCurve(1);
    case Mouth::frown:
        return paintCurve(-1);
    case Mouth::flat:
        return m_canvas.box(around(m_figure.mouth(), { 3 * m_cell, m_line }), m_dark);
    case Mouth::wobble:
        return paintWobble();
    case Mouth::smirk:
        return paintSmirk();
    case Mouth::small:
        return paintHole({ m_cell + 1, m_cell + 1 }, Ink::crimson);
    case Mouth::gasp:
        return paintHole({ 3 * m_cell, 5 * m_cell / 2 }, Ink::crimson);
    case Mouth::clenched:
        return paintTeeth({ 4 * m_cell, 2 * m_cell });
    case Mouth::laugh:
        return paintLaugh({ 4 * m_cell, 5 * m_cell / 2 });
    }
}

void FacePainter::paintCurve(int up)
{
    const auto middle = m_figure.mouth();
    const auto half = 2 * m_cell;
    m_canvas.box(around(middle, { 2 * (half - m_line), m_line }), m_dark);
    for (const auto end : { -half, half - m_line })
        m_canvas.box(
            { middle + QPoint(end, -m_line / 2 - up * m_line), QSize(m_line, m_line) }, m_dark);
}

void FacePainter::paintSmirk()
{
    const auto left = m_figure.mouth() - QPoint(m_cell, 0);
    m_canvas.box({ left, QSize(3 * m_cell, m_line) }, m_dark);
    m_canvas.box({ left + QPoint(3 * m_cell, -m_line), QSize(m_line, m_line) }, m_dark);
}

void FacePainter::paintWobble()
{
    const auto left = m_figure.mouth() - QPoint(2 * m_cell, 0);
    for (int bow = 0; bow < 4; ++bow) {
        const auto rise = bow % 2 ? m_line : 0;
        m_canvas.box({ left + QPoint(bow * m_cell, -rise), QSize(m_cell, m_line) }, m_dark);
    }
}

void FacePainter::paintHole(QSize size, RGB inside)
{
    const auto mouth = around(m_figure.mouth(), size);
    paintPill(m_canvas, mouth.adjusted(0, -1, 0, 0), m_dark);
    paintPill(m_canvas, mouth.adjusted(1, 0, -1, -1), inside);
}

void FacePainter::paintTeeth(QSize size)
{
    const auto middle = m_figure.mouth();
    paintHole(size, Ink::white);
    m_canvas.box(around(middle, { size.width() - 2, 1 }), m_dark);
    for (auto x = -m_cell; x <= m_cell; x += m_cell)
        m_canvas.box(around(middle + QPoint(x, 0), { 1, size.height() }), m_dark);
}

void FacePainter::paintLaugh(QSize size)
{
    paintHole(size, Ink::crimson);
    const auto inside = around(m_figure.mouth(), size).adjusted(2, 1, -2, -1);
    m_canvas.box({ inside.topLeft(), QSize(inside.width(), m_line) }, Ink::white);
    m_canvas.box(
        { inside.left() + 1, inside.bottom() - m_line + 1, inside.width() - 2, m_line }, Ink::pink);
}

} // namespace pobblewig
