#include "PobblewigLinux/pictures/PictureDecoder.h"

#include "PobblewigLinux/modules/LatePictureDecoder.h"
#include "PobblewigLinux/pictures/PNGChunks.h"
#include "SamplePictures.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

#include <QtConcurrentMap>

namespace pobblewig {

using namespace SamplePictures;
using Problem = MemePictureProblem;

class PictureDecoderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFramesAreThoseThatABrowserShows_data()
    {
        columns<QByteArray, QString>("file", "shown");
        const auto p = [](const char* rows) { return picture(QString::fromLatin1(rows)); };
        row("no delay, too short, its own",
            gif({ 2, 1 }, { { p("rg"), 0 }, { p("gr"), 1 }, { p("bb"), 5 } }),
            u"rg 0.10 gr 0.02 bb 0.05"_s);
        row("GIF over what was there", gif({ 3, 1 }, { { p("rrr") }, { p("g."), 10, { 1, 0 } } }),
            u"rrr 0.10 rgr 0.10"_s);
        row("GIF cleared", gif({ 3, 1 }, { { p("rr"), 10, { 1, 0 }, 2 }, { p("g") } }),
            u".rr 0.10 g.. 0.10"_s);
        row("GIF restored",
            gif({ 3, 1 }, { { p("rrr") }, { p("gg"), 10, {}, 3 }, { p("b"), 10, { 1, 0 } } }),
            u"rrr 0.10 ggr 0.10 rbr 0.10"_s);
        row("GIF beyond its canvas",
            gif({ 2, 1 }, { { p("rg/bb"), 10, { 1, 0 } }, { p("g"), 10, { 2, 1 } } }),
            u".r 0.10 .r 0.10"_s);
        row("interlaced GIF", gif({ 1, 5 }, { { p("r/g/b/k/w") } }, Lines::interlaced),
            u"r/g/b/k/w 0.10"_s);
        row("APNG over what was there",
            apng({ 3, 1 }, { { p("rrr"), 0 }, { p("g."), 1, { 1, 0 } } }), u"rrr 0.10 rgr 0.02"_s);
        row("APNG in place of what was there",
            apng({ 3, 1 }, { { p("rrr") }, { p("g."), 7, { 1, 0 }, 0, false } }),
            u"rrr 0.10 rg. 0.07"_s);
        row("APNG cleared and restored",
            apng({ 2, 1 },
                { { p("rr"), 10, {}, 1 }, { p("g"), 10, {}, 2 }, { p("b"), 10, { 1, 0 } } }),
            u"rr 0.10 g. 0.10 .b 0.10"_s);
        row("APNG with another still", apng({ 1, 1 }, { { p("g") }, { p("b") } }, p("r")),
            u"g 0.10 b 0.10"_s);
        row("animated WebP", webp({ 2, 1 }, { { p("rg"), 1 }, { p("r."), 4 }, { p("bg"), 25 } }),
            u"rg 0.02 r. 0.04 bg 0.25"_s);
        row("deep PNG", still(p("rh/.b").convertToFormat(QImage::Format_RGBA64), "PNG"),
            u"rh/.b 0.10"_s);
        row("PNG with a palette", still(p("r./.b").convertToFormat(QImage::Format_Indexed8), "PNG"),
            u"r./.b 0.10"_s);
        row("WebP", still(p("rg/.b"), "WEBP"), u"rg/.b 0.10"_s);
        row("JPEG in inks", inkJPEG(p("rg/bw").scaled(64, 64)), u"rg/bw 0.10"_s);
        const char* const held[] { "rb/gw", "br/wg", "wg/br", "gw/rb", "rg/bw", "gr/wb", "wb/gr",
            "bw/rg" };
        for (char orientation = 1; orientation <= 8; ++orientation)
            row(held[orientation - 1], heldJPEG(p("rb/gw").scaled(64, 64), orientation),
                QString::fromLatin1(held[orientation - 1]) + u" 0.10"_s);
    }
    void theFramesAreThoseThatABrowserShows()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, shown);
        const auto animation = PictureDecoder().decode(file);
        QVERIFY(animation);
        QStringList told;
        for (size_t index = 0; index < animation->frames().size(); ++index) {
            const auto& frame = animation->frames()[index];
            QCOMPARE(frame.format(), PictureReel::format);
            const auto scale = frame.width() < 32 ? 1 : 32;
            told << rows(frame.scaled(frame.size() / scale))
                 << QString::number(animation->durations()[index], 'f', 2);
        }
        QCOMPARE(told.join(u' '), shown);
    }

    void picturesAreMadeSmallAndFramesAreCounted()
    {
        const QImage wide = picture(u"rg"_s).scaled(4000, 100);
        for (const auto& file : { still(wide, "PNG"), still(wide, "JPG"), still(wide, "WEBP"),
                 gif(wide.size(), { { wide } }),
                 webp(wide.size(), { { wide }, { wide.mirrored(true, false) } }) }) {
            const auto animation = PictureDecoder().decode(file);
            QVERIFY(animation);
            const auto& frame = animation->frames().front();
            QCOMPARE(frame.size(), QSize(512, 13));
            QCOMPARE(rows(frame.copy(0, 6, 1, 1)) + rows(frame.copy(511, 6, 1, 1)), u"rg"_s);
        }
        const std::vector<Frame> many(200, { picture(u"r"_s) });
        for (const auto& file : { gif({ 1, 1 }, many), apng({ 1, 1 }, many) })
            QCOMPARE(PictureDecoder().decode(file)->frames().size(), 120u);
    }

    void aFileThatIsCutOffIsBroken()
    {
        for (const auto& [name, file] : all()) {
            QVERIFY2(PictureDecoder().decode(file), qPrintable(name));
            for (auto length = file.size() - 1; length > 12; --length) {
                const auto result = PictureDecoder().decode(file.first(length));
                QVERIFY2(!result, qPrintable(u"%1 of %2 bytes"_s.arg(name).arg(length)));
                QCOMPARE(result.error(), Problem::broken);
            }
        }
    }

    void whatCannotBeShownSaysWhy_data()
    {
        columns<QByteArray, Problem>("file", "problem");
        const auto red = picture(u"r"_s);
        const auto apng = [&](QSize canvas, QPoint at) {
            return SamplePictures::apng(canvas, { { red, 10, at } });
        };
        const auto without = [&](QByteArrayView name) {
            const auto whole = SamplePictures::apng({ 1, 1 }, { { red }, { red } });
            auto rest = PNGChunks::signature.toByteArray();
            PNGChunks chunks(whole);
            while (const auto chunk = chunks.next())
                rest += chunk->name == name ? QByteArray() : PNGChunks::written(*chunk);
            return rest;
        };
        row("text", QByteArray("GIF88a of a cat"), Problem::notAPicture);
        row("nothing", QByteArray(), Problem::notAPicture);
        row("GIF without a frame", gif({ 1, 1 }, {}), Problem::broken);
        row("GIF without pixels", gif({ 0, 9 }, { { red } }), Problem::broken);
        row("huge GIF", gif({ 65535, 65535 }, { { red } }), Problem::tooLarge);
        row("GIF of large frames", gif({ 500, 500 }, std::vector<Frame>(9, { red })),
            Problem::tooLarge);
        row("huge APNG", apng({ 1 << 30, 1 << 30 }, { 0, 0 }), Problem::tooLarge);
        row("APNG beyond its canvas", apng({ 1, 1 }, { 1, 0 }), Problem::broken);
        row("APNG far beyond its canvas", apng({ 9, 9 }, { -1, 0 }), Problem::broken);
        row("APNG without the pixels of a frame", without("fdAT"), Problem::broken);
        row("APNG without what places them", without("fcTL"), Problem::broken);
        row("PNG without pixels", without("IDAT"), Problem::broken);
        row("huge WebP",
            QByteArray::fromHex("52494646160000005745425056503858"
                                "0a00000002000000ff3f00ff3f00"),
            Problem::tooLarge);
        row("JPEG of many scans",
            still(red.scaled(500, 500), "JPG") + QByteArray("\xff\xda").repeated(40),
            Problem::tooLarge);
    }
    void whatCannotBeShownSaysWhy()
    {
        QFETCH(QByteArray, file);
        QFETCH(Problem, problem);
        const PictureDecoder decoder({ .canvas = 1'000'000, .work = 2'000'000 });
        const auto result = decoder.decode(file);
        QVERIFY(!result);
        QCOMPARE(result.error(), problem);
    }

    void theModuleIsUsedOnceItIsPrepared()
    {
        LatePictureDecoder decoder;
        const auto file = all().at(u"gif"_s);
        QCOMPARE(decoder.decode(file).error(), Problem::noDecoder);
        QCOMPARE(decoder.prepare(), std::nullopt);
        std::vector<size_t> counts(64);
        QtConcurrent::blockingMap(
            counts, [&](size_t& count) { count = decoder.decode(file)->frames().size(); });
        QCOMPARE(std::ranges::count(counts, 3u), 64);
    }

    void withoutTheModuleThereIsNoDecoder()
    {
        const ScratchDirectory empty;
        LatePictureDecoder decoder(ModuleLoader({ empty.path().path() }));
        QVERIFY(decoder.prepare()->contains(u"“pictures” is not installed"_s));
        QCOMPARE(decoder.decode(all().at(u"gif"_s)).error(), Problem::noDecoder);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::PictureDecoderTest)
#include "PictureDecoderTest.moc"
