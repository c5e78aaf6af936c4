#include "memes/MemeLibrary.h"

#include "memes/MemeStarterFiles.h"
#include "support/Awaited.h"
#include "support/LogLines.h"
#include "support/PlainPictures.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

#include <sys/stat.h>

namespace pobblewig {

namespace {

/// A library in a scratch directory, with memes that come with the program.
struct Fixture {
    ScratchDirectory scratch;
    QDir user { scratch.path().filePath(u"memes"_s) };
    QDir bundled { scratch.path().filePath(u"bundled"_s) };
    std::shared_ptr<PlainPictures> pictures = std::make_shared<PlainPictures>();
    std::unique_ptr<MemeLibrary> library;

    Fixture()
    {
        bundled.mkpath(u"."_s);
        DataDirectory directory = scratch;
        directory.path = user;
        library = std::make_unique<MemeLibrary>(directory, bundled, pictures);
    }

    /// Puts a picture with its entry into a folder, in place of the entries there.
    void put(const QString& folder, const QString& file, const std::vector<QString>& tags,
        std::optional<double> weight = std::nullopt)
    {
        const QDir directory(user.filePath(folder));
        putPicture(directory, file);
        putManifest(directory, { { .file = file, .emotions = tags, .weight = weight } });
    }

    const Meme* meme(const QString& id) const
    {
        const auto found = std::ranges::find(library->memes(), id, &Meme::id);
        return found == library->memes().end() ? nullptr : &*found;
    }

    std::optional<QString> picked(MemeEmotion emotion, double random, const char* without = nullptr)
    {
        const auto excluded = without ? std::optional(QString::fromLatin1(without)) : std::nullopt;
        const auto meme = library->pick(emotion, excluded, [=] { return random; });
        return meme ? std::optional(meme->id) : std::nullopt;
    }
};

} // namespace

class MemeLibraryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theUsersFilesAreNeverReplaced()
    {
        const Fixture world;
        QFile readme(world.user.filePath(u"README.txt"_s));
        QVERIFY(readme.open(QIODevice::ReadWrite));
        const auto text = QString::fromUtf8(readme.readAll());
        QCOMPARE(text, MemeStarterFiles::curationReadme());
        QVERIFY(text.contains(
            u"EMOTION TAGS (pick from these exactly):\n- amused: something genuinely funny"_s));
        QVERIFY(text.contains(u"protective resolve\n\nNOTES\n"_s));
        readme.resize(0);
        MemeStarterFiles::seed(world.user, FileOperations());
        QCOMPARE(readme.size(), 0);
    }

    void anEntryIsAMemeOrSaysWhyNot_data()
    {
        using Tags = std::vector<QString>;
        columns<Tags, double, QString>("tags", "weight", "issue");
        row("tagged", Tags { u"sad"_s }, 0.5, QString());
        row("only for a slot", Tags { u"sleeping"_s }, 1.0, QString());
        row("an unknown tag beside", Tags { u"sad"_s, u"Sad"_s }, 1.0, QString());
        row("no tag", Tags(), 1.0, u"Pets/a.png: no known emotion tag"_s);
        row("unknown tags", Tags { u"Sad"_s, u"x"_s }, 1.0,
            u"Pets/a.png: no known emotion tag (got: Sad, x)"_s);
        row("no weight", Tags { u"sad"_s }, 0.0, u"Pets/a.png: weight must be positive"_s);
    }
    void anEntryIsAMemeOrSaysWhyNot()
    {
        QFETCH(std::vector<QString>, tags);
        QFETCH(double, weight);
        QFETCH(QString, issue);
        Fixture world;
        world.put(u"Pets"_s, u"a.png"_s, tags, weight);
        awaited(world.library->reload());
        QCOMPARE(world.library->count(), issue.isEmpty() ? 1 : 0);
        QCOMPARE(world.library->issues(), issue.isEmpty() ? QStringList() : QStringList { issue });
    }

    void aBrokenFolderSpoilsNothingElse()
    {
        Fixture world;
        world.put(u"."_s, u"a.png"_s, { u"sad"_s });
        putManifestText(QDir(world.user.filePath(u"Broken"_s)), "{");
        putPicture(QDir(world.user.filePath(u"Broken"_s)), u"loose_cat-face.png"_s);
        putManifest(QDir(world.user.filePath(u"Away"_s)),
            { { .file = u"gone.gif"_s, .emotions = { u"sad"_s } },
                { .file = u"../a.png"_s, .emotions = { u"sad"_s } },
                { .file = u"pipe.gif"_s, .emotions = { u"sad"_s } } });
        QVERIFY(::mkfifo(qPrintable(world.user.filePath(u"Away/pipe.gif"_s)), 0600) == 0);
        QDir().mkdir(world.user.filePath(u"!!"_s));
        const LogLines log;
        awaited(world.library->reload());
        QCOMPARE(world.library->count(), 1);
        QCOMPARE(world.library->skippedCount(), 5);
        QVERIFY(world.library->issues().filter(u"Broken/memes.json: unreadable manifest"_s).size());
        QCOMPARE(world.library->issues().filter(u"missing or undecodable image"_s).size(), 3);
        QVERIFY(
            log.lines().contains(u"buddy: meme library: ignoring folder with unusable name !!"_s));
        const auto loose = world.library->folderEntries(u"broken"_s);
        QCOMPARE(loose.size(), 1u);
        QCOMPARE(*loose.front().name, u"Loose cat face"_s);
        QCOMPARE(world.library->summaryLine(), u"1 memes · 5 skipped"_s);
    }

    void ofEqualNamesTheNearestFolderWins()
    {
        Fixture world;
        putPicture(world.bundled, u"a.png"_s);
        putManifest(world.bundled, { { .file = u"a.png"_s, .emotions = { u"sad"_s } } });
        world.put(u"community/Pack"_s, u"a.png"_s, { u"smug"_s, u"default"_s });
        awaited(world.library->reload());
        QCOMPARE(world.meme(u"a.png"_s)->folderID, u"community/pack"_s);
        QVERIFY(world.library->mascotMemes().empty());
        world.put(u"My Memes"_s, u"a.png"_s, { u"amused"_s });
        awaited(world.library->reload());
        QCOMPARE(world.meme(u"a.png"_s)->folderID, u"my-memes-2"_s);
        world.put(u"."_s, u"a.png"_s, { u"shocked"_s, u"sleeping"_s });
        awaited(world.library->reload());
        QCOMPARE(world.meme(u"a.png"_s)->folderID, MemeFolders::defaultFolderID);
        QVERIFY(world.library->mascotMemes().contains(MemeMascotSlot::sleeping));
        QCOMPARE(world.library->folders().size(), 3u);
    }

    void aSwitchedOffFolderGivesNothing()
    {
        Fixture world;
        putPicture(world.bundled, u"b.png"_s);
        putManifest(world.bundled, { { .file = u"b.png"_s, .emotions = { u"sad"_s } } });
        world.put(u"."_s, u"a.png"_s, { u"sad"_s });
        world.put(u"Pets"_s, u"c.png"_s, { u"sad"_s });
        QFile switches(world.user.filePath(u"folders.json"_s));
        QVERIFY(switches.open(QIODevice::WriteOnly));
        FolderSettings settings;
        settings.setEnabled(MemeFolders::defaultFolderID, false);
        switches.write(json::text(settings));
        switches.close();
        awaited(world.library->reload());
        QCOMPARE(world.library->count(), 1);
        QVERIFY(world.meme(u"c.png"_s));
        QVERIFY(!world.library->folders().front().enabled);
    }

    void handEditsAreSeenAndNothingElseIsReadAgain()
    {
        Fixture world;
        world.put(u"Pets"_s, u"a.png"_s, { u"sad"_s });
        world.put(u"Other"_s, u"b.png"_s, { u"sad"_s });
        QCOMPARE(world.library->summaryLine(), u"…"_s);
        awaited(world.library->reloadIfChanged());
        awaited(world.library->reloadIfChanged());
        QCOMPARE(world.library->scanCount(), 1);
        QCOMPARE(world.pictures->decoded.load(), 2);
        putPicture(QDir(world.user.filePath(u"Pets"_s)), u"new.png"_s);
        awaited(world.library->reloadIfChanged());
        QCOMPARE(world.library->scanCount(), 2);
        QCOMPARE(world.library->folderEntries(u"pets"_s).size(), 2u);
        QCOMPARE(world.library->skippedCount(), 1);
        QCOMPARE(world.pictures->decoded.load(), 2);
        awaited(world.library->reload());
        QCOMPARE(world.library->scanCount(), 3);
    }

    void scansThatOverlapComeOneAfterTheOther()
    {
        Fixture world;
        world.put(u"Pets"_s, u"a.png"_s, { u"sad"_s });
        auto first = world.library->reload();
        auto second = world.library->reload();
        world.put(u"Pets"_s, u"b.png"_s, { u"sad"_s });
        awaited(std::move(second));
        awaited(std::move(first));
        awaited(world.library->reloadIfChanged());
        QVERIFY(world.meme(u"b.png"_s));
        QVERIFY(!world.meme(u"a.png"_s));
        auto left = world.library->reload();
        world.library.reset();
    }

    void whatDoesNotFitIntoMemoryRests()
    {
        Fixture world;
        std::vector<MemeManifestEntry> entries;
        for (int number = 0; number < 5; ++number) {
            const auto file = u"%1.png"_s.arg(number);
            putPicture(world.user, file, 2048, 2048);
            entries.push_back({ .file = file, .emotions = { u"sad"_s } });
        }
        putManifest(world.user, entries);
        awaited(world.library->reload());
        qint64 bytes = 0;
        for (const auto& meme : world.library->memes())
            bytes += MemePictures::bytes(meme.animation);
        QVERIFY(bytes < MemePictureShelf::mostDecodedBytes + 5 * 48 * 48 * 4);
        const auto resting = std::ranges::find_if(
            world.library->memes(), [](const Meme& meme) { return meme.resting.has_value(); });
        QVERIFY(resting != world.library->memes().end());
        QCOMPARE(awaited(world.library->animation(*resting)).frames().front().width(), 2048);
    }

    void aPickFollowsTheWeights()
    {
        Fixture world;
        world.put(u"A"_s, u"a.png"_s, { u"sad"_s });
        world.put(u"B"_s, u"b.png"_s, { u"sad"_s, u"smug"_s }, 3);
        awaited(world.library->reload());
        using enum MemeEmotion;
        QCOMPARE(world.picked(sad, 0.2), u"a.png"_s);
        QCOMPARE(world.picked(sad, 0.3), u"b.png"_s);
        QCOMPARE(world.picked(sad, 1.0), u"b.png"_s);
        QCOMPARE(world.picked(sad, 0.9, "b.png"), u"a.png"_s);
        QCOMPARE(world.picked(smug, 0.9, "b.png"), u"b.png"_s);
        QVERIFY(!world.picked(amused, 0.5));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemeLibraryTest)
#include "MemeLibraryTest.moc"
