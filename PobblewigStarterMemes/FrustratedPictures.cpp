#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

constexpr int keyWidth = 4;

void paintKeyboard(Canvas& canvas, QRect area)
{
    canvas.box(area.adjusted(-1, -1, 1, 1), Ink::black);
    canvas.box(area, Ink::gray);
    for (auto y = area.top() + 1; y < area.bottom() - 1; y += keyWidth) {
        for (auto x = area.left() + 1; x < area.right() - 1; x += keyWidth)
            canvas.box({ x, y, keyWidth - 1, keyWidth - 1 }, Ink::white);
    }
}

void paintFlyingKey(Canvas& canvas, int key, int step)
{
    constexpr std::array columns { 3, 57, 46, 40 };
    const auto flown = (step * 5 + key * 7) % 24;
    const QPoint place(columns[size_t(key) % columns.size()], 26 - flown);
    canvas.box({ place - QPoint(1, 1), QSize(keyWidth + 1, keyWidth + 1) }, Ink::black);
    canvas.box({ place, QSize(keyWidth - 1, keyWidth - 1) }, Ink::white);
}

} // namespace

Film ReactionPictures::thisIsFine()
{
    return film(10, 150, [](int step) {
        Canvas canvas({ 104, 34, 34 });
        Scenery::paintFlames(canvas, 0, Canvas::width, 34, step);
        canvas.box({ 0, 34, Canvas::width, 8 }, Ink::yellow);
        const Figure figure { .sprite = Figures::grayMouse(),
            .feet = { 29, 46 },
            .face = { .eyes = step == 6 ? Eyes::closed : Eyes::open, .mouth = Mouth::smile } };
        figure.paint(canvas);
        canvas.box({ 0, 42, Canvas::width, 10 }, Ink::brown);
        canvas.box({ 0, 42, Canvas::width, 2 }, Ink::tan);
        canvas.artAbove(Props::mug, { 53, 43 });
        figure.paintPaw(canvas, { 49, 41 });
        Scenery::paintSteam(canvas, { 50, 34 }, step);
        Scenery::paintFlames(canvas, 0, 12, 54, step + 3);
        canvas.plate("THIS IS FINE", { 31, 6 });
        return canvas;
    });
}

Film ReactionPictures::chewedKeyboard()
{
    return film({ 150, 150, 150, 150, 150, 150, 800 }, [](int step) {
        constexpr RGB ground { 240, 120, 104 };
        auto canvas = Scenery::dotted(ground, { 224, 100, 90 });
        const auto isBiting = step % 2 == 0;
        Figure figure { .sprite = Figures::brownMouse(), .feet = { 31, 43 } };
        figure.face = { .eyes = isBiting ? Eyes::squeezed : Eyes::wide,
            .brows = isBiting ? Brows::none : Brows::angry,
            .mouth = isBiting ? Mouth::clenched : Mouth::gasp };
        if (step == 6)
            figure.face = { .eyes = Eyes::half, .brows = Brows::angry, .mouth = Mouth::clenched };
        const auto mouth = figure.mouth();
        figure.paint(canvas);
        const QRect keyboard(4, mouth.y() - (isBiting ? 1 : -3), 53, 13);
        Canvas bitten;
        paintKeyboard(bitten, keyboard);
        for (const auto tooth : { -4, 0, 4 })
            bitten.erase(QPoint(mouth.x() + tooth, keyboard.top()), 3);
        canvas.place(bitten);
        for (const auto x : { keyboard.left(), keyboard.right() })
            figure.paintPaw(canvas, { x, keyboard.center().y() });
        for (int key = 0; step < 6 && key < 4; ++key)
            paintFlyingKey(canvas, key, step);
        canvas.art(Props::anger, { 51, 6 + step % 2 });
        canvas.shout(step == 6 ? "CRUNCH" : "NOM", { step == 6 ? 28 : 17, 9 });
        return canvas;
    });
}

Film ReactionPictures::chartGoingWrong()
{
    return film({ 300, 250, 250, 400, 120, 120, 120, 1200 }, [](int step) {
        constexpr std::array course { QPoint(4, 26), QPoint(14, 20), QPoint(22, 23), QPoint(32, 12),
            QPoint(38, 8), QPoint(46, 26), QPoint(50, 40), QPoint(54, 60) };
        Canvas canvas({ 236, 240, 250 });
        for (int y = 4; y < Canvas::height; y += 8)
            canvas.box({ 0, y, Canvas::width, 1 }, { 210, 216, 234 });
        canvas.box({ 2, 2, 2, 46 }, Ink::slate);
        canvas.box({ 2, 48, Canvas::width, 2 }, Ink::slate);
        const auto isFalling = step >= 4;
        for (size_t point = 0; point < size_t(step); ++point)
            canvas.line(
                course.at(point), course.at(point + 1), point < 4 ? Ink::green : Ink::red, 3);
        Figure figure { .sprite = Figures::lavenderAxolotl(), .feet = { 24, 48 }, .cell = 2 };
        figure.face = { .eyes = Eyes::wide,
            .look = { 1, isFalling ? std::min(step - 4, 1) : -1 },
            .mouth = isFalling ? Mouth::gasp : Mouth::smile };
        if (step == 7)
            figure.face = { .eyes = Eyes::dots, .mouth = Mouth::flat };
        figure.paint(canvas);
        if (step == 7)
            canvas.shout("OH.", { 24, 26 });
        return canvas;
    });
}

Film ReactionPictures::headOnDesk()
{
    return film({ 900, 90, 90, 250, 250, 250, 1100 }, [](int step) {
        const auto hasFallen = step >= 2;
        auto canvas = Scenery::room({ 120, 150, 190 }, { 150, 108, 80 });
        const QRect screen(8, 3, 46, 13);
        canvas.box(screen.adjusted(-2, -2, 2, 2), Ink::slate);
        canvas.box(screen, { 24, 40, 48 });
        constexpr std::string_view typed = "GHJGGGGGGGGG";
        canvas.write(hasFallen ? typed.substr(0, size_t(step - 1) * 2) : "404 ERRORS",
            screen.center(), hasFallen ? Ink::mint : Ink::red);
        Figure figure { .sprite = Figures::goldenAxolotl(), .feet = { 31, 40 }, .hasLegs = false };
        figure.face = { .eyes = Eyes::half, .brows = Brows::worried, .mouth = Mouth::flat };
        figure.isTurnedAway = hasFallen;
        if (step > 0)
            figure.feet.ry() = step == 1 ? 44 : 48;
        if (!hasFallen)
            figure.paint(canvas);
        paintKeyboard(canvas, { 3, 40, 57, 11 });
        if (hasFallen)
            figure.paint(canvas);
        if (step == 2)
            canvas.shout("BONK", { 31, 25 }, Ink::yellow);
        return canvas;
    });
}

} // namespace pobblewig
