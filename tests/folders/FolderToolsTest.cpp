#include "folders/FolderTools.h"

#include "support/Awaited.h"
#include "support/TableRow.h"
#include "tools/MemoryToolExecutor.h"

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

/// Says in its faults what it was asked for.
struct Unreadable : AppDataReading {
    tl::expected<std::unique_ptr<AppDataFile>, AppDataFault> open(
        const AppDataLocation& location) const override
    {
        return tl::unexpected(AppDataFault { .text = u"open "_s + location.path });
    }
    tl::expected<AppDataListing, AppDataFault> list(
        const AppDataLocation& location, int) const override
    {
        return tl::unexpected(AppDataFault { .text = u"list "_s + location.path });
    }
};

std::vector<AppDataSource> sources()
{
    return { { .name = u"uni"_s, .rootPath = u"/uni"_s } };
}

} // namespace

class FolderToolsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void argumentsReachTheService_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("answer");
        const QStringList folder { u"source"_s, u"uni"_s, u"subpath"_s, u"a"_s };
        const QStringList file { u"source"_s, u"uni"_s, u"path"_s, u"a"_s };
        row("apps_list_sources", QStringList(), "uni: /uni");
        row("apps_list_files", folder.mid(2), "error: missing required argument: source");
        row("apps_list_files ", folder, "error: 'a': list a");
        row("apps_read_file", file.mid(2), "error: missing required argument: source");
        row("apps_read_file ", file.mid(0, 2), "error: missing required argument: path");
        row("apps_read_file  ", file, "error: 'a': open a");
    }
    void argumentsReachTheService()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, answer);
        MemoryToolCall call { QString::fromLatin1(QTest::currentDataTag()).trimmed(), {} };
        for (; !arguments.isEmpty(); arguments.remove(0, 2))
            call.args[arguments[0]] = arguments[1];
        const Unreadable reading;
        AppDataAccessService service(sources, reading);
        MemoryToolExecutor executor(FolderTools::tools(&service));
        QCOMPARE(awaited(executor.execute(call)).text, answer);

        executor.setTools(FolderTools::tools(nullptr));
        const auto unavailable = u"(app data tools unavailable)"_s;
        const auto isComplete = !answer.contains(u"missing");
        QCOMPARE(awaited(executor.execute(call)).text, isComplete ? unavailable : answer);
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::FolderToolsTest)
#include "FolderToolsTest.moc"
