#include "PobblewigLinux/calendars/CalendarFolder.h"

#include "CalendarCases.h"
#include "support/Awaited.h"
#include "support/LogLines.h"
#include "support/ScratchDirectory.h"

namespace pobblewig {

using namespace CalendarCases;

class CalendarFolderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch.emplace(); }

    void whatIsOnIsFound_data() { addRows(); }
    void whatIsOnIsFound()
    {
        for (const auto& each : all())
            m_scratch->write(QLatin1String(each.name) + u".ics"_s, calendar(entries(each)));
        QFETCH(QDate, from);
        const auto events = awaited(folder().fetchEvents(at(from), at(from.addDays(14))));
        QVERIFY(events);
        QTEST(foundOf(QTest::currentDataTag(), *events), "found");
    }

    void whatIsToBeDoneIsFound()
    {
        m_scratch->write(u"tasks.ics"_s, calendar(reminders()));
        QCOMPARE(
            CalendarCases::shown(*awaited(folder().fetchIncompleteReminders())), openReminders);
    }

private:
    CalendarFolder folder(
        std::shared_ptr<const FileOperations> operations = std::make_shared<FileOperations>()) const
    {
        return CalendarFolder(m_scratch->path().path(),
            { [] {
                 return at({ 2026, 10, 19 });
             },
                [] { return berlin; } },
            std::move(operations));
    }

    std::optional<ScratchDirectory> m_scratch;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::CalendarFolderTest)
#include "CalendarFolderTest.moc"
