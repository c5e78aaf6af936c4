#include "PobblewigDesktop/buddy/BuddyPainter.h"

#include "buddy/BuddyAnimation.h"
#include "buddy/BuddyArtist.h"
#include "support/AllocationCount.h"
#include "support/TableRow.h"

#include <QPainter>

namespace pobblewig {

namespace {

using Kind = BuddyState::Kind;
using Act = std::function<void(BuddyAnimation&, double)>;

} // namespace

class BuddyPainterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFrameAllocatesNothingOnceTheCachesAreWarm_data()
    {
        QTest::addColumn<Act>("act");
        QTest::addColumn<double>("seconds");
        const auto enter = [](Kind kind) {
            return Act([kind](BuddyAnimation& buddy, double now) {
                buddy.setState({ kind, QStringLiteral("Lab report") }, now);
            });
        };
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::red);
        const MemeAnimation meme({ picture, picture.mirrored() }, { 0.1, 0.1 });
        row("breathing and blinking", enter(Kind::idle), 30.0);
        row("asleep", enter(Kind::idle), 330.0);
        row("in the rain", enter(Kind::working), 60.0);
        row("shaking with a badge", enter(Kind::notify), 10.0);
        row("petted", Act([](BuddyAnimation& buddy, double now) { buddy.pet(now); }), 3.0);
        row("meme", Act([meme](BuddyAnimation& buddy, double now) {
            buddy.setDefaultMeme(BuddyMeme { {}, meme }, now);
        }),
            3.0);
    }
    void aFrameAllocatesNothingOnceTheCachesAreWarm()
    {
        QFETCH(Act, act);
        QFETCH(double, seconds);
        BuddyArtist artist(MascotSprite::forID(u"mouse"));
        BuddyPainter buddyPainter;
        BuddyDrawing drawing;
        BuddyShape shape;
        QImage screen(900, 900, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&screen);
        const auto live = [&](double start) {
            BuddyAnimation buddy(start);
            act(buddy, start);
            for (auto now = start; now < start + seconds; now += 1.0 / 20) {
                buddy.tick(now);
                const auto frame = buddy.frame(now);
                const BuddyPill pill { frame.badge ? buddyPainter.pillSize(*frame.badge)
                                                   : QSize() };
                auto canvas = BuddyCanvas::ofScale(1, 2);
                canvas.room = BuddyArtist::room(frame, canvas.cell, pill);
                artist.draw(frame, canvas, pill, drawing);
                drawing.outline(shape);
                buddyPainter.paint(painter, drawing);
            }
        };
        const auto cold = AllocationCount::during([&] { live(0); });
        const auto warm = AllocationCount::during([&] { live(0); });
        if (!cold || !warm)
            QSKIP("Only a build with sanitizers counts allocations.");
        // The worn meme itself, once.
        QVERIFY2(*warm <= 2, qPrintable(QString::number(*warm)));
        QVERIFY(*cold > *warm);
    }
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::BuddyPainterTest)
#include "BuddyPainterTest.moc"
