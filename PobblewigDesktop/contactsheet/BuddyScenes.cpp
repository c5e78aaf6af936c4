#include "PobblewigDesktop/contactsheet/BuddyScenes.h"

#include <QPainter>

#include <cmath>

namespace pobblewig {

namespace {

using Kind = BuddyState::Kind;
using Act = BuddyScene::Act;

constexpr double frameLength = 1.0 / 60;

Act enter(Kind kind, const QString& label = {})
{
    return [kind, label](BuddyAnimation& buddy, double now) {
        buddy.setState({ kind, label }, now);
    };
}

Act lookTo(QPointF pointer)
{
    return [pointer](BuddyAnimation& buddy, double) { buddy.mouseMoved(pointer, { 100, 100 }); };
}

/// A sunset, turning.
MemeAnimation sunset()
{
    std::vector<QImage> frames;
    constexpr int count = 12;
    for (int frame = 0; frame < count; ++frame) {
        QImage image(232, 192, QImage::Format_RGB32);
        QLinearGradient sky(0, 0, 0, image.height());
        sky.setColorAt(0, QColor(64, 48, 112));
        sky.setColorAt(1, QColor(248, 150, 96));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(image.rect(), sky);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 226, 150));
        const auto sink = 12 * std::sin(2 * M_PI * frame / count);
        painter.drawEllipse(QPointF(116, 112 + sink), 46, 46);
        painter.fillRect(0, 140, 232, 52, QColor(44, 30, 66));
        frames.push_back(image);
    }
    return { frames, std::vector(size_t(count), 0.12) };
}

double firstBlink()
{
    auto time = 0.0;
    while (!BuddyEyes::isBlinking(time))
        time += frameLength;
    return time + 2 * frameLength;
}

void carry(BuddyAnimation& buddy, double now)
{
    buddy.windowMoved({ 3, 0.5 * std::sin(now) }, now);
}

void lookAround(BuddyAnimation& buddy, double now)
{
    const auto turn = int(now * 2) % 3;
    buddy.mouseMoved(turn == 0 ? QPointF(0, 50) : QPointF(100, turn == 1 ? 0 : 100), { 100, 100 });
}

std::vector<BuddyScene> scenes()
{
    const Act nothing = [](BuddyAnimation&, double) {};
    const Act pet = [](BuddyAnimation& buddy, double now) { buddy.pet(now); };
    const Act drag = [](BuddyAnimation& buddy, double now) { buddy.beginDragging(now); };
    const Act meme = [](BuddyAnimation& buddy, double now) {
        buddy.showMeme(sunset(), BuddyMemes::displayDuration, now);
    };
    const auto report = QStringLiteral("Lab report due");
    return {
        { QStringLiteral("idle"), nothing, { 0.2, 1.08, firstBlink() } },
        { QStringLiteral("looking around"), lookTo({ 0, 50 }), { 0.2, 0.72, 1.2 }, lookAround },
        { QStringLiteral("responding"), enter(Kind::responding), { 0.7, 1.9 } },
        { QStringLiteral("surprised"), enter(Kind::surprised), { 0.4 } },
        { QStringLiteral("working"), enter(Kind::working), { 0.3, 3.3, 3.5 } },
        { QStringLiteral("reminding"), enter(Kind::notify, report), { 0.2, 0.45, 1.0 } },
        { QStringLiteral("reminding without words"), enter(Kind::notify), { 1.0 } },
        { QStringLiteral("done"), enter(Kind::done, QStringLiteral("Saved")),
            { 0.1, 0.35, 0.52, 2.0 } },
        { QStringLiteral("carried"), drag, { 0.1, 0.25, 0.4, 0.5 }, carry },
        { QStringLiteral("petted"), pet, { 0.3, 0.55, 0.7, 1.2, 1.7 } },
        { QStringLiteral("asleep"), nothing, { 306, 308.1, 309.6 } },
        { QStringLiteral("a meme"), meme, { 0.3, 0.8 } },
    };
}

struct Take {
    Act act;
    double seconds = 0;
    /// Before it, and not worth watching.
    double waiting = 0;
};

std::vector<Take> story()
{
    const Act nothing = [](BuddyAnimation&, double) {};
    const Act pet = [](BuddyAnimation& buddy, double now) { buddy.pet(now); };
    const Act lookAhead = [](BuddyAnimation& buddy, double) { buddy.mouseExited(); };
    return {
        { lookTo({ 0, 50 }), 1.2 },
        { lookTo({ 100, 0 }), 1.0 },
        { lookAhead, 0.8 },
        { pet, 2.4 },
        { enter(Kind::working), 4.5 },
        { enter(Kind::done, QStringLiteral("Notes saved")), 3.2 },
        { enter(Kind::notify, QStringLiteral("Lab report due")), 2.4 },
        { enter(Kind::idle), 0.8 },
        { nothing, 8, BuddySleep::usualDelay },
    };
}

} // namespace

const std::vector<BuddyScene>& BuddyScenes::all()
{
    static const auto all = scenes();
    return all;
}

std::vector<BuddyFrame> BuddyScenes::frames(const BuddyScene& scene)
{
    BuddyAnimation buddy(0);
    scene.begin(buddy, 0);
    std::vector<BuddyFrame> frames;
    auto now = 0.0;
    for (const auto moment : scene.moments) {
        for (; now < moment; now += frameLength) {
            if (scene.goOn)
                scene.goOn(buddy, now);
            buddy.tick(now);
        }
        frames.push_back(buddy.frame(now));
    }
    return frames;
}

std::vector<BuddyFrame> BuddyScenes::film(int framesASecond)
{
    BuddyAnimation buddy(0);
    std::vector<BuddyFrame> frames;
    auto now = 0.0;
    const auto pass = [&](double seconds, bool isFilmed) {
        for (const auto end = now + seconds; now < end; now += 1.0 / framesASecond) {
            buddy.tick(now);
            if (isFilmed)
                frames.push_back(buddy.frame(now));
        }
    };
    for (const auto& take : story()) {
        pass(take.waiting, false);
        take.act(buddy, now);
        pass(take.seconds, true);
    }
    return frames;
}

} // namespace pobblewig
