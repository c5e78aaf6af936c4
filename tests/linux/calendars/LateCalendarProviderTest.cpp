#include "PobblewigLinux/modules/LateCalendarProvider.h"

#include "CalendarCases.h"
#include "support/Awaited.h"
#include "support/PrivateBus.h"
#include "support/ScratchDirectory.h"

#include <QStandardPaths>

namespace pobblewig {

using Kind = CalendarSource::Kind;

class LateCalendarProviderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_settings.clear();
        restart();
    }

    /// The first test: what is loaded stays so.
    void aModuleIsLoadedWhenItIsNeeded()
    {
        QVERIFY(!m_provider->source());
        QVERIFY(!isInMemory("/calendarfolder.so"));
        QCOMPARE(found(), QString());
        QVERIFY(m_provider->source()->kind == Kind::folder);
        QVERIFY(isInMemory("/calendarfolder.so"));
        QVERIFY(!isInMemory("/calendars.so"));
    }

    void withoutAServiceThereIsTheUsersFolder()
    {
        QVERIFY(awaited(m_provider->saveReminder({ .title = u"Tea"_s })));
        QCOMPARE(found(), u"Tea"_s);
        const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        QCOMPARE(m_provider->sourceName(), documents.filePath(u"Calendars"_s));
        QVERIFY(QDir(m_provider->source()->folder).removeRecursively());
    }

    void theChoiceCountsAtOnceAndAfterAStart()
    {
        const ScratchDirectory other;
        other.write(u"x.ics"_s, CalendarCases::calendar(u"BEGIN:VTODO|SUMMARY:Soup|END:VTODO|"_s));
        m_provider->chooseSource({ Kind::folder, other.path().path() });
        QCOMPARE(found(), u"Soup"_s);
        m_provider->chooseSource({ Kind::service });
        QCOMPARE(found(), u"There is no calendar service on this desktop."_s);
        QCOMPARE(m_provider->problem(), found());
        QVERIFY(!awaited(m_provider->saveEvent({})));
        restart();
        QVERIFY(m_provider->source() == (CalendarSource { Kind::service, other.path().path() }));
        m_provider->chooseSource({ Kind::folder, other.path(u"gone"_s) });
        QVERIFY(!m_provider->problem());
        QVERIFY(found().endsWith(u"/gone” cannot be read."_s));
    }

    void withoutItsModuleNothingIsRead()
    {
        const ScratchDirectory empty;
        m_provider.emplace(
            m_settings, m_bus.connection("client"), ModuleLoader({ empty.path().path() }));
        QVERIFY(found().contains(u"“calendarfolder” is not installed"_s));
    }

private:
    void restart() { m_provider.emplace(m_settings, m_bus.connection("client")); }

    static bool isInMemory(const char* file)
    {
        QFile maps(u"/proc/self/maps"_s);
        return !maps.open(QIODevice::ReadOnly) || maps.readAll().contains(file);
    }

    /// The titles of the reminders, or the problem.
    QString found()
    {
        const auto reminders = awaited(m_provider->fetchIncompleteReminders());
        if (!reminders)
            return reminders.error().description;
        QStringList titles;
        for (const auto& reminder : *reminders)
            titles.append(reminder.title);
        return titles.join(u'|');
    }

    const PrivateBus m_bus;
    const ScratchDirectory m_scratch;
    QSettings m_settings { m_scratch.path(u"desktop.conf"_s), QSettings::IniFormat };
    std::optional<LateCalendarProvider> m_provider;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LateCalendarProviderTest)
#include "LateCalendarProviderTest.moc"
