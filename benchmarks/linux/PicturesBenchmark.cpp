// What it costs to decode pictures, beside what the usual decoders take for the pixels alone.

#include "Figure.h"
#include "LibavFrames.h"
#include "PobblewigLinux/pictures/PictureDecoder.h"
#include "SamplePictures.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryFile>

namespace pobblewig {

namespace {

constexpr int side = 256;
constexpr int frameCount = 40;
constexpr int pictureCount = 200;
constexpr int rounds = 21;

/// Rings around a point, in few colors, with nothing outside.
QImage rings(int x)
{
    QImage picture(side, side, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    for (int line = 0; line < side; ++line) {
        for (int column = 0; column < side; ++column) {
            const auto distance = int(std::hypot(column - x, line - side / 2));
            if (distance < side / 2)
                picture.setPixel(column, line, qRgb(distance, 255 - distance / 8 * 8, x / 8 * 8));
        }
    }
    return picture;
}

template <typename Measure>
double milliseconds(const Measure& measure)
{
    QElapsedTimer clock;
    clock.start();
    measure();
    return double(clock.nsecsElapsed()) / 1e6;
}

void demand(bool holds)
{
    if (!holds)
        qFatal("A picture was not decoded.");
}

template <typename Ours, typename Theirs>
void compare(const char* measured, const char* peer, double mostRatio, const Ours& ours,
    const Theirs& theirs)
{
    std::vector<double> times;
    std::vector<double> peerTimes;
    for (int round = 0; round < rounds; ++round) {
        times.push_back(milliseconds(ours));
        peerTimes.push_back(milliseconds(theirs));
    }
    Figure { .measured = measured,
        .value = median(times),
        .peer = peer,
        .peerValue = median(peerTimes),
        .mostRatio = mostRatio }
        .report();
}

void measureGIF()
{
    std::vector<SamplePictures::Frame> frames;
    for (int frame = 0; frame < frameCount; ++frame)
        frames.push_back({ .picture = rings(frame * side / frameCount), .disposal = 2 });
    const auto gif = SamplePictures::gif({ side, side }, frames);
    QTemporaryFile file;
    if (!file.open() || file.write(gif) != gif.size() || !file.flush())
        qFatal("There is no place for a file.");
    const PictureDecoder decoder;
    compare(
        "GIF of 40 frames of 256 px", "libav", 2.5,
        [&] { demand(decoder.decode(gif).has_value()); },
        [&] { demand(libavFrames(file.fileName()) == frameCount); });
}

void measurePNG()
{
    std::vector<QByteArray> files;
    for (int file = 0; file < pictureCount; ++file)
        files.push_back(SamplePictures::still(rings(file), "PNG"));
    const PictureDecoder decoder;
    compare(
        "200 PNGs of 256 px", "QImage", 1.5,
        [&] {
            for (const auto& file : files)
                demand(decoder.decode(file).has_value());
        },
        [&] {
            for (const auto& file : files)
                demand(!QImage::fromData(file, "PNG").isNull());
        });
}

} // namespace

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    pobblewig::measureGIF();
    pobblewig::measurePNG();
}
