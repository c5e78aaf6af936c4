#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace pobblewig {

namespace {

constexpr RGB loadingGround { 226, 220, 240 };

void paintSpinner(Canvas& canvas, QPoint middle, int step)
{
    constexpr int spokes = 8;
    constexpr int radius = 6;
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const auto angle = 2 * std::numbers::pi * spoke / spokes;
        const auto age = (step - spoke + 2 * spokes) % spokes;
        const auto place = (QPointF(std::cos(angle), std::sin(angle)) * radius).toPoint();
        canvas.box({ middle + place, QSize(3, 3) },
            mixed(Ink::violet, loadingGround, double(age) / spokes));
    }
}

} // namespace

Film ReactionPictures::orbitingQuestions()
{
    return film(12, 130, [](int step) {
        auto canvas = Scenery::dotted({ 108, 186, 190 }, { 92, 168, 176 });
        Figure figure { .sprite = Figures::brownMouse(), .feet = { 31, 49 } };
        const auto turn = 2 * std::numbers::pi * step / 12;
        figure.face = { .eyes = Eyes::wide,
            .look = (QPointF(std::cos(turn), std::sin(turn)) * 2).toPoint(),
            .brows = Brows::raised,
            .mouth = Mouth::wobble };
        constexpr int questions = 3;
        const auto paintQuestions = [&](bool isBehind) {
            for (int question = 0; question < questions; ++question) {
                const auto angle = turn + 2 * std::numbers::pi * question / questions;
                if ((std::sin(angle) < 0) == isBehind)
                    canvas.artAround(Props::questionMark,
                        QPoint(31 + int(25 * std::cos(angle)), 15 + int(9 * std::sin(angle))));
            }
        };
        paintQuestions(true);
        figure.paint(canvas);
        paintQuestions(false);
        return canvas;
    });
}

Film ReactionPictures::doingTheMath()
{
    return film({ 400, 400, 400, 400, 250, 1500 }, [](int step) {
        auto canvas = Scenery::room({ 60, 110, 90 }, Ink::brown);
        const auto isDone = step >= 4;
        Figure figure { .sprite = Figures::pinkAxolotl(), .feet = { 31, 51 } };
        figure.face = { .eyes = isDone ? Eyes::wide : Eyes::half,
            .look = { isDone ? 0 : step % 3 - 1, isDone ? -2 : 0 },
            .brows = isDone ? Brows::none : Brows::worried,
            .mouth = isDone ? Mouth::small : Mouth::flat };
        figure.paint(canvas);
        if (step >= 1)
            canvas.write("2+2=", { 19, 9 }, Ink::white, 2);
        if (step >= 2)
            canvas.write("X-7", { 9, 22 }, Ink::cream);
        if (step >= 3)
            canvas.write("9.81", { 52, 22 }, Ink::mint);
        if (isDone)
            canvas.artAround(Props::fish, { 48, 9 }, 2);
        return canvas;
    });
}

Film ReactionPictures::loading()
{
    return film({ 160, 160, 160, 160, 160, 160, 160, 160, 160, 160, 160, 900 }, [](int step) {
        constexpr std::array progress { "97%", "98%", "99%" };
        Canvas canvas(loadingGround);
        const auto hasGivenUp = step == 11;
        const Figure figure { .sprite = Figures::blueAxolotl(),
            .feet = { 31, 44 },
            .face = { .eyes = hasGivenUp ? Eyes::crossed : Eyes::dots,
                .mouth = hasGivenUp ? Mouth::wobble : Mouth::flat } };
        figure.paint(canvas);
        paintSpinner(canvas, { 31, 9 }, step);
        canvas.plate(hasGivenUp ? "2%" : progress[size_t(std::min(step / 2, 2))], { 31, 46 },
            hasGivenUp ? Ink::pink : Ink::white, 2);
        return canvas;
    });
}

} // namespace pobblewig
