#include "memes/MemeDesk.h"

#include "support/Awaited.h"
#include "support/PlainPictures.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

namespace pobblewig {

namespace {

struct Fixture {
    ScratchDirectory scratch;
    DataDirectory directory { scratch };
    std::optional<MemeLibrary> library;
    std::optional<MemeDesk> desk;

    Fixture()
    {
        directory.path = QDir(scratch.path().filePath(u"memes"_s));
        library.emplace(directory, std::nullopt, std::make_shared<PlainPictures>());
        desk.emplace(*library, directory);
        putPicture(directory.path, u"a.png"_s);
        putManifest(directory.path,
            { { .file = u"a.png"_s, .emotions = { u"sad"_s, u"default"_s }, .weight = 2 } });
        awaited(library->reload());
    }

    MemeManifestEntry entry(const QString& folder, const QString& file) const
    {
        const auto entries = library->folderEntries(folder);
        const auto found = std::ranges::find(entries, file, &MemeManifestEntry::file);
        return found == entries.end() ? MemeManifestEntry() : *found;
    }
};

} // namespace

class MemeDeskTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFolderNeedsAUsableNewName_data()
    {
        columns<QString, bool>("name", "isMade");
        row("plain", u" Pets "_s, true);
        row("no letter", u"!!"_s, false);
        row("out of the directory", u"../Pets"_s, false);
        row("hidden", u".pets"_s, false);
        row("taken", u"Old"_s, false);
        row("taken in other case", u"OLD"_s, false);
        row("endless", QString(41, u'x'), false);
    }
    void aFolderNeedsAUsableNewName()
    {
        QFETCH(QString, name);
        QFETCH(bool, isMade);
        Fixture world;
        QVERIFY(awaited(world.desk->makeFolder(u"Old"_s)));
        QCOMPARE(awaited(world.desk->makeFolder(name)).has_value(), isMade);
        QCOMPARE(world.library->folders().size(), isMade ? 3u : 2u);
    }

    void picturesAreAddedUnderFreeNamesAndTagged()
    {
        Fixture world;
        const auto mine = MemeFolders::defaultFolderID;
        putPicture(world.scratch.path(), u"a.png"_s, 9);
        world.scratch.write(u"notes.png"_s, "no picture");
        QVERIFY(awaited(world.desk->addFiles(mine, { world.scratch.path(u"a.png"_s) })));
        QVERIFY(!awaited(world.desk->addFiles(mine, { world.scratch.path(u"notes.png"_s) })));
        QImage pasted(3, 3, QImage::Format_ARGB32);
        pasted.fill(Qt::blue);
        QVERIFY(awaited(world.desk->addPicture(mine, pasted, QDate(2026, 3, 1))));
        QCOMPARE(world.library->userEntries().size(), 3u);
        QVERIFY(awaited(world.desk->change(
            mine, { .file = u"pasted-2026-03-01.png"_s, .emotions = { u"smug"_s } })));
        QVERIFY(world.library->pick(MemeEmotion::smug, {}, [] { return 0.5; }));
        QVERIFY(awaited(world.desk->setFolderEnabled(mine, false)));
        QVERIFY(world.library->isEmpty());
    }

    void aSlotHasOneMeme()
    {
        Fixture world;
        QVERIFY(awaited(world.desk->makeFolder(u"Pets"_s)));
        putPicture(QDir(world.directory.path.filePath(u"Pets"_s)), u"b.png"_s);
        QVERIFY(awaited(world.desk->change(
            u"pets"_s, { .file = u"b.png"_s, .emotions = { u"default"_s, u"odd tag"_s } })));
        QCOMPARE(world.library->mascotMemes().at(MemeMascotSlot::byDefault).id, u"b.png"_s);
        QCOMPARE(world.entry(MemeFolders::defaultFolderID, u"a.png"_s).emotions.size(), 1u);
        QCOMPARE(world.entry(u"pets"_s, u"b.png"_s).emotions.back(), u"odd tag"_s);
    }

    void whatWasRemovedComesBackAsItWas()
    {
        Fixture world;
        const auto mine = MemeFolders::defaultFolderID;
        const auto before = world.entry(mine, u"a.png"_s);
        const auto removed = awaited(world.desk->remove(mine, u"a.png"_s));
        QVERIFY(removed);
        QVERIFY(!QFileInfo::exists(removed->path));
        QVERIFY(world.library->userEntries().empty());
        QVERIFY(awaited(world.desk->restore(*removed)));
        QCOMPARE(world.entry(mine, u"a.png"_s), before);
        QCOMPARE(world.library->count(), 1);
    }

    void whatCannotBeReadOrIsAPackStaysAsItIs()
    {
        Fixture world;
        const auto mine = MemeFolders::defaultFolderID;
        const QDir pack(world.directory.path.filePath(u"Community/Pack"_s));
        putPicture(pack, u"p.png"_s);
        putManifestText(world.directory.path, "{ my own, half done");
        awaited(world.library->reload());
        const MemeManifestEntry entry { .file = u"a.png"_s, .emotions = {} };
        QVERIFY(!awaited(world.desk->change(mine, entry)));
        QVERIFY(!awaited(world.desk->remove(mine, u"a.png"_s)));
        QVERIFY(!awaited(world.desk->addFiles(u"community/pack"_s, {})));
        QFile manifest(world.directory.path.filePath(u"memes.json"_s));
        QVERIFY(manifest.open(QIODevice::ReadOnly));
        QCOMPARE(manifest.readAll(), "{ my own, half done");
        QVERIFY(awaited(world.desk->setFolderEnabled(u"community/pack"_s, false)));
        QVERIFY(!world.library->folders().back().enabled);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MemeDeskTest)
#include "MemeDeskTest.moc"
