#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <algorithm>

namespace pobblewig {

Film ReactionPictures::sunglasses()
{
    return film({ 600, 90, 90, 90, 90, 90, 90, 150, 150, 1600 }, [](int step) {
        auto canvas = Scenery::beams({ 240, 110, 150 }, { 250, 150, 170 }, { 31, 36 }, 0);
        const Figure figure { .sprite = Figures::goldenAxolotl(),
            .feet = { 31, 48 },
            .face = { .eyes = Eyes::half, .look = { 0, 1 }, .mouth = Mouth::smirk } };
        figure.paint(canvas);
        const auto nose = figure.eye(Side::left).top() - 1;
        canvas.art(Props::sunglasses, { 16, std::min(step * 6 - 8, nose) });
        if (step == 7 || step == 8)
            canvas.artAround(Props::star, { 20 + (step - 7) * 18, nose + 3 });
        if (step == 9)
            canvas.shout("HANDLED", { 31, 12 });
        return canvas;
    });
}

Film ReactionPictures::sippingTea()
{
    return film({ 900, 180, 180, 900, 180 }, [](int step) {
        auto canvas = Scenery::dotted({ 96, 150, 120 }, { 84, 136, 108 });
        const auto isSipping = step == 2 || step == 3;
        const Figure figure { .sprite = Figures::whiteMouse(),
            .feet = { 31, 44 },
            .face = { .eyes = step == 2 ? Eyes::content : Eyes::half,
                .look = { 2, 0 },
                .brows = Brows::raised,
                .mouth = Mouth::smirk } };
        figure.paint(canvas);
        const auto cup = figure.mouth() + (isSipping ? QPoint(4, 6) : QPoint(13, 12));
        canvas.artAbove(Props::teaCup, cup);
        figure.paintPaw(canvas, cup + QPoint(6, -3));
        canvas.line(cup + QPoint(8, -5), cup + QPoint(10, -8), figure.sprite.eyeColor);
        canvas.plate("INTERESTING", { 31, 8 });
        return canvas;
    });
}

Film ReactionPictures::micDrop()
{
    return film({ 900, 120, 90, 90, 90, 600, 180, 180, 180, 180, 700 }, [](int step) {
        auto canvas = Scenery::spotlight();
        const auto isLeaving = step >= 6;
        Figure figure { .sprite = Figures::lavenderAxolotl(),
            .feet = { 34, 47 },
            .face = { .eyes = Eyes::half, .look = { -1, 0 }, .mouth = Mouth::smirk },
            .isTurnedAway = isLeaving };
        if (isLeaving) {
            figure.feet.rx() += (step - 5) * 12;
            figure.gait = step % 2 ? MascotGait::walkA : MascotGait::walkC;
        }
        figure.paint(canvas);
        constexpr int hand = 17;
        const auto fall = step < 2 ? 0 : std::min((step - 1) * 6, 20);
        canvas.art(Props::microphone, { 3, hand + fall });
        if (step < 6)
            figure.paintPaw(canvas, { 7, hand + 8 });
        if (step == 5)
            canvas.shout("THUD", { 22, 8 }, Ink::yellow);
        return canvas;
    });
}

} // namespace pobblewig
