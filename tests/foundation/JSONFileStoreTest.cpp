#include "foundation/JSONFileStore.h"

#include "support/LogLines.h"
#include "support/TableRow.h"

#include <QTemporaryDir>

namespace pobblewig {

namespace {

constexpr TimePoint now { std::chrono::seconds(1772352900) };

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
    QStringLiteral("Größe 👩‍👩‍👧 \"quoted\"\n"), now, 3 };

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
        QVERIFY(store().save(exam));
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), examText);
        QVERIFY(store().load<Exam>() == exam);
    }

    void aMissingFileIsNothingAndSaysNothing()
    {
        QVERIFY(!store().load<Exam>());
        store().remove();
        QVERIFY(m_log->lines().isEmpty());
    }

    void anEveryWayTruncatedFileIsKeptAside()
    {
        for (qsizetype length = 0; length < examText.size() - 1; ++length) {
            init();
            put(examText.first(length));
            QVERIFY(!store().load<Exam>());
            QCOMPARE(names(), QStringList(m_backupName));
            QVERIFY(store().save(exam));
            QVERIFY(store().load<Exam>() == exam);
        }
    }

    void whatDoesNotDecodeIsNamedAndKeptAside_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("problem");
        const auto with = [](const char* before, const char* after) {
            return QByteArray(examText).replace(before, after);
        };
        const auto deep = QByteArray(129, '[') + QByteArray(129, ']');
        row("wrong type", QByteArray("[]"), "$: expected an object, found an array");
        row("missing", QByteArray("{}"), "$.id: missing");
        row("null for a required value", QByteArray(R"({"id": null})"),
            "$.id: expected a UUID, found null");
        row("no UUID", with("5F0C7A2E-", ""), "$.id: not a UUID");
        row("fraction", with("3,", "3.5,"), "$.credits: 3.5 is not an integer");
        row("out of range", with("3,", "3e9,"), "$.credits: 3000000000 is out of range");
        row("fractional second", with(":00Z", ":00.5Z"),
            "$.due: not a date such as 2026-03-01T08:15:00Z");
        row("nested too deep", deep, "nested deeper than 128 levels");
    }
    void whatDoesNotDecodeIsNamedAndKeptAside()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, problem);
        put(text);
        QVERIFY(!store().load<Exam>());
        QCOMPARE(m_log->lines(),
            QStringList(QStringLiteral("buddy: corrupt store exams.json moved to %1: %2")
                            .arg(m_backupName, problem)));
    }

    void absentAndNullKeepDefaultsAndUnknownKeysAreIgnored()
    {
        const Exam plain { .id = exam.id, .title = {}, .due = {} };
        const QByteArray required = R"({"title": "", "id": "5f0c7a2e-95b4-4b6e-9a55-0d9d3c6f1f10")";
        for (const auto* more : { "}", R"(, "due": null, "credits": null, "room": [1]})" }) {
            put(required + more);
            QVERIFY(store().load<Exam>() == plain);
        }
    }

    void aSecondCorruptFileWithinTheSecondStays()
    {
        for (int time = 1; time <= 2; ++time) {
            put("corrupt");
            QVERIFY(!store().load<Exam>());
            QCOMPARE(m_log->lines().size(), time);
        }
        QCOMPARE(names(), QStringList({ QStringLiteral("exams.json"), m_backupName }));
    }

    void aFileOfAHundredMegabytesIsNotRead()
    {
        put({});
        QVERIFY(QFile::resize(path(), 100 * 1024 * 1024));
        QVERIFY(!store().load<Exam>());
        QVERIFY(m_log->lines().value(0).endsWith(QStringLiteral("larger than 64 MiB")));
    }

    void aFailedSaveShowsInTheHealthUntilOneSucceeds()
    {
        QVERIFY(QDir().mkpath(path()));
        const auto file = store();
        QVERIFY(!file.load<Exam>());
        QVERIFY(!file.save(exam));
        QVERIFY(m_health->problems.contains(path()));
        QVERIFY(QDir().rmdir(path()));
        QVERIFY(file.save(exam));
        QVERIFY(m_health->problems.empty());
    }

    void anEarlyDirectoryIsRenamed_data()
    {
        QTest::addColumn<QString>("directories");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("after");
        row("moved", "SkritBuddy", "", "Pobblewig");
        row("both stay", "Pobblewig SkritBuddy", "", "Pobblewig SkritBuddy");
        row("a file is left", "", "SkritBuddy", "SkritBuddy");
    }
    void anEarlyDirectoryIsRenamed()
    {
        QFETCH(QString, directories);
        QFETCH(QString, file);
        const QDir base(m_scratch->path());
        for (const auto& name : directories.split(u' ', Qt::SkipEmptyParts))
            QVERIFY(base.mkpath(name));
        if (!file.isEmpty())
            put({}, file);
        JSONFileStore::migrateLegacyDirectory(base);
        QTEST(names().join(u' '), "after");
    }

private:
    JSONFileStore store()
    {
        DataDirectory directory { QDir(m_scratch->path()) };
        directory.clock = [] { return now; };
        m_health = directory.health;
        return { directory, m_name };
    }
    QString path() const { return m_scratch->filePath(m_name); }
    QStringList names() const
    {
        return QDir(m_scratch->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    void put(const QByteArray& text) const { put(text, m_name); }
    void put(const QByteArray& text, const QString& name) const
    {
        QFile file(m_scratch->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    const QString m_name = QStringLiteral("exams.json");
    const QString m_backupName = QStringLiteral("exams.json.corrupt-2026-03-01T08-15-00Z");
    std::unique_ptr<QTemporaryDir> m_scratch;
    std::unique_ptr<LogLines> m_log;
    decltype(DataDirectory::health) m_health;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::JSONFileStoreTest)
#include "JSONFileStoreTest.moc"
