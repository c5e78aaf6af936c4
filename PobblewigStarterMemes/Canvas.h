#pragma once

#include "PobblewigStarterMemes/Ink.h"
#include "buddy/PixelArt.h"

#include <QImage>

namespace pobblewig {

/// A picture of dots to paint on. Anything outside it is lost.
class Canvas {
public:
    static constexpr int width = 62;
    static constexpr int height = 52;
    static constexpr int pixelsPerDot = 4;

    /// A transparent layer.
    Canvas();
    explicit Canvas(RGB ground);

    void dot(QPoint place, RGB color);
    void box(QRect area, RGB color);
    void disc(QPoint middle, int radius, RGB color);
    void line(QPoint from, QPoint to, RGB color, int thickness = 1);

    /// A drawing in the letters of `Ink`, or of others.
    void art(const PixelArt& art, QPoint corner, int scale = 1,
        std::span<const LetterColor> colors = Ink::letters);
    /// The same by the middle of the drawing, or by the middle of its lower edge.
    void artAround(const PixelArt& art, QPoint middle, int scale = 1);
    void artAbove(const PixelArt& art, QPoint foot, int scale = 1);

    /// Capital letters, digits and signs. An unknown one is a gap.
    void write(std::string_view words, QPoint middle, RGB color, int scale = 1);

    /// Large letters that stand out from any ground.
    void shout(std::string_view words, QPoint middle, RGB color = Ink::white);
    /// Letters on a dark plate.
    void plate(std::string_view words, QPoint middle, RGB color = Ink::white, int scale = 1);

    /// Blends what is painted in the area with a colour.
    void tint(QRect area, RGB color, double amount);

    /// Paints another layer over this one.
    void place(const Canvas& layer, QPoint offset = {});

    /// Makes a square transparent.
    void erase(QPoint middle, int radius);

    /// Surrounds what is painted, for it to stand out.
    void outline(RGB color);

    Canvas upsideDown() const;

    /// In pixels.
    QImage picture() const;

private:
    QImage m_dots;
};

} // namespace pobblewig
