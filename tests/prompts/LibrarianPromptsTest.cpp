#include "prompts/LibrarianPrompts.h"

#include <QFile>
#include <QTest>

namespace pobblewig {

namespace {

constexpr auto window = "[2026-03-01T08:15:00Z] user: I don't like %2 calls.\n"
                        "[2026-03-01T08:15:04Z] assistant: Noted.";

ExtractionPrompt emptyMemory()
{
    return {
        .situation =
            QStringLiteral("Current app: LibreOffice (org.libreoffice), active for 25 min"),
        .window = QString::fromUtf8(window),
        .roles = { AssistantRole::accountabilityPartner },
    };
}

ExtractionPrompt fullMemory()
{
    auto prompt = emptyMemory();
    prompt.residentMemory = QStringLiteral("Preferences\n- Likes 100%1 direct words (noted 2x)");
    prompt.isBelowSoftTarget = false;
    prompt.referencePaths = { QStringLiteral("academics.courses"),
        QStringLiteral("academics.professors") };
    prompt.roles.insert(AssistantRole::tutor);
    return prompt;
}

MeetingNotesPrompt meeting()
{
    return {
        .appName = QStringLiteral("Zoom"),
        .minutes = 45,
        .notes = QStringLiteral("## Summary\nThe exam is on the 12th, %1."),
        .referencePaths = { QStringLiteral("academics.exams") },
    };
}

DailyCloseoutPrompt fullDay()
{
    return {
        .dayKey = QStringLiteral("2026-03-01"),
        .previousIntent = { QStringLiteral("Write to Professor Davis"), QStringLiteral("Ask %1") },
        .observations = QStringLiteral("[2026-03-01T08:15:00Z] Slept badly"),
        .activitySummary = QStringLiteral("LibreOffice 2 h"),
        .conversation = QString::fromUtf8(window),
    };
}

} // namespace

class LibrarianPromptsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void promptIsWordForWordAsBefore_data()
    {
        QTest::addColumn<QString>("prompt");
        using namespace Prompts;
        QTest::newRow("extraction-generous") << extraction(emptyMemory());
        QTest::newRow("extraction-selective-tutor") << extraction(fullMemory());
        QTest::newRow("meeting") << meetingNotesExtraction(meeting());
        QTest::newRow("closeout-full") << dailyCloseout(fullDay());
        QTest::newRow("closeout-empty") << dailyCloseout({ .dayKey = fullDay().dayKey });
        QTest::newRow("weekly") << weeklyRollup(
            QStringLiteral("2026-02-28\nWrote the draft.\nhighlights: a; b\nunresolved: c\n\n"
                           "2026-03-01\nRested %1."));
        QTest::newRow("cleanup") << cleanup(
            QStringLiteral("{\"notes\": [\"%1\"], \"patterns\": []}"));
    }
    void promptIsWordForWordAsBefore()
    {
        QFETCH(QString, prompt);
        const auto name = QLatin1String(QTest::currentDataTag()) + QStringLiteral(".txt");
        QFile file(QFINDTESTDATA("golden") + u'/' + name);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        QCOMPARE(prompt, QString::fromUtf8(file.readAll()));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LibrarianPromptsTest)
#include "LibrarianPromptsTest.moc"
