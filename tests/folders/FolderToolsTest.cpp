#include "folders/FolderTools.h"

#include "support/Awaited.h"
#include "support/TableRow.h"
#include "tools/MemoryToolExecutor.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

/// Five hundred numbered lines, whichever file is asked for.
struct NumberedLines : AppDataFile, AppDataReading {
    const QString& realPath() const override { return path; }
    qint64 size() const override { return 1; }
    tl::expected<QByteArray, AppDataFault> read(qint64) const override
    {
        QByteArray bytes;
        for (int number = 1; number <= 500; ++number)
            bytes += QByteArray::number(number) + '\n';
        return bytes;
    }
    tl::expected<std::unique_ptr<AppDataFile>, AppDataFault> open(
        const AppDataLocation&) const override
    {
        return std::make_unique<NumberedLines>();
    }
    tl::expected<AppDataListing, AppDataFault> list(
        const AppDataLocation& location, int) const override
    {
        return tl::unexpected(AppDataFault { AppDataFault::Kind::unreadable, location.path });
    }

    QString path = u"notes.txt"_s;
};

Task<std::vector<AppDataSource>> uni()
{
    co_return { { .name = u"uni"_s, .rootPath = u"/uni"_s } };
}

} // namespace

class FolderToolsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void argumentsReachTheService_data()
    {
        QTest::addColumn<JSONValue::Object>("arguments");
        QTest::addColumn<QString>("beginning");
        QTest::addColumn<QString>("unavailable");
        const JSONValue source(u"uni"_s);
        const JSONValue path(u"notes.txt"_s);
        const auto none = u"(app data tools unavailable)"_s;
        const JSONValue::Object file { { u"source"_s, source }, { u"path"_s, path } };
        const auto lines = [&file](int count) {
            auto arguments = file;
            arguments[u"tailLines"_s] = count;
            return arguments;
        };
        row("apps_list_sources", JSONValue::Object(), "uni: /uni", none);
        row("apps_list_files", JSONValue::Object { { u"subpath"_s, path } },
            "error: missing required argument: source", "error: missing required argument: source");
        row("apps_list_files ",
            JSONValue::Object { { u"source"_s, source }, { u"subpath"_s, path } },
            "error: 'notes.txt': notes.txt", none);
        row("apps_read_file", JSONValue::Object { { u"source"_s, source } },
            "error: missing required argument: path", "error: missing required argument: path");
        row("apps_read_file ", file, "[showing last 200 of", none);
        row("apps_read_file  ", lines(5000), "[showing last 400 of", none);
        row("apps_read_file   ", lines(0), "[showing last 1 of", none);
    }
    void argumentsReachTheService()
    {
        QFETCH(JSONValue::Object, arguments);
        QFETCH(QString, beginning);
        const NumberedLines lines;
        AppDataAccessService service(uni, lines);
        const auto answer = [&](AppDataAccessService* asked) {
            MemoryToolExecutor executor(FolderTools::tools(asked));
            const auto name = QString::fromLatin1(QTest::currentDataTag()).trimmed();
            return awaited(executor.execute({ name, arguments })).text;
        };
        const auto text = answer(&service);
        QVERIFY2(text.startsWith(beginning), qPrintable(text));
        QTEST(answer(nullptr), "unavailable");
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::FolderToolsTest)
#include "FolderToolsTest.moc"
