#include "PobblewigStarterMemes/Scenery.h"

#include "buddy/BuddyNoise.h"

#include <array>
#include <cmath>
#include <numbers>

namespace pobblewig {

namespace {

int noise(double seed, int below)
{
    return int(BuddyNoise::first(seed) * below);
}

} // namespace

Canvas Scenery::room(RGB wall, RGB boards)
{
    Canvas canvas(wall);
    canvas.box({ 0, floor, Canvas::width, Canvas::height }, boards);
    canvas.box({ 0, floor, Canvas::width, 1 }, mixed(boards, Ink::black, 0.35));
    for (int y = floor + 5; y < Canvas::height; y += 5)
        canvas.box({ 0, y, Canvas::width, 1 }, mixed(boards, Ink::black, 0.12));
    return canvas;
}

Canvas Scenery::beams(RGB one, RGB other, QPoint from, int step)
{
    constexpr int pairs = 9;
    constexpr double stepsPerPair = 4;
    Canvas canvas(one);
    for (int y = 0; y < Canvas::height; ++y) {
        for (int x = 0; x < Canvas::width; ++x) {
            const auto angle = std::atan2(y - from.y() + 0.5, x - from.x() + 0.5);
            const auto turn = angle / (2 * std::numbers::pi) * pairs + step / stepsPerPair + pairs;
            if (turn - std::floor(turn) < 0.5)
                canvas.dot({ x, y }, other);
        }
    }
    return canvas;
}

Canvas Scenery::dotted(RGB ground, RGB dots)
{
    constexpr int spacing = 8;
    Canvas canvas(ground);
    for (int row = 0; row * spacing < Canvas::height; ++row) {
        for (int x = row % 2 * spacing / 2; x < Canvas::width; x += spacing)
            canvas.box({ x, row * spacing, 2, 2 }, dots);
    }
    return canvas;
}

Canvas Scenery::night()
{
    constexpr int stars = 22;
    Canvas canvas(Ink::navy);
    for (int star = 1; star <= stars; ++star)
        canvas.dot({ noise(star, Canvas::width), noise(star + 0.5, floor) }, Ink::cream);
    canvas.disc({ 52, 9 }, 6, Ink::cream);
    canvas.disc({ 49, 7 }, 5, Ink::navy);
    return canvas;
}

Canvas Scenery::spotlight()
{
    Canvas canvas({ 44, 36, 62 });
    for (int y = 0; y < Canvas::height; ++y) {
        const auto half = 16 + y * 3 / 7;
        canvas.box({ center.x() - half, y, 2 * half, 1 }, { 92, 78, 120 });
    }
    canvas.box({ 0, 44, Canvas::width, Canvas::height }, { 70, 46, 52 });
    canvas.box({ 8, 44, Canvas::width - 16, 5 }, { 150, 110, 96 });
    return canvas;
}

void Scenery::paintFlames(Canvas& canvas, int left, int right, int bottom, int step)
{
    constexpr std::array heights { 14, 22, 17, 26, 15, 24 };
    constexpr int tongue = 4;
    struct Layer {
        RGB color;
        int lower;
    };
    for (const auto& [color, lower] :
        { Layer { Ink::red, 0 }, Layer { Ink::orange, 5 }, Layer { Ink::yellow, 11 } }) {
        for (int x = left; x < right; ++x) {
            const auto index = x / tongue;
            const auto flicker = noise(index * 7 + step * 3 + 1, 5);
            const auto slope = std::abs(x % tongue * 2 - tongue + 1);
            const auto height = heights[size_t(index) % heights.size()] + flicker - slope - lower;
            if (height > 0)
                canvas.box({ x, bottom - height, 1, height }, color);
        }
    }
}

void Scenery::paintRain(Canvas& canvas, QRect area, RGB color, int step)
{
    constexpr int drops = 26;
    constexpr int fall = 5;
    for (int drop = 1; drop <= drops; ++drop) {
        const auto x = area.left() + noise(drop, area.width());
        const auto y =
            area.top() + (noise(drop + 0.3, area.height()) + step * fall) % area.height();
        canvas.box(QRect(x, y, 1, 3) & area, color);
    }
}

void Scenery::paintConfetti(Canvas& canvas, int step)
{
    constexpr std::array colors { Ink::red, Ink::yellow, Ink::sky, Ink::green, Ink::pink,
        Ink::violet };
    constexpr int pieces = 42;
    constexpr int fall = 13;
    for (int piece = 1; piece <= pieces; ++piece) {
        const auto x = noise(piece, Canvas::width) + (step + piece) % 2;
        const auto y = (noise(piece + 0.7, Canvas::height) + step * fall / 2) % Canvas::height;
        const auto isFlat = (piece + step) % 3 == 0;
        canvas.box({ x, y, 2, isFlat ? 1 : 2 }, colors[size_t(piece) % colors.size()]);
    }
}

void Scenery::paintSteam(Canvas& canvas, QPoint from, int step)
{
    constexpr int rise = 9;
    for (const auto beside : { 0, 3 }) {
        for (int y = 0; y < rise; ++y) {
            const auto bend = (y + step + beside) / 2 % 2;
            if ((y + step * 2 + beside) % 7 < 5)
                canvas.dot(from + QPoint(beside + bend, -y), Ink::white);
        }
    }
}

void Scenery::paintWater(Canvas& canvas, int surface, int step)
{
    constexpr int wave = 8;
    canvas.box({ 0, surface, Canvas::width, Canvas::height }, { 92, 168, 224 });
    for (int x = 0; x < Canvas::width; ++x) {
        const auto isCrest = (x + step * 2) % wave < wave / 2;
        canvas.box({ x, surface - (isCrest ? 1 : 0), 1, 2 }, Ink::white);
        if ((x + step * 2 + 3) % 13 < 4)
            canvas.dot({ x, surface + 6 }, Ink::sky);
    }
}

void Scenery::paintSpeedLines(Canvas& canvas, RGB color, int step)
{
    constexpr int lines = 40;
    for (int line = 0; line < lines; ++line) {
        const auto angle = 2 * std::numbers::pi * (line + BuddyNoise::first(line + step)) / lines;
        const auto inner = 24 + noise(line + step + 0.2, 12);
        const auto at = [&](int radius) {
            return (QPointF(std::cos(angle), std::sin(angle)) * radius).toPoint() + center;
        };
        canvas.line(at(inner), at(44), color);
    }
}

void Scenery::paintHeart(Canvas& canvas, QPoint middle, bool isLarge)
{
    const auto heart = PixelArts::heart(isLarge);
    const QPoint half(heart.width() / 2, heart.height() / 2);
    canvas.art(heart, middle - half, 1, heartColors);
}

void Scenery::paintTears(Canvas& canvas, QRect eye, int length, int step)
{
    canvas.box({ eye.left(), eye.bottom(), eye.width() - 1, length }, Ink::sky);
    for (int y = 0; y < length; y += 4) {
        const auto glint = eye.bottom() + (y + step * 2) % length;
        canvas.box({ eye.left() + 1, glint, 1, 2 }, Ink::white);
    }
}

} // namespace pobblewig
