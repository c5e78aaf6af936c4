#include "buddy/BuddyArtist.h"

#include "buddy/BuddyAnimation.h"
#include "support/TableRow.h"

#include <cmath>
#include <numbers>

namespace pobblewig {

namespace {

using Kind = BuddyState::Kind;
using Act = std::function<void(BuddyAnimation&)>;

constexpr QSize pillSize(190, 32);

/// A buddy that does something, and the drawings of it.
struct Studio {
    explicit Studio(const Act& act) { act(buddy); }

    void pass(double seconds, double interval = 1.0 / 60)
    {
        for (const auto end = now + seconds; now < end;) {
            now += interval;
            buddy.tick(now);
        }
    }

    const BuddyDrawing& draw(double sizeScale = 1, double ratio = 1)
    {
        const auto frame = buddy.frame(now);
        canvas = BuddyCanvas::ofScale(sizeScale, ratio);
        canvas.room = BuddyArtist::room(frame, canvas.cell, pill);
        artist.draw(frame, canvas, pill, drawing);
        return drawing;
    }

    double now = 0;
    BuddyPill pill { pillSize };
    BuddyAnimation buddy { 0 };
    BuddyArtist artist { MascotSprite::forID(u"axolotl") };
    BuddyCanvas canvas;
    BuddyDrawing drawing;
};

const Act nothing = [](BuddyAnimation&) {};
const Act pet = [](BuddyAnimation& buddy) { buddy.pet(0); };
const Act showMeme = [](BuddyAnimation& buddy) {
    buddy.showMeme(MemeAnimation(QImage(3, 2, QImage::Format_ARGB32_Premultiplied)), 9, 0);
};

Act both(const Act& first, const Act& second)
{
    return [=](BuddyAnimation& buddy) {
        first(buddy);
        second(buddy);
    };
}

Act enter(Kind kind)
{
    return [kind](BuddyAnimation& buddy) { buddy.setState({ kind, {} }, 0); };
}

QRect boundsOf(const BuddyDrawing& drawing)
{
    QRect bounds;
    for (const auto& part : drawing.parts)
        bounds |= part.rect;
    for (const auto& stamp : drawing.stamps) {
        const auto art = BuddyDrawing::art(stamp.art);
        bounds |= QRect(stamp.corner, QSize(art.width(), art.height()) * drawing.stampDot);
    }
    if (drawing.badge)
        bounds |= drawing.badge->rect;
    if (drawing.card)
        bounds |= drawing.card->frame;
    return bounds;
}

} // namespace

class BuddyArtistTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thereIsRoomForEverything_data()
    {
        columns<Act, double>("act", "after");
        row("at rest", nothing, 0.0);
        row("working", enter(Kind::working), 0.0);
        row("responding", enter(Kind::responding), 0.0);
        row("surprised", enter(Kind::surprised), 0.0);
        row("shaking with a badge", enter(Kind::notify), 0.0);
        row("hopping with a badge", enter(Kind::done), 0.0);
        row("petted", pet, 0.0);
        row("asleep", nothing, 300.0);
        row("meme", showMeme, 0.0);
        row("meme with hearts", both(showMeme, pet), 0.0);
        row("hopping meme", both(showMeme, enter(Kind::done)), 0.0);
    }
    void thereIsRoomForEverything()
    {
        QFETCH(Act, act);
        QFETCH(double, after);
        Studio studio(act);
        studio.pass(after, 0.1);
        for (int frame = 0; frame < 300; ++frame) {
            studio.pass(1.0 / 60);
            for (const auto& [scale, ratio] :
                { std::pair(0.5, 1.0), { 1.0, 1.15 }, { 3.0, 2.0 } }) {
                const auto bounds = boundsOf(studio.draw(scale, ratio));
                QVERIFY(QRect(QPoint(), studio.canvas.size()).contains(bounds));
            }
        }
    }

    void theFeetStayWhereTheyAreWhateverTheRoom()
    {
        Studio studio(nothing);
        const auto feet = [&] {
            const auto ground = studio.canvas.size();
            return studio.draw().parts.back().rect.translated(
                -ground.width() / 2, -ground.height());
        };
        studio.draw();
        const auto alone = feet();
        both(pet, showMeme)(studio.buddy);
        studio.pass(0.1);
        studio.draw();
        QCOMPARE(feet(), alone);
    }

    void theWordsStayOnTheScreen_data()
    {
        columns<BuddyReach, QRect>("reach", "fromTheFeet");
        const auto free = pillSize.height() + 78;
        row("in the middle", BuddyReach(), QRect(-95, -free, 190, 32));
        row("at the left edge", BuddyReach { .left = 56 }, QRect(-56, -free, 190, 32));
        row("at the right edge", BuddyReach { .right = 70 }, QRect(-120, -free, 190, 32));
        row("half over the edge", BuddyReach { .left = -10 }, QRect(0, -free, 190, 32));
        row("at the top", BuddyReach { .above = 90 }, QRect(-95, -90, 190, 32));
    }
    void theWordsStayOnTheScreen()
    {
        QFETCH(BuddyReach, reach);
        Studio studio(enter(Kind::notify));
        studio.pill.reach = reach;
        studio.pass(std::numbers::pi / 8);
        const auto badge = *studio.draw().badge;
        const auto size = studio.canvas.size();
        QVERIFY(QRect(QPoint(), size).contains(badge.rect));
        QTEST(badge.rect.translated(-size.width() / 2, -size.height()), "fromTheFeet");
    }

    void onlyTheBuddyItselfTakesClicks()
    {
        Studio studio(both(enter(Kind::working), pet));
        studio.pass(1);
        BuddyShape shape;
        studio.draw().outline(shape);
        QVERIFY(shape.seen.size() > studio.drawing.stamps.size());
        QCOMPARE(shape.pressable.size(), studio.drawing.parts.size());
    }

    void aQuietBuddyIsSeldomDrawnAnew()
    {
        // Breathing and blinking, and asleep.
        for (const auto& [after, most] : { std::pair(0.0, 240), { 320.0, 120 } }) {
            Studio studio(nothing);
            studio.pass(after, 1.0 / 15);
            auto changes = 0;
            auto before = studio.draw();
            for (int frame = 0; frame < 60 * 15; ++frame) {
                studio.pass(1.0 / 15, 1.0 / 15);
                changes += studio.draw() == before ? 0 : 1;
                before = studio.drawing;
            }
            QVERIFY(changes >= 60 && changes <= most);
        }
    }

    void theRainIsThinAndKeepsToItsColumns()
    {
        Studio studio(enter(Kind::working));
        studio.pass(5);
        const auto& rain = studio.draw().rain;
        std::set<int> columns;
        for (const auto& drop : rain.drops) {
            columns.insert(drop.column);
            QVERIFY(drop.level >= 0 && drop.level < BuddyRain::levels);
            QVERIFY(QRect(QPoint(), studio.canvas.size()).contains(rain.place(drop)));
        }
        QVERIFY(std::ssize(columns) > 6);
        const auto drawn = rain.drops;
        QVERIFY(studio.draw().rain.drops == drawn);
        studio.pass(1);
        QVERIFY(studio.draw().rain.drops != drawn);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::BuddyArtistTest)
#include "BuddyArtistTest.moc"
