#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <algorithm>

namespace pobblewig {

namespace {

/// A checked blanket that hangs from a height down to the floor.
Canvas blanket(QPoint middle, int halfWidth, int height)
{
    constexpr int spacing = 8;
    Canvas canvas;
    const auto top = middle.y() - height;
    for (auto y = top; y < Canvas::height; ++y) {
        const auto half = std::min(halfWidth, halfWidth - 6 + (y - top) * 2);
        canvas.box({ middle.x() - half, y, 2 * half, 1 }, Ink::red);
    }
    for (int x = 3; x < Canvas::width; x += spacing)
        canvas.tint({ x, 0, 3, Canvas::height }, Ink::crimson, 0.7);
    for (int y = 1; y < Canvas::height; y += spacing)
        canvas.tint({ 0, y, Canvas::width, 2 }, Ink::cream, 0.5);
    canvas.outline(Ink::black);
    return canvas;
}

void paintUmbrella(Canvas& canvas, QPoint top)
{
    constexpr int height = 11;
    Canvas shade;
    for (int row = 0; row < height; ++row) {
        const auto half = std::min(5 + row * 2, 18);
        shade.box({ top.x() - half, top.y() + row, 2 * half, 1 }, Ink::red);
        shade.box({ top.x() - half / 3, top.y() + row, 2 * half / 3, 1 }, Ink::white);
    }
    shade.outline(Ink::black);
    const auto grip = top + QPoint(11, height);
    canvas.line(grip, grip + QPoint(0, 24), Ink::brown, 2);
    canvas.place(shade);
}

} // namespace

Film ReactionPictures::blanketAndTea()
{
    return film(6, 260, [](int step) {
        auto canvas = Scenery::room({ 70, 74, 112 }, { 96, 74, 84 });
        canvas.place(blanket({ 31, 36 }, 27, 14));
        const Figure mouse { .sprite = Figures::grayMouse(),
            .feet = { 17, 42 },
            .cell = 2,
            .face = { .eyes = Eyes::content, .mouth = Mouth::smile, .isBlushing = true } };
        const Figure axolotl { .sprite = Figures::pinkAxolotl(),
            .feet = { 45, 42 },
            .cell = 2,
            .face = { .eyes = step == 4 ? Eyes::closed : Eyes::open,
                .mouth = Mouth::smile,
                .isBlushing = true } };
        mouse.paint(canvas);
        axolotl.paint(canvas);
        canvas.place(blanket({ 31, 52 }, 28, 14));
        canvas.artAbove(Props::teaCup, { 32, 48 });
        mouse.paintPaw(canvas, { 25, 44 });
        axolotl.paintPaw(canvas, { 40, 44 });
        Scenery::paintHeart(canvas, { 31, 15 - step }, step > 2);
        return canvas;
    });
}

Film ReactionPictures::thereThere()
{
    return film({ 260, 200, 260, 200, 260, 200 }, [](int step) {
        auto canvas = Scenery::room({ 150, 196, 236 }, { 126, 140, 180 });
        const auto isDown = step % 2 == 0;
        const Figure small { .sprite = Figures::brownMouse(),
            .feet = { 16, 49 + (isDown ? 1 : 0) },
            .cell = 2,
            .face = { .eyes = Eyes::pleading, .brows = Brows::worried, .mouth = Mouth::wobble } };
        const Figure friendly { .sprite = Figures::goldenAxolotl(),
            .feet = { 40, 43 },
            .face = { .eyes = Eyes::content, .mouth = Mouth::smile, .isBlushing = true } };
        friendly.paint(canvas);
        small.paint(canvas);
        const LetterColor paw[] { { 'X', { 244, 218, 154 } }, { 'O', { 140, 104, 56 } } };
        canvas.art(PixelArts::paw(), small.crown() - QPoint(3, isDown ? 4 : 8), 1, paw);
        canvas.plate("THERE THERE", { 31, 7 });
        return canvas;
    });
}

Film ReactionPictures::lentUmbrella()
{
    return film(6, 120, [](int step) {
        Canvas canvas({ 84, 102, 140 });
        canvas.box({ 0, 44, Canvas::width, 8 }, { 66, 80, 112 });
        const Figure dry { .sprite = Figures::whiteMouse(),
            .feet = { 17, 48 },
            .cell = 2,
            .face = { .eyes = Eyes::pleading, .brows = Brows::worried, .mouth = Mouth::smile } };
        const Figure wet { .sprite = Figures::blueAxolotl(),
            .feet = { 45, 48 },
            .cell = 2,
            .face = { .eyes = Eyes::happy, .mouth = Mouth::laugh, .isBlushing = true } };
        wet.paint(canvas);
        constexpr RGB rain { 186, 214, 242 };
        Scenery::paintRain(canvas, { 0, 0, Canvas::width, 17 }, rain, step);
        Scenery::paintRain(canvas, { 38, 0, 24, 46 }, rain, step);
        for (const auto splash : { QPoint(36, 32), QPoint(46, 31), QPoint(57, 33) })
            canvas.line(splash - QPoint(step % 2, 0), splash + QPoint(2, -step % 3), Ink::white);
        dry.paint(canvas);
        paintUmbrella(canvas, { 19, 6 });
        wet.paintPaw(canvas, { 31, 40 });
        return canvas;
    });
}

Film ReactionPictures::emergencyCookie()
{
    return film({ 700, 110, 110, 1800 }, [](int step) {
        auto canvas = Scenery::dotted(Ink::rose, { 246, 188, 200 });
        const auto isHere = step == 3;
        const Figure figure { .sprite = Figures::grayMouse(),
            .feet = { 31, isHere ? 37 : 42 },
            .face = { .eyes = Eyes::pleading,
                .brows = Brows::worried,
                .mouth = Mouth::smile,
                .isBlushing = true } };
        figure.paint(canvas);
        const QPoint foot(31, isHere ? 52 : 45 + 2 * step);
        canvas.artAbove(Props::cookie, foot, isHere ? 2 : 1);
        const auto reach = isHere ? 14 : 8;
        figure.paintPaw(canvas, foot + QPoint(-reach, -7));
        figure.paintPaw(canvas, foot + QPoint(reach, -7));
        if (isHere)
            canvas.plate("FOR YOU", { 31, 6 });
        return canvas;
    });
}

} // namespace pobblewig
