#include "foundation/JSONFileStore.h"

#include "support/LogLines.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace pobblewig {

namespace {

struct Exam {
    QUuid id;
    QString title;
    std::optional<TimePoint> due;
    int credits = 5;

    bool operator==(const Exam&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("id", &Exam::id), required("title", &Exam::title),
            optional("due", &Exam::due), defaulted("credits", &Exam::credits) };
    }
};

const Exam exam { QUuid::fromString(u"5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10"),
    QStringLiteral("Größe 👩‍👩‍👧 \"quoted\"\n"),
    TimePoint(std::chrono::seconds(1772352900)), 3 };

const QByteArray examText = "{\n"
                            "    \"credits\": 3,\n"
                            "    \"due\": \"2026-03-01T08:15:00Z\",\n"
                            "    \"id\": \"5F0C7A2E-95B4-4B6E-9A55-0D9D3C6F1F10\",\n"
                            "    \"title\": \"Größe 👩‍👩‍👧 \\\"quoted\\\"\\n\"\n"
                            "}\n";

} // namespace

class JSONFileStoreTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_log.reset();
        m_log = std::make_unique<LogLines>();
    }

    void aRecordComesBackAndReadsWell()
    {
        const auto file = store();
        QVERIFY(file.save(exam));
        QCOMPARE(bytes(), examText);
        QVERIFY(file.load<Exam>() == exam);
    }

    void aMissingFileIsNothingAndSaysNothing()
    {
        QVERIFY(!store().load<Exam>());
        store().remove();
        QVERIFY(m_log->lines().isEmpty());
        QVERIFY(files().isEmpty());
    }

    void anEveryWayTruncatedFileIsKeptAside()
    {
        for (qsizetype length = 0; length < examText.size() - 1; ++length) {
            init();
            put(examText.first(length));
            QVERIFY(!store().load<Exam>());
            QCOMPARE(files(), QStringList(backupName()));
            QVERIFY(store().save(exam));
            QVERIFY(store().load<Exam>() == exam);
        }
    }

    void whatDoesNotDecodeIsNamedAndKeptAside_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("problem");
        const auto row = [](const char* name, QByteArray text, const char* problem) {
            QTest::newRow(name) << text << QString::fromLatin1(problem);
        };
        row("wrong type", "[]", "$: expected an object, found an array");
        row("missing", "{}", "$.id: missing");
        row("null for a required value", R"({"id": null})", "$.id: expected a UUID, found null");
        row("no UUID", R"({"id": "5f0c7a2e"})", "$.id: not a UUID");
        row("fraction", QByteArray(examText).replace("3,", "3.5,"),
            "$.credits: 3.5 is not an integer");
        row("out of range", QByteArray(examText).replace("3,", "3e9,"),
            "$.credits: 3000000000 is out of range");
        row("fractional second", QByteArray(examText).replace(":00Z", ":00.5Z"),
            "$.due: not a date such as 2026-03-01T08:15:00Z");
        row("nested too deep", QByteArray(129, '[') + QByteArray(129, ']'),
            "nested deeper than 128 levels");
    }
    void whatDoesNotDecodeIsNamedAndKeptAside()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, problem);
        put(text);
        QVERIFY(!store().load<Exam>());
        QCOMPARE(m_log->lines(),
            QStringList(QStringLiteral("buddy: corrupt store exams.json moved to %1: %2")
                            .arg(backupName(), problem)));
    }

    void absentAndNullKeepDefaultsAndUnknownKeysAreIgnored()
    {
        put(R"({"id": "5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10", "title": "", "due": null,
            "credits": null, "room": [1]})");
        const auto loaded = store().load<Exam>();
        QVERIFY(loaded);
        QCOMPARE(loaded->credits, 5);
        QVERIFY(!loaded->due);
    }

    void aSecondCorruptFileWithinTheSecondStays()
    {
        put("first");
        QVERIFY(!store().load<Exam>());
        put("second");
        QVERIFY(!store().load<Exam>());
        QCOMPARE(bytes(), QByteArray("second"));
        QCOMPARE(m_log->lines().size(), 2);
    }

    void aFileOfAHundredMegabytesIsNotRead()
    {
        put({});
        QVERIFY(QFile::resize(path(), 100 * 1024 * 1024));
        QVERIFY(!store().load<Exam>());
        QVERIFY(m_log->lines().value(0).endsWith(QStringLiteral("larger than 64 MiB")));
    }

    void aDirectoryInItsPlaceIsNothing()
    {
        QVERIFY(QDir().mkpath(path()));
        QVERIFY(!store().load<Exam>());
        QVERIFY(!store().save(exam));
        QVERIFY(m_log->lines().isEmpty());
    }

    void aFailedSaveShowsInTheHealthUntilOneSucceeds()
    {
        const DataDirectory directory { QDir(m_scratch->path()) };
        const JSONFileStore file(directory, QStringLiteral("exams.json"));
        QVERIFY(QDir().mkpath(path()));
        QVERIFY(!file.save(exam));
        QVERIFY(directory.health->problems.contains(path()));
        QVERIFY(QDir().rmdir(path()));
        QVERIFY(file.save(exam));
        QVERIFY(directory.health->problems.empty());
    }

    void anEarlyDirectoryIsRenamed_data()
    {
        QTest::addColumn<QStringList>("directories");
        QTest::addColumn<QStringList>("plainFiles");
        QTest::addColumn<QStringList>("after");
        const auto old = QStringLiteral("SkritBuddy");
        const auto current = QStringLiteral("Pobblewig");
        QTest::newRow("moved") << QStringList(old) << QStringList() << QStringList(current);
        QTest::newRow("both stay")
            << QStringList({ current, old }) << QStringList() << QStringList({ current, old });
        QTest::newRow("a file is left") << QStringList() << QStringList(old) << QStringList(old);
    }
    void anEarlyDirectoryIsRenamed()
    {
        QFETCH(QStringList, directories);
        QFETCH(QStringList, plainFiles);
        QFETCH(QStringList, after);
        const QDir base(m_scratch->path());
        for (const auto& name : directories)
            QVERIFY(base.mkpath(name));
        for (const auto& name : plainFiles)
            put({}, base.filePath(name));
        JSONFileStore::migrateLegacyDirectory(base);
        QCOMPARE(base.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name), after);
    }

private:
    JSONFileStore store() const
    {
        DataDirectory directory { QDir(m_scratch->path()) };
        directory.clock = [] { return TimePoint(std::chrono::seconds(1772352900)); };
        return { directory, QStringLiteral("exams.json") };
    }
    QString path() const { return m_scratch->filePath(QStringLiteral("exams.json")); }
    QString backupName() const { return QStringLiteral("exams.json.corrupt-2026-03-01T08-15-00Z"); }
    QStringList files() const
    {
        return QDir(m_scratch->path()).entryList(QDir::Files | QDir::Hidden);
    }
    QByteArray bytes() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void put(const QByteArray& text) const { put(text, path()); }
    static void put(const QByteArray& text, const QString& path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    std::unique_ptr<QTemporaryDir> m_scratch;
    std::unique_ptr<LogLines> m_log;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::JSONFileStoreTest)
#include "JSONFileStoreTest.moc"
