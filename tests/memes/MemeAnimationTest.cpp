#include "memes/MemeAnimation.h"

#include "support/TableRow.h"

namespace pobblewig {

class MemeAnimationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFrameIsSeenForItsDuration_data()
    {
        columns<std::vector<double>, double, int>("durations", "at", "width");
        const std::vector uneven { 0.25, 0.5, 0.25 };
        row("at the start", uneven, 0.0, 1);
        row("the moment a frame ends", uneven, 0.25, 2);
        row("just before the next", uneven, 0.74, 2);
        row("the last", uneven, 0.99, 3);
        row("again from the start", uneven, 7.1, 1);
        row("no time at all: the last, once the first millisecond is over",
            std::vector { 0.0, 0.0 }, 0.0005, 2);
        row("still", std::vector { 0.1 }, 99.0, 1);
    }
    void aFrameIsSeenForItsDuration()
    {
        QFETCH(std::vector<double>, durations);
        QFETCH(double, at);
        std::vector<QImage> frames;
        for (int width = 1; width <= std::ssize(durations); ++width)
            frames.emplace_back(width, 1, QImage::Format_ARGB32_Premultiplied);
        QTEST(MemeAnimation(frames, durations).frame(at).width(), "width");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemeAnimationTest)
#include "MemeAnimationTest.moc"
