#include "PobblewigDemoModel/DemoDates.h"

#include "support/TableRow.h"

#include <QTimeZone>

namespace pobblewig {

class DemoDatesTest : public QObject {
    Q_OBJECT

private:
    /// A Saturday; the clocks go back in the following night.
    static QDateTime now()
    {
        return { { 2026, 10, 24 }, { 14, 7, 30 }, QTimeZone("Europe/Berlin") };
    }

private Q_SLOTS:
    void timesAreReadAndTakenOut_data()
    {
        QTest::addColumn<QString>("time");
        QTest::addColumn<QString>("rest");
        row("call tomorrow at 9", "2026-10-25T09:00:00+01:00", "call");
        row("tonight at 8 call", "2026-10-24T20:00:00+02:00", "call");
        row("call in 20 minutes Ana", "2026-10-24T14:27:00+02:00", "call Ana");
        row("in half an hour", "2026-10-24T14:37:00+02:00", "");
        row("in 13 hours", "2026-10-25T02:07:00+01:00", "");
        row("in two days at 5:30 pm", "2026-10-26T17:30:00+01:00", "");
        row("on Saturday", "2026-10-31T09:00:00+01:00", "");
        row("next monday in the evening at 6", "2026-10-26T18:00:00+01:00", "");
        row("tomorrow in the morning at 6", "2026-10-25T06:00:00+01:00", "");
        row("at 3", "2026-10-24T15:00:00+02:00", "");
        row("at 2", "2026-10-25T14:00:00+01:00", "");
        row("at 12am", "2026-10-25T00:00:00+02:00", "");
        row("noon", "2026-10-25T12:00:00+01:00", "");
        row("party on the 24th of December at 19:30", "2026-12-24T19:30:00+01:00", "party");
        row("on march 1", "2027-03-01T09:00:00+01:00", "");
        row("tax on 2027-02-28", "2027-02-28T09:00:00+01:00", "tax");
        row("call at 25", "", "call at 25");
        row("february 30", "", "");
        row("a march of 12 men in 1812", "", "a march of 12 men in 1812");
        row("meet at 221b", "", "meet at 221b");
    }
    void timesAreReadAndTakenOut()
    {
        const auto read = DemoDates::readTime(QString::fromUtf8(QTest::currentDataTag()), now());
        QTEST(read.time ? DemoDates::format(*read.time) : QString(), "time");
        QTEST(read.rest, "rest");
    }

    void aZoneWithoutAnOffsetIsWrittenAsUTC()
    {
        QCOMPARE(DemoDates::format({ { 2026, 1, 2 }, { 3, 4 }, QTimeZone("Europe/Lisbon") }),
            u"2026-01-02T03:04:00Z");
    }

    void pastDaysAreWhole()
    {
        const auto days =
            DemoDates::readPast(QStringLiteral("what happened yesterday"), now().addDays(2));
        QCOMPARE(DemoDates::format(days->first), u"2026-10-25T00:00:00+02:00");
        QCOMPARE(DemoDates::format(days->second), u"2026-10-25T23:59:59+01:00");
        QVERIFY(!DemoDates::readPast(QStringLiteral("yesteryear"), now()));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::DemoDatesTest)
#include "DemoDatesTest.moc"
