#include "coordination/semester/Semester.h"
#include "coordination/semester/TermChecks.h"

#include <QTest>

namespace pobblewig {

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
        expectNone(TermChecks::sessions(m_files, m_record, m_semester.term()));
    }
    void sevenDaysMakeAWeek() { expectNone(TermChecks::weeks(m_files)); }
    void noMessageIsLostOrKeptTwice() { expectNone(TermChecks::messages(m_files, m_record)); }
    void theFilesAreWhole() { expectNone(TermChecks::contents(m_files)); }
    void nothingIsKeptOfWhatIsSaidWithoutMemory()
    {
        expectNone(TermChecks::memoryOff(m_files, m_record));
    }
    void everyStepWasTheLastOnce() { expectNone(TermChecks::crashes(m_record)); }

private:
    static void expectNone(const QStringList& faults)
    {
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QStringLiteral("\n"))));
    }

    Semester m_semester { Semester::Length::someDays };
    TermRecord m_record;
    TermFiles m_files;
};

} // namespace pobblewig

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (const auto outcome = pobblewig::Semester::playVictim())
        return *outcome;
    pobblewig::SemesterTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "SemesterTest.moc"
