#include "prompts/LibrarianPrompts.h"

#include "support/TableRow.h"

#include <QFile>

namespace pobblewig {

namespace {

const auto window = u"[2026-03-01T08:15:00Z] user: I don't like %2 calls.\n"
                    "[2026-03-01T08:15:04Z] assistant: Noted."_s;

ExtractionPrompt emptyMemory()
{
    return {
        .situation = u"Current app: LibreOffice (org.libreoffice), active for 25 min"_s,
        .window = window,
        .roles = { AssistantRole::accountabilityPartner },
    };
}

ExtractionPrompt fullMemory()
{
    auto prompt = emptyMemory();
    prompt.residentMemory = u"Preferences\n- Likes 100%1 direct words (noted 2x)"_s;
    prompt.isBelowSoftTarget = false;
    prompt.referencePaths = { u"academics.courses"_s, u"academics.professors"_s };
    prompt.roles.insert(AssistantRole::tutor);
    return prompt;
}

} // namespace

class LibrarianPromptsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void promptIsWordForWordAsBefore_data()
    {
        columns<QString>("prompt");
        using namespace Prompts;
        row("extraction-generous", extraction(emptyMemory()));
        row("extraction-selective-tutor", extraction(fullMemory()));
        row("meeting",
            meetingNotesExtraction({ .appName = u"Zoom"_s,
                .minutes = 45,
                .notes = u"## Summary\nThe exam is on the 12th, %1."_s,
                .referencePaths = { u"academics.exams"_s } }));
        row("closeout-full",
            dailyCloseout({ .dayKey = u"2026-03-01"_s,
                .previousIntent = { u"Write to Professor Davis"_s, u"Ask %1"_s },
                .observations = u"[2026-03-01T08:15:00Z] Slept badly"_s,
                .activitySummary = u"LibreOffice 2 h"_s,
                .conversation = window }));
        row("closeout-empty", dailyCloseout({ .dayKey = u"2026-03-01"_s }));
        row("weekly",
            weeklyRollup(u"2026-02-28\nWrote the draft.\nhighlights: a; b\nunresolved: c\n\n"
                         "2026-03-01\nRested %1."_s));
        row("cleanup", cleanup(u"{\"notes\": [\"%1\"], \"patterns\": []}"_s));
    }
    void promptIsWordForWordAsBefore()
    {
        QFETCH(QString, prompt);
        const auto name = QLatin1String(QTest::currentDataTag()) + u".txt"_s;
        QFile file(QFINDTESTDATA("golden") + u'/' + name);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        QCOMPARE(prompt, QString::fromUtf8(file.readAll()));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::LibrarianPromptsTest)
#include "LibrarianPromptsTest.moc"
