#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <algorithm>

namespace pobblewig {

Film ReactionPictures::floatingOnTears()
{
    return film(14, 220, [](int step) {
        auto canvas = Scenery::room({ 200, 206, 226 }, { 150, 140, 150 });
        const auto surface = std::max(33, 51 - step * 3);
        const auto isAfloat = step > 5;
        const auto swell = step % 4 / 2;
        Figure figure { .sprite = Figures::brownMouse(), .feet = { 31, 46 } };
        if (isAfloat)
            figure.feet.ry() = surface + 9 - swell;
        figure.face = { .eyes = Eyes::squeezed, .mouth = Mouth::wobble };
        figure.paint(canvas);
        for (const auto side : bothSides)
            Scenery::paintTears(canvas, figure.eye(side), 18, step);
        Scenery::paintWater(canvas, surface, step);
        if (isAfloat)
            canvas.artAround(Props::rubberRing, { 31, surface + 2 - swell });
        if (step > 6)
            canvas.artAbove(Props::paperBoat, { 92 - step * 6, surface + 15 });
        return canvas;
    });
}

Film ReactionPictures::brbCrying()
{
    return film({ 200, 200, 200, 200, 200, 200, 900 }, [](int step) {
        auto canvas = Scenery::room({ 178, 196, 178 }, { 130, 110, 96 });
        const auto tremble = step < 6 ? step % 2 : 0;
        const Figure figure { .sprite = Figures::grayMouse(),
            .feet = { 31 + tremble, 44 - (step == 6 ? 5 : 0) },
            .face = { .eyes = step == 6 ? Eyes::pleading : Eyes::squeezed,
                .brows = step == 6 ? Brows::worried : Brows::none } };
        figure.paint(canvas);
        const QRect box(5, 30, 52, 21);
        canvas.box(box.adjusted(-1, -1, 1, 1), Ink::black);
        canvas.box(box, Ink::tan);
        canvas.box({ box.left(), box.top(), box.width(), 3 }, { 176, 122, 72 });
        canvas.line({ 4, 30 }, { 0, 36 }, Ink::brown, 2);
        canvas.line({ 57, 30 }, { 60, 36 }, Ink::brown, 2);
        canvas.write("BRB", { 31, 38 }, Ink::black);
        canvas.write("CRYING", { 31, 46 }, Ink::black);
        for (int drop = 0; step < 6 && drop < 4; ++drop) {
            const auto flown = (step + drop) % 3;
            canvas.art(Props::sweatDrop,
                { 12 + drop * 11 + (drop < 2 ? -flown : flown) * 3, 10 + flown * 3 });
        }
        return canvas;
    });
}

Film ReactionPictures::rainyWindow()
{
    return film(6, 170, [](int step) {
        Canvas canvas({ 96, 74, 70 });
        const QRect pane(5, 4, 52, 40);
        canvas.box(pane.adjusted(-2, -2, 2, 2), Ink::cream);
        canvas.box(pane, { 74, 92, 128 });
        const Figure figure { .sprite = Figures::blueAxolotl(),
            .feet = { 31, 50 },
            .face = { .eyes = step == 3 ? Eyes::closed : Eyes::pleading,
                .brows = Brows::worried,
                .mouth = Mouth::frown } };
        figure.paint(canvas);
        canvas.tint(pane, { 90, 120, 170 }, 0.15);
        Scenery::paintRain(canvas, pane, { 190, 214, 240 }, step);
        canvas.tint({ 8, 5, 19, 10 }, Ink::white, 0.3);
        const LetterColor finger[] { { 'O', { 74, 92, 128 } } };
        canvas.art(PixelArts::heart(true), { 14, 6 }, 1, finger);
        canvas.box({ 30, pane.top(), 2, 14 }, Ink::cream);
        canvas.box({ pane.left(), 16, pane.width(), 2 }, Ink::cream);
        canvas.box({ 0, pane.bottom(), Canvas::width, 3 }, Ink::cream);
        canvas.box({ 0, pane.bottom() + 3, Canvas::width, 6 }, { 120, 92, 84 });
        return canvas;
    });
}

} // namespace pobblewig
