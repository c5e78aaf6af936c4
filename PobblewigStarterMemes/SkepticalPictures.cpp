#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

namespace pobblewig {

Film ReactionPictures::raisedBrow()
{
    return film({ 800, 250, 200, 500, 120, 1700 }, [](int step) {
        auto canvas = Scenery::dotted({ 250, 214, 120 }, { 244, 198, 92 });
        const auto isClose = step >= 4;
        Figure figure { .sprite = Figures::lavenderAxolotl(),
            .feet = { 31, isClose ? 54 : 42 },
            .cell = isClose ? 4 : 3,
            .isTurnedAway = step == 0 };
        figure.face = { .eyes = step < 5 ? Eyes::half : Eyes::doubtful,
            .look = { step == 1 ? -2 : 0, 0 },
            .brows = step < 5 ? Brows::flat : Brows::raised,
            .mouth = step < 5 ? Mouth::flat : Mouth::frown };
        figure.paint(canvas);
        if (step == 5)
            canvas.shout("AGAIN?", { 31, 9 });
        return canvas;
    });
}

Film ReactionPictures::sideEye()
{
    return film({ 1000, 140, 1500, 140 }, [](int step) {
        auto canvas = Scenery::dotted({ 86, 96, 130 }, { 76, 86, 118 });
        const auto isLooking = step == 2;
        const Figure figure { .sprite = Figures::grayMouse(),
            .feet = { 31, 54 },
            .cell = 4,
            .face = { .eyes = step % 2 ? Eyes::closed : Eyes::half,
                .look = { isLooking ? 2 : -1, 0 },
                .brows = Brows::flat,
                .mouth = isLooking ? Mouth::smirk : Mouth::frown } };
        figure.paint(canvas);
        if (isLooking)
            canvas.shout("SURE.", { 31, 9 });
        return canvas;
    });
}

Film ReactionPictures::magnifier()
{
    return film({ 500, 160, 160, 900, 160, 160 }, [](int step) {
        auto canvas = Scenery::dotted({ 170, 206, 150 }, { 150, 190, 132 });
        const Figure figure { .sprite = Figures::whiteMouse(),
            .feet = { 31, 47 },
            .face = { .eyes = Eyes::wide,
                .look = { 0, 1 },
                .brows = Brows::raised,
                .mouth = Mouth::smirk } };
        figure.paint(canvas);
        const auto shift = step == 3 ? 0 : step == 0 ? 12 : 6;
        const auto glass = figure.eye(Side::right).center() + QPoint(shift, shift / 2);
        canvas.line(glass + QPoint(7, 7), glass + QPoint(16, 17), Ink::brown, 3);
        canvas.disc(glass, 11, Ink::black);
        canvas.disc(glass, 9, { 206, 236, 248 });
        if (shift < 12) {
            canvas.disc(glass - QPoint(shift / 2, 0), 7, Ink::white);
            canvas.disc(glass - QPoint(shift / 2, -1), 4, figure.sprite.eyeColor);
            canvas.box({ glass - QPoint(2, 2), QSize(2, 2) }, Ink::white);
        }
        canvas.shout("HMM", { 19, 8 });
        return canvas;
    });
}

} // namespace pobblewig
