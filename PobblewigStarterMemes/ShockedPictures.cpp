#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <algorithm>
#include <array>

namespace pobblewig {

Film ReactionPictures::jawThroughTheFloor()
{
    return film({ 700, 200, 80, 80, 80, 80, 1300 }, [](int step) {
        auto canvas = Scenery::room({ 150, 206, 236 }, { 190, 140, 96 });
        Figure figure { .sprite = Figures::grayMouse(), .feet = { 31, 36 } };
        figure.face = { .eyes = Eyes::wide, .mouth = step == 0 ? Mouth::smile : Mouth::gasp };
        if (step > 1)
            figure.face.brows = Brows::worried;
        figure.paint(canvas);
        const auto drop = std::max(0, step - 1) * 4;
        if (drop > 0) {
            const auto top = figure.mouth() - QPoint(6, 3);
            canvas.box({ top - QPoint(1, 1), QSize(14, drop + 6) }, Ink::black);
            canvas.box({ top, QSize(12, drop + 2) }, Ink::crimson);
            canvas.box({ top + QPoint(2, 0), QSize(8, 2) }, Ink::white);
            canvas.box({ top + QPoint(3, drop - 5), QSize(6, 7) }, Ink::pink);
            canvas.box({ top + QPoint(0, drop + 1), QSize(12, 3) }, figure.sprite.palette.at('L'));
        }
        if (step >= 5) {
            for (const auto splinter : { -12, -9, 8, 11 })
                canvas.line({ 31 + splinter, 46 }, { 31 + splinter * 5 / 4, 42 }, Ink::brown, 2);
            canvas.box({ 20, 47, 4, 2 }, Ink::black);
            canvas.box({ 38, 47, 4, 2 }, Ink::black);
        }
        return canvas;
    });
}

Film ReactionPictures::soulLeaving()
{
    return film(10, 160, [](int step) {
        auto canvas = Scenery::dotted({ 70, 62, 104 }, { 82, 74, 118 });
        const Figure body { .sprite = Figures::goldenAxolotl(),
            .feet = { 31, 51 },
            .face = { .eyes = Eyes::crossed, .mouth = Mouth::small } };
        body.paint(canvas);
        const auto rise = std::min(step, 7) * 3;
        const Figure soul { .sprite = body.sprite,
            .feet = { 31 + (step / 2 % 2 ? 1 : -1), 44 - rise },
            .cell = 2,
            .face = { .eyes = Eyes::content, .mouth = Mouth::smile },
            .hasLegs = false };
        auto ghost = soul.layer();
        ghost.tint({ 0, 0, Canvas::width, Canvas::height }, { 214, 240, 255 }, 0.7);
        canvas.place(ghost);
        const auto tail = QPoint(31, soul.body().bottom());
        for (int curl = 0; curl < 4 + rise / 4; ++curl)
            canvas.box({ tail + QPoint(-4 + curl / 2 + (curl + step) / 2 % 2, curl),
                           QSize(std::max(2, 8 - curl), 1) },
                { 200, 228, 246 });
        if (step > 4)
            canvas.line(
                { 26, soul.body().top() - 2 }, { 36, soul.body().top() - 2 }, Ink::yellow, 2);
        return canvas;
    });
}

Film ReactionPictures::plotTwist()
{
    return film({ 800, 100, 100, 100, 1200 }, [](int step) {
        const auto isFlash = step == 1 || step == 3;
        Canvas canvas(isFlash ? Ink::yellow : RGB { 60, 44, 110 });
        Scenery::paintSpeedLines(canvas, isFlash ? Ink::white : Ink::violet, step);
        Figure figure { .sprite = Figures::brownMouse(), .feet = { 31, 48 } };
        figure.face = { .eyes = step == 0 ? Eyes::open : Eyes::wide,
            .mouth = step == 0 ? Mouth::smile : Mouth::gasp };
        if (step > 1) {
            figure.cell = 4;
            figure.feet.ry() = 58;
        }
        figure.paint(canvas);
        if (step == 4)
            canvas.shout("DUN DUN", { 31, 8 });
        return canvas;
    });
}

} // namespace pobblewig
