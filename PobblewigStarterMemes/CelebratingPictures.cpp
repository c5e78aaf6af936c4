#include "PobblewigStarterMemes/Figure.h"
#include "PobblewigStarterMemes/Props.h"
#include "PobblewigStarterMemes/ReactionPictures.h"
#include "PobblewigStarterMemes/Scenery.h"

#include <array>

namespace pobblewig {

namespace {

constexpr QPoint discoBall { 31, 9 };

void paintDanceFloor(Canvas& canvas, int step)
{
    constexpr std::array colors { Ink::pink, Ink::sky, Ink::yellow, Ink::violet, Ink::green };
    for (int x = 0; x < Canvas::width; x += 8) {
        for (int y = 40; y < Canvas::height; y += 6)
            canvas.box({ x, y, 7, 5 }, colors[size_t(x / 8 + y / 6 + step) % colors.size()]);
    }
}

void paintDiscoBall(Canvas& canvas, int step)
{
    canvas.line({ discoBall.x(), 0 }, discoBall, Ink::silver);
    canvas.disc(discoBall, 6, Ink::silver);
    for (int glint = 0; glint < 12; ++glint)
        canvas.dot(discoBall + QPoint((glint * 5 + step * 3) % 9 - 4, glint * 7 % 9 - 4),
            glint % 2 ? Ink::white : Ink::gray);
}

void paintPassingClouds(Canvas& canvas, int step)
{
    constexpr int spacing = 31;
    constexpr int lap = 90;
    for (int cloud = 0; cloud < 3; ++cloud) {
        const QPoint place((cloud * spacing + lap - step * 15) % lap - 14, 10 + cloud * 17);
        canvas.box({ place, QSize(14, 4) }, Ink::white);
        canvas.box({ place + QPoint(3, -3), QSize(7, 3) }, Ink::white);
    }
}

void paintPencil(Canvas& canvas, QRect pencil)
{
    constexpr int tipLength = 9;
    canvas.box(pencil.adjusted(-1, -1, 1, 1), Ink::black);
    canvas.box(pencil, Ink::yellow);
    canvas.box(pencil.adjusted(0, 3, 0, -3), Ink::orange);
    canvas.box({ pencil.topLeft(), QSize(4, pencil.height()) }, Ink::pink);
    canvas.box({ pencil.topLeft() + QPoint(4, 0), QSize(2, pencil.height()) }, Ink::silver);
    for (int tip = 0; tip < tipLength; ++tip)
        canvas.box(
            { pencil.right() + 1 + tip, pencil.top() + tip / 2, 1, pencil.height() - tip / 2 * 2 },
            tip > 5 ? Ink::black : Ink::cream);
}

void paintExhaust(Canvas& canvas, QRect pencil, int length)
{
    for (int flame = 0; flame < length; ++flame)
        canvas.box({ pencil.left() - 2 - flame, pencil.top() + flame / 3, 1,
                       pencil.height() - flame / 3 * 2 },
            flame < 4       ? Ink::yellow
                : flame < 8 ? Ink::orange
                            : Ink::red);
}

} // namespace

Film ReactionPictures::partyHat()
{
    return film(8, 110, [](int step) {
        constexpr std::array jump { 0, 3, 6, 7, 6, 3, 0, 0 };
        auto canvas = Scenery::beams(Ink::violet, { 150, 112, 200 }, { 31, 34 }, step);
        const auto lift = jump[size_t(step)];
        const Figure figure { .sprite = Figures::whiteMouse(),
            .feet = { 31, 50 - lift },
            .face = { .eyes = Eyes::happy, .mouth = Mouth::laugh, .isBlushing = true },
            .gait = lift > 3 ? MascotGait::walkC : MascotGait::idle };
        figure.paint(canvas);
        canvas.artAbove(Props::partyHat, figure.crown() + QPoint(0, lift > 3 ? -1 : 1));
        Scenery::paintConfetti(canvas, step);
        return canvas;
    });
}

Film ReactionPictures::itWorks()
{
    return film({ 900, 300, 300, 300, 300 }, [](int step) {
        auto canvas = Scenery::room({ 255, 196, 140 }, Ink::brown);
        const Figure figure { .sprite = Figures::goldenAxolotl(),
            .feet = { 31, 43 },
            .face = { .eyes = Eyes::wide,
                .look = { step == 1 ? -2
                        : step == 3 ? 2
                                    : 0,
                    step == 0 ? 1 : 0 },
                .mouth = Mouth::clenched } };
        figure.paint(canvas);
        const LetterColor laptop[] { { 'X', { 92, 98, 112 } }, { 'O', { 58, 62, 74 } },
            { 'W', step % 2 ? Ink::mint : Ink::green } };
        canvas.art(PixelArts::laptop(), { 13, 40 }, 2, laptop);
        canvas.art(Props::sweatDrop, { 55, 16 + step * 2 });
        canvas.plate("IT WORKS", { 31, 5 }, Ink::mint);
        canvas.plate("NOBODY MOVE", { 31, 14 });
        return canvas;
    });
}

Film ReactionPictures::disco()
{
    return film(8, 160, [](int step) {
        auto canvas = Scenery::beams({ 40, 28, 70 }, { 86, 56, 140 }, discoBall, step);
        paintDanceFloor(canvas, step);
        paintDiscoBall(canvas, step);
        const auto isLeft = step % 4 < 2;
        const Figure figure { .sprite = Figures::blueAxolotl(),
            .feet = { isLeft ? 27 : 35, 49 - step % 2 * 3 },
            .face = { .eyes = Eyes::happy, .mouth = Mouth::laugh, .isBlushing = true },
            .gait = step % 2 ? MascotGait::walkC : MascotGait::walkA };
        figure.paint(canvas);
        for (const auto note : { QPoint(4, 14), QPoint(50, 12) })
            canvas.art(Props::note, note + QPoint(0, isLeft ? 0 : 4));
        return canvas;
    });
}

Film ReactionPictures::handedIn()
{
    return film(6, 100, [](int step) {
        Canvas canvas({ 126, 200, 244 });
        paintPassingClouds(canvas, step);
        const auto shake = step % 2;
        const Figure rider { .sprite = Figures::brownMouse(),
            .feet = { 32, 36 + shake },
            .cell = 2,
            .face = { .eyes = Eyes::happy, .mouth = Mouth::laugh } };
        const QRect pencil(14, 34 + shake, 32, 9);
        paintPencil(canvas, pencil);
        paintExhaust(canvas, pencil, 13 - shake * 3);
        rider.paint(canvas);
        canvas.plate("23:59", { 31, 9 }, Ink::yellow, 2);
        return canvas;
    });
}

Film ReactionPictures::trophy()
{
    return film({ 700, 120, 700, 120 }, [](int step) {
        constexpr int podium = 42;
        auto canvas = Scenery::beams({ 46, 120, 140 }, { 60, 140, 158 }, { 31, 18 }, step / 2);
        const auto isUp = step >= 2;
        const Figure figure { .sprite = Figures::grayMouse(),
            .feet = { 31, podium },
            .cell = 2,
            .face = { .eyes = isUp ? Eyes::happy : Eyes::open,
                .mouth = Mouth::laugh,
                .isBlushing = true } };
        canvas.box({ 8, podium, 46, Canvas::height }, Ink::black);
        canvas.write("OPENED IT", { 31, podium + 5 }, Ink::yellow);
        figure.paint(canvas);
        const QPoint foot(32, figure.crown().y() - (isUp ? 1 : -2));
        canvas.artAbove(Props::trophy, foot, 2);
        for (const auto side : { -7, 6 })
            figure.paintPaw(canvas, foot + QPoint(side, -1));
        canvas.artAround(Props::star, step % 2 ? QPoint(9, 10) : QPoint(53, 16));
        return canvas;
    });
}

} // namespace pobblewig
