#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <algorithm>

namespace pobblewig {

Film ReactionPictures::fallingMonocle()
{
    return film({ 900, 150, 90, 90, 90, 1400 }, [](int step) {
        auto canvas = Scenery::dotted({ 126, 60, 84 }, { 146, 76, 98 });
        const auto isCalm = step == 0;
        const Figure figure { .sprite = Figures::whiteMouse(),
            .feet = { 31, 51 },
            .face = { .eyes = isCalm ? Eyes::half : Eyes::wide,
                .mouth = isCalm ? Mouth::flat : Mouth::gasp } };
        figure.paint(canvas);
        const auto fall = std::max(0, step - 1) * 4;
        const auto monocle = figure.eye(Side::right).center() + QPoint(fall ? 3 : 0, fall);
        canvas.line(monocle + QPoint(4, 2), { 58, 51 }, Ink::yellow);
        canvas.artAround(Props::monocle, monocle);
        const auto lift = isCalm ? 0 : step < 5 ? 8 : 5;
        canvas.artAbove(Props::topHat, figure.crown() + QPoint(0, 1 - lift));
        if (!isCalm)
            canvas.plate("EXCUSE ME?", { 31, 5 });
        return canvas;
    });
}

Film ReactionPictures::turnedBack()
{
    return film({ 1100, 120, 700, 120, 900 }, [](int step) {
        auto canvas = Scenery::room({ 246, 190, 170 }, { 180, 110, 100 });
        const auto isPeeking = step == 2;
        Figure figure {
            .sprite = Figures::pinkAxolotl(), .feet = { 31, 48 }, .isTurnedAway = !isPeeking
        };
        figure.face = {
            .eyes = Eyes::half, .look = { 2, 0 }, .brows = Brows::angry, .mouth = Mouth::frown
        };
        if (step % 2)
            figure.feet.rx() += 2;
        figure.paint(canvas);
        if (!isPeeking) {
            for (const auto puff : { QPoint(7, 18), QPoint(52, 18) })
                canvas.disc(puff - QPoint(0, step % 2 * 2), 2, Ink::white);
            canvas.shout("HMPH!", { 31, 10 });
        }
        return canvas;
    });
}

Film ReactionPictures::oneStar()
{
    return film({ 900, 140, 1600 }, [](int step) {
        constexpr int stars = 5;
        constexpr int spacing = 10;
        auto canvas = Scenery::dotted({ 76, 132, 170 }, { 66, 118, 156 });
        const auto isRated = step > 0;
        const Figure figure { .sprite = Figures::blueAxolotl(),
            .feet = { 31, 38 + (step == 1 ? 1 : 0) },
            .face = { .eyes = Eyes::half,
                .look = { 0, isRated ? 0 : 2 },
                .brows = Brows::angry,
                .mouth = Mouth::frown } };
        figure.paint(canvas);
        const QRect board(3, 34, 56, 15);
        canvas.box(board.adjusted(-1, -1, 1, 1), Ink::black);
        canvas.box(board, Ink::cream);
        const LetterColor faded[] { { 'y', { 214, 200, 178 } }, { 'w', { 214, 200, 178 } } };
        const LetterColor golden[] { { 'y', Ink::orange }, { 'w', Ink::yellow } };
        for (int star = 0; star < stars; ++star)
            canvas.art(Props::star, board.topLeft() + QPoint(5 + star * spacing, 4), 1,
                isRated && star == 0 ? golden : faded);
        for (const auto x : { board.left() + 1, board.right() })
            figure.paintPaw(canvas, { x, board.top() + 2 });
        if (isRated)
            canvas.plate("ONE STAR", { 31, 7 });
        return canvas;
    });
}

} // namespace pobblewig
