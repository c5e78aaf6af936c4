#include "memes/MemeEmotion.h"
#include "memes/MemeManifest.h"
#include "support/ScratchDirectory.h"

#include <QJsonDocument>
#include <QProcess>
#include <QTest>

#include <set>
#include <webp/demux.h>

using namespace pobblewig;

namespace {

/// The pixels of each frame; none if the bytes are no picture that fits the buddy's card.
std::vector<QByteArray> frames(const QByteArray& bytes)
{
    const WebPData data { reinterpret_cast<const uint8_t*>(bytes.data()), size_t(bytes.size()) };
    const std::unique_ptr<WebPAnimDecoder, decltype(&WebPAnimDecoderDelete)> decoder(
        WebPAnimDecoderNew(&data, nullptr), &WebPAnimDecoderDelete);
    WebPAnimInfo info {};
    std::vector<QByteArray> frames;
    if (decoder && WebPAnimDecoderGetInfo(decoder.get(), &info) && info.canvas_width == 248
        && info.canvas_height == 208) {
        uint8_t* pixels = nullptr;
        for (int end = 0; WebPAnimDecoderGetNext(decoder.get(), &pixels, &end);)
            frames.emplace_back(reinterpret_cast<const char*>(pixels), 248 * 208 * 4);
    }
    return frames;
}

} // namespace

class StarterMemesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachRunDrawsTheSameDifferentPicturesForAllEmotions()
    {
        const std::array<ScratchDirectory, 2> runs;
        for (const auto& run : runs)
            QCOMPARE(QProcess::execute(QStringLiteral(STARTER_MEMES), { run.path().path() }), 0);
        const auto json = QJsonDocument::fromJson(runs[0].read(QStringLiteral("memes.json")));
        const auto manifest = json::decode<MemeManifest>(json.object());
        QVERIFY(manifest);
        std::set<QByteArray> pictures;
        QStringList files { QStringLiteral("memes.json") };
        QStringList tags;
        for (const auto& entry : manifest->memes) {
            const auto bytes = runs[0].read(entry.file);
            const auto film = frames(bytes);
            QVERIFY2(!film.empty() && film.size() <= 120, qPrintable(entry.file));
            QVERIFY(film.size() == 1 || std::set(film.begin(), film.end()).size() > 1);
            QVERIFY2(pictures.insert(bytes).second, qPrintable(entry.file));
            QVERIFY2(runs[1].read(entry.file) == bytes, qPrintable(entry.file));
            files.append(entry.file);
            tags.append({ entry.emotions.begin(), entry.emotions.end() });
        }
        files.sort();
        QCOMPARE(files, runs[0].names());
        for (const auto emotion : MemeTags::emotions())
            QVERIFY2(tags.count(MemeTags::rawValue(emotion)) > 1, qPrintable(tags.join(u' ')));
    }
};

QTEST_GUILESS_MAIN(StarterMemesTest)

#include "StarterMemesTest.moc"
