#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

namespace pobblewig {

namespace {

constexpr RGB coffee { 122, 70, 30 };

void paintSpray(Canvas& canvas, QPoint mouth, int step)
{
    constexpr int drops = 34;
    for (int drop = 0; drop < drops; ++drop) {
        const auto reach = step * 4 + drop % 6 * 2;
        const auto aside = (drop % 11 - 5) * reach / 3;
        canvas.box({ mouth + QPoint(aside, reach / 2 - drop % 7), QSize(2, 2) }, coffee);
    }
}

/// On the lens; they run down.
void paintSplashes(Canvas& canvas, int run)
{
    for (const auto middle : { QPoint(9, 22), QPoint(48, 12), QPoint(53, 40), QPoint(14, 43) }) {
        canvas.disc(middle, 3, coffee);
        canvas.box({ middle - QPoint(6, 0), QSize(2, 2) }, coffee);
        canvas.box({ middle + QPoint(4, -4), QSize(2, 2) }, coffee);
        canvas.box({ middle, QSize(2, 3 + run) }, coffee);
    }
}

} // namespace

Film ReactionPictures::laughingOnTheFloor()
{
    return film(4, 150, [](int step) {
        auto canvas = Scenery::room(Ink::mint, Ink::teal);
        const Figure figure { .sprite = Figures::pinkAxolotl(),
            .face = { .eyes = Eyes::squeezed, .mouth = Mouth::laugh, .isBlushing = true },
            .gait = step % 2 ? MascotGait::walkA : MascotGait::walkC };
        canvas.place(figure.layer().upsideDown(), { step % 2, 17 });
        const auto isFirst = step % 2 == 0;
        canvas.shout("HA", isFirst ? QPoint(11, 8) : QPoint(14, 10), Ink::yellow);
        canvas.shout("HA", isFirst ? QPoint(48, 11) : QPoint(45, 8), Ink::yellow);
        for (const auto x : { 3, 55 })
            canvas.art(Props::sweatDrop, { x - (isFirst ? 0 : 2), 27 - step % 2 * 4 });
        return canvas;
    });
}

Film ReactionPictures::spitTake()
{
    return film({ 800, 300, 90, 90, 90, 90, 1100 }, [](int step) {
        const auto isSipping = step == 0;
        const auto isBurst = step >= 2 && step <= 5;
        auto canvas = Scenery::dotted({ 176, 224, 206 }, { 156, 210, 190 });
        Figure figure { .sprite = Figures::lavenderAxolotl(),
            .feet = { 31 + (isBurst ? step % 2 : 0), 40 } };
        figure.face = { .eyes = isSipping ? Eyes::content : Eyes::wide,
            .mouth = isBurst ? Mouth::gasp : Mouth::small };
        if (step == 6)
            figure.face = { .eyes = Eyes::dots, .mouth = Mouth::flat };
        figure.paint(canvas);
        if (isBurst)
            paintSpray(canvas, figure.mouth(), step - 1);
        const auto cup = isSipping ? figure.mouth() + QPoint(1, 8) : QPoint(31, 50);
        canvas.artAbove(Props::teaCup, cup);
        if (isSipping || isBurst)
            canvas.shout(isSipping ? "SLURP" : "PFFFT", { 31, 8 });
        if (step >= 4)
            paintSplashes(canvas, step == 6 ? 5 : 0);
        return canvas;
    });
}

Film ReactionPictures::popcorn()
{
    return film({ 500, 180, 180, 180, 180, 700 }, [](int step) {
        Canvas canvas({ 88, 24, 44 });
        for (int fold = 0; fold < Canvas::width; fold += 6)
            canvas.box({ fold, 0, 2, Canvas::height }, { 112, 34, 54 });
        Figure figure { .sprite = Figures::grayMouse(), .feet = { 31, 41 } };
        const auto isChewing = step >= 2 && step <= 4;
        figure.face = { .eyes = Eyes::wide,
            .look = { step == 5 ? -2 : 2, -1 },
            .mouth = isChewing && step % 2 == 0 ? Mouth::flat : Mouth::small };
        figure.paint(canvas);
        constexpr QPoint bucketFoot { 31, 62 };
        canvas.artAbove(Props::popcorn, bucketFoot, 2);
        if (step == 1)
            canvas.box({ figure.mouth() + QPoint(1, -1), QSize(4, 4) }, Ink::cream);
        figure.paintPaw(canvas, step == 1 ? figure.mouth() + QPoint(6, 2) : QPoint(45, 46));
        figure.paintPaw(canvas, { 17, 46 });
        canvas.shout("GO ON", { 31, 8 });
        return canvas;
    });
}

} // namespace pobblewig
