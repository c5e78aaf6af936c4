#include "PobblewigStarterMemes/Canvas.h"

#include "PobblewigStarterMemes/Alphabet.h"

#include <QPainter>

#include <algorithm>

namespace pobblewig {

namespace {

QColor solid(RGB color)
{
    return { color.red, color.green, color.blue };
}

} // namespace

Canvas::Canvas()
    : m_dots(width, height, QImage::Format_ARGB32)
{
    m_dots.fill(Qt::transparent);
}

Canvas::Canvas(RGB ground)
    : Canvas()
{
    m_dots.fill(solid(ground));
}

void Canvas::dot(QPoint place, RGB color)
{
    if (m_dots.rect().contains(place))
        m_dots.setPixelColor(place, solid(color));
}

void Canvas::box(QRect area, RGB color)
{
    const auto visible = area & m_dots.rect();
    for (auto y = visible.top(); y <= visible.bottom(); ++y) {
        for (auto x = visible.left(); x <= visible.right(); ++x)
            dot({ x, y }, color);
    }
}

void Canvas::disc(QPoint middle, int radius, RGB color)
{
    for (int y = -radius; y <= radius; ++y) {
        for (int x = -radius; x <= radius; ++x) {
            if (x * x + y * y <= radius * radius + radius / 2)
                dot(middle + QPoint(x, y), color);
        }
    }
}

void Canvas::line(QPoint from, QPoint to, RGB color, int thickness)
{
    const auto way = to - from;
    const auto steps = std::max({ std::abs(way.x()), std::abs(way.y()), 1 });
    for (int step = 0; step <= steps; ++step) {
        const auto reached = from + QPointF(way) * step / steps;
        box({ reached.toPoint(), QSize(thickness, thickness) }, color);
    }
}

void Canvas::art(const PixelArt& art, QPoint corner, int scale, std::span<const LetterColor> colors)
{
    for (int y = 0; y < art.height(); ++y) {
        for (int x = 0; x < art.width(); ++x) {
            const auto letter = art.rows[size_t(y)][size_t(x)];
            const auto ink = std::ranges::find(colors, letter, &LetterColor::letter);
            if (ink != colors.end())
                box({ corner + QPoint(x, y) * scale, QSize(scale, scale) }, ink->color);
        }
    }
}

void Canvas::artAround(const PixelArt& drawing, QPoint middle, int scale)
{
    art(drawing, middle - QPoint(drawing.width(), drawing.height()) * scale / 2, scale);
}

void Canvas::artAbove(const PixelArt& drawing, QPoint foot, int scale)
{
    art(drawing, foot - QPoint(drawing.width() / 2, drawing.height()) * scale, scale);
}

void Canvas::write(std::string_view words, QPoint middle, RGB color, int scale)
{
    const LetterColor ink[] { { 'X', color } };
    auto corner = middle - QPoint(Alphabet::width(words), Alphabet::height) * scale / 2;
    for (const auto letter : words) {
        const auto drawing = Alphabet::letter(letter);
        art(drawing, corner, scale, ink);
        corner.rx() += (drawing.width() + Alphabet::gap) * scale;
    }
}

void Canvas::shout(std::string_view words, QPoint middle, RGB color)
{
    Canvas layer;
    layer.write(words, middle, color, 2);
    layer.outline(Ink::black);
    place(layer);
}

void Canvas::plate(std::string_view words, QPoint middle, RGB color, int scale)
{
    const auto padding = 1 + scale;
    const auto size =
        QSize(Alphabet::width(words), Alphabet::height) * scale + QSize(2 * padding, 2 * padding);
    box({ middle - QPoint(size.width(), size.height()) / 2, size }, Ink::black);
    write(words, middle, color, scale);
}

void Canvas::tint(QRect area, RGB color, double amount)
{
    auto glaze = solid(color);
    glaze.setAlphaF(float(amount));
    QPainter painter(&m_dots);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(area, glaze);
}

void Canvas::place(const Canvas& layer, QPoint offset)
{
    QPainter(&m_dots).drawImage(offset, layer.m_dots);
}

void Canvas::erase(QPoint middle, int radius)
{
    QPainter painter(&m_dots);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(
        QRect(middle - QPoint(radius, radius), middle + QPoint(radius, radius)), Qt::black);
}

void Canvas::outline(RGB color)
{
    Canvas silhouette = *this;
    silhouette.tint(m_dots.rect(), color, 1);
    const auto inside = std::exchange(m_dots, Canvas().m_dots);
    QPainter painter(&m_dots);
    for (const auto side : { QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1) })
        painter.drawImage(side, silhouette.m_dots);
    painter.drawImage(QPoint(), inside);
}

Canvas Canvas::upsideDown() const
{
    auto canvas = *this;
    canvas.m_dots = m_dots.mirrored(false, true);
    return canvas;
}

QImage Canvas::picture() const
{
    return m_dots.scaled(width * pixelsPerDot, height * pixelsPerDot);
}

} // namespace pobblewig
