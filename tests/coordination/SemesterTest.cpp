#include "coordination/semester/Semester.h"

#include <QTest>

namespace pobblewig {

namespace {

const TermPlan threeDays { .begin = QDate(2026, 10, 19), .length = 3, .mostTurns = 4 };

}

class SemesterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_semester.play();
        m_record = m_semester.record();
        m_files = TermFiles::read(m_semester.data());
    }
    void everySessionIsClosedOnce()
    {
        expectNone(TermChecks::sessions(m_files, m_record, m_semester.days()));
    }
    void sevenDaysMakeAWeek() { expectNone(TermChecks::weeks(m_files)); }
    void noMessageIsLostOrKeptTwice() { expectNone(TermChecks::messages(m_files, m_record)); }
    void theFilesAreWhole() { expectNone(TermChecks::contents(m_files)); }

private:
    static void expectNone(const QStringList& faults)
    {
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QStringLiteral("\n"))));
    }

    Semester m_semester { writtenTerm(threeDays) };
    TermRecord m_record;
    TermFiles m_files;
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::SemesterTest)
#include "SemesterTest.moc"
