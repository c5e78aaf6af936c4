#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <array>

namespace pobblewig {

namespace {

void paintDoor(Canvas& canvas)
{
    const QRect door(5, 3, 34, 37);
    canvas.box(door.adjusted(-2, -2, 2, 0), Ink::black);
    canvas.box(door, Ink::brown);
    canvas.box({ 8, 6, 28, 11 }, Ink::cream);
    canvas.write("FOCUS", { 22, 11 }, Ink::crimson);
    canvas.box({ 34, 24, 3, 3 }, Ink::yellow);
}

} // namespace

Film ReactionPictures::nightWatch()
{
    return film({ 900, 120, 700, 500, 500, 120, 1000 }, [](int step) {
        auto canvas = Scenery::night();
        canvas.box({ 0, 44, Canvas::width, 8 }, Ink::slate);
        for (int x = 0; x < Canvas::width; x += 12)
            canvas.box({ x, 41, 7, 4 }, Ink::slate);
        const auto isDozing = step == 3 || step == 4;
        Figure figure { .sprite = Figures::grayMouse(),
            .feet = { 31, 47 + (isDozing ? step - 2 : 0) } };
        figure.face = { .eyes = Eyes::open, .brows = Brows::angry, .mouth = Mouth::flat };
        if (step == 1)
            figure.face.eyes = Eyes::closed;
        if (isDozing)
            figure.face = { .eyes = Eyes::content, .mouth = Mouth::small };
        if (step == 5)
            figure.face = { .eyes = Eyes::wide, .mouth = Mouth::gasp };
        figure.paint(canvas);
        canvas.artAbove(Props::helmet, figure.crown() + QPoint(0, 2));
        canvas.artAbove(Props::toothpick, { 56, 46 });
        figure.paintPaw(canvas, { 56, 40 });
        const LetterColor snore[] { { 'X', Ink::white }, { 'O', Ink::gray } };
        if (isDozing)
            canvas.art(PixelArts::letterZ(step - 2), { 33 + step * 2, 24 - step * 4 }, 1, snore);
        return canvas;
    });
}

Film ReactionPictures::focusGuard()
{
    return film({ 700, 160, 160, 800, 120, 120, 900 }, [](int step) {
        constexpr std::array approach { 66, 58, 52, 48, 54, 62, 70 };
        auto canvas = Scenery::room({ 150, 124, 180 }, { 96, 74, 84 });
        paintDoor(canvas);
        const auto isIntruder = step >= 1 && step <= 5;
        const Figure figure { .sprite = Figures::pinkAxolotl(),
            .feet = { 22, 50 },
            .cell = 2,
            .face = { .eyes = isIntruder ? Eyes::wide : Eyes::half,
                .look = { isIntruder ? 2 : 0, 0 },
                .brows = Brows::angry,
                .mouth = isIntruder ? Mouth::clenched : Mouth::flat } };
        figure.paint(canvas);
        canvas.artAbove(Props::toothpick, { 42, 50 });
        figure.paintPaw(canvas, { 40, 43 });
        canvas.artAbove(Props::phone, { approach[size_t(step)], 50 });
        if (step == 3)
            canvas.shout("NO", { 52, 22 }, Ink::yellow);
        return canvas;
    });
}

Film ReactionPictures::hugeHeart()
{
    return film({ 500, 140, 140, 500, 140, 140 }, [](int step) {
        auto canvas = Scenery::beams(Ink::rose, { 252, 224, 228 }, { 31, 26 }, 0);
        const auto lift = step % 3 == 1 ? 2 : 0;
        const Figure figure { .sprite = Figures::brownMouse(),
            .feet = { 31, 38 - lift },
            .face = { .eyes = Eyes::hearts, .mouth = Mouth::smile, .isBlushing = true } };
        figure.paint(canvas);
        constexpr int scale = 3;
        const auto art = PixelArts::heart(true);
        const auto half = art.width() * scale / 2;
        canvas.art(art, { 31 - half, 33 - lift / 2 }, scale, Scenery::heartColors);
        for (const auto side : { -half, half })
            figure.paintPaw(canvas, { 31 + side, 42 - lift });
        Scenery::paintHeart(canvas, { 6, 34 - step * 5 }, step % 2 == 0);
        Scenery::paintHeart(canvas, { 55, 44 - step * 5 }, step % 2 == 1);
        return canvas;
    });
}

} // namespace pobblewig
