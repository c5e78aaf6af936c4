#include "foundation/JSONFileStore.h"

#include "support/LogLines.h"
#include "support/ScratchDirectory.h"
#include "support/TableRow.h"

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
    u"Größe 👩‍👩‍👧 \"quoted\"\n"_s, now, 3 };

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
        m_scratch.emplace();
        m_log.reset();
        m_log = std::make_unique<LogLines>();
    }

    void aRecordComesBackAndReadsWell()
    {
        QVERIFY(store().save(exam));
        QCOMPARE(m_scratch->read(m_name), examText);
        QVERIFY(store().load<Exam>() == exam);
    }

    void aMissingFileIsNothingAndSaysNothing()
    {
        QVERIFY(!store().load<Exam>());
        store().remove();
        QVERIFY(m_log->lines().isEmpty());
    }

    void whatDoesNotDecodeIsNamedAndKeptAside_data()
    {
        columns<QByteArray, QString>("text", "problem");
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
            QStringList(
                u"buddy: corrupt store exams.json moved to %1: %2"_s.arg(m_backupName, problem)));
        QCOMPARE(m_health->setAside, QStringList(m_backupName));
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
        QCOMPARE(names(), QStringList({ u"exams.json"_s, m_backupName }));
    }

    void aFileOfAHundredMegabytesIsNotRead()
    {
        put({});
        QVERIFY(QFile::resize(path(), 100 * 1024 * 1024));
        QVERIFY(!store().load<Exam>());
        QVERIFY(m_log->lines().value(0).endsWith(u"larger than 64 MiB"_s));
    }

    void whatCouldNotBeReadBackIsNotWritten()
    {
        const auto file = store();
        QVERIFY(file.save(exam));
        auto huge = exam;
        huge.title = QString(64 * 1024 * 1024, u'x');
        QVERIFY(!file.save(huge));
        QCOMPARE(m_health->problems[path()], u"the file would exceed 64 MiB");
        QCOMPARE(m_scratch->read(m_name), examText);
    }

    void whatCannotBeReadForTheMomentStays()
    {
        // Its beginning is not readable, for root neither.
        QVERIFY(QFile::link(u"/proc/self/mem"_s, path()));
        const auto file = store();
        for (int time = 0; time < 2; ++time)
            QVERIFY(!file.load<Exam>());
        QVERIFY(file.isUnreadable() && m_health->unreadable.contains(path()));
        QCOMPARE(m_log->lines().size(), 1);
        QVERIFY(!file.save(exam));
        QCOMPARE(names(), QStringList(m_name));
        QVERIFY(QFile::remove(path()));
        put(examText);
        QVERIFY(file.load<Exam>() == exam);
        QVERIFY(!file.isUnreadable() && file.save(exam));
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

    void aFailedFirstSaveLeavesNothingOrAll()
    {
        for (int failing = 1; failing <= 8; ++failing) {
            const ScratchDirectory scratch;
            const auto text = QByteArray(5000, 'n');
            const auto isWritten = writeDurably(
                scratch.path(u"deep/er/notes.json"_s), text, FaultyFileOperations(failing));
            QCOMPARE(isWritten.has_value(), failing == 8);
            const auto left =
                QDir(scratch.path(u"deep/er"_s)).entryList(QDir::Files | QDir::Hidden);
            QVERIFY(left.isEmpty() || scratch.read(u"deep/er/"_s + left[0]) == text);
            QVERIFY(left == QStringList(u"notes.json"_s) || (left.isEmpty() && failing < 8));
        }
    }

    void aShortWriteIsContinued()
    {
        QVERIFY(writesDurably(
            examText, FaultyFileOperations(3, FaultyFileOperations::Fault::shortWrite)));
        QCOMPARE(m_scratch->read(m_name), examText);
    }

    void aLinkAndPermissionsAreKept()
    {
        put("old");
        const auto permissions = QFile::ReadOwner | QFile::WriteOwner;
        QVERIFY(QFile::setPermissions(path(), permissions));
        const auto link = m_scratch->path(u"link.json"_s);
        QVERIFY(QFile::link(path(), link));
        QVERIFY(writeDurably(link, examText, FileOperations()));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(m_scratch->read(m_name), examText);
        const auto shared = QFile::ReadGroup | QFile::ReadOther;
        QCOMPARE(QFile::permissions(path()) & (permissions | shared), permissions);
    }

    void filesAreForTheUserAlone()
    {
        const auto shared = QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
        const auto isPrivate = [&](const QString& name) {
            return (QFile::permissions(name) & shared) == QFile::Permissions();
        };
        const auto folder = m_scratch->path(u"new/folder"_s);
        QVERIFY(writeDurably(folder + u"/file"_s, examText, FileOperations()));
        QVERIFY(isPrivate(folder + u"/file"_s) && isPrivate(folder));
        QVERIFY(isPrivate(m_scratch->path(u"new"_s)));

        put("old");
        for (const auto& name : { folder, path() })
            QVERIFY(QFile::setPermissions(name, QFile::permissions(name) | shared));
        QVERIFY(!DataDirectory(*m_scratch).prepare());
        QVERIFY(isPrivate(folder) && isPrivate(path()));
    }

    void whatACrashLeftBehindIsOverwritten()
    {
        m_scratch->write(u".exams.json.partial"_s, QByteArray(9000, 'x'));
        QVERIFY(writesDurably(examText));
        QCOMPARE(m_scratch->read(m_name), examText);
        QCOMPARE(names(), QStringList(m_name));
    }

    void anEarlyDirectoryIsRenamedUnlessTheNewOneIsThere()
    {
        const auto base = m_scratch->path();
        m_scratch->write(u"SkritBuddy"_s, {});
        JSONFileStore::migrateLegacyDirectory(base);
        QCOMPARE(names().join(u' '), u"SkritBuddy");
        QVERIFY(QFile::remove(m_scratch->path(u"SkritBuddy"_s)) && base.mkdir(u"SkritBuddy"_s));
        JSONFileStore::migrateLegacyDirectory(base);
        QCOMPARE(names().join(u' '), u"Pobblewig");
        QVERIFY(base.mkdir(u"SkritBuddy"_s));
        JSONFileStore::migrateLegacyDirectory(base);
        QCOMPARE(names().join(u' '), u"Pobblewig SkritBuddy");
    }

private:
    JSONFileStore store()
    {
        const DataDirectory directory = *m_scratch;
        m_health = directory.health;
        return { directory, m_name };
    }
    QString path() const { return m_scratch->path(m_name); }
    QStringList names() const
    {
        return m_scratch->path().entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    }
    void put(const QByteArray& text) const { m_scratch->write(m_name, text); }

    bool writesDurably(const QByteArray& text, const FileOperations& operations = {}) const
    {
        return writeDurably(path(), text, operations).has_value();
    }

    const QString m_name = u"exams.json"_s;
    const QString m_backupName = u"exams.json.corrupt-2026-03-01T08-15-00Z"_s;
    std::optional<ScratchDirectory> m_scratch;
    std::unique_ptr<LogLines> m_log;
    decltype(DataDirectory::health) m_health;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::JSONFileStoreTest)
#include "JSONFileStoreTest.moc"
