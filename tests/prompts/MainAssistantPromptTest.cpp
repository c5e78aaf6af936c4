#include "prompts/MainAssistantPrompt.h"

#include "conversation/BuddyTools.h"
#include "foundation/ISO8601.h"
#include "support/TableRow.h"
#include "support/ToolWorld.h"

#include <QFile>
#include <QStringBuilder>

namespace pobblewig {

using namespace Qt::StringLiterals;

namespace {

/// Set to anything, it has the prompts as they are now written over those in "golden".
constexpr auto rewrite = "POBBLEWIG_REWRITE_GOLDEN";

const QString between = u"\n\n===== In front of the user's text =====\n\n"_s;

MainAssistantPrompt emptyPrompt()
{
    return {
        .situation = { .summary = u"No active app session right now."_s },
        .now = *ISO8601::parse(u"2026-03-01T08:15:00Z"),
        .wording = PlatformWording::linuxDesktop,
    };
}

MainAssistantPrompt fullPrompt()
{
    auto prompt = emptyPrompt();
    prompt.memory = u"- Studies biology.\n- Grades: 100%1, then 90%2."_s;
    prompt.situation = {
        .mode = CoachMode::studying,
        .roles = { AssistantRole::accountabilityPartner, AssistantRole::tutor },
        .summary = u"Current app: LibreOffice (org.libreoffice), active for 25 min"_s,
        .currentForm = u"mouse (brown color scheme)"_s,
        .referenceTOC = u"academics.professors — 2 items"_s,
        .chronologicalIndex = u"- [id:0A1B2C3D] day 2026-02-28: Wrote the draft."_s,
        .sessionInfo = u"Day 2026-03-01, session started 08:02, 3 turns today."_s,
        .unfinishedIntent = u"- Ask Professor Davis for an extension."_s,
        .canvasIsMissing = true,
    };
    prompt.hasImage = true;
    return prompt;
}

MainAssistantPrompt promptFor(CompanionPersona persona, MainAssistantPrompt prompt)
{
    prompt.situation.persona = persona;
    prompt.tools = BuddyTools(ToolWorld().everyTool(), prompt.wording).lines();
    return prompt;
}

} // namespace

class MainAssistantPromptTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void promptIsWordForWordAsBefore_data()
    {
        QTest::addColumn<QByteArray>("prompt");
        const auto golden = [](const char* name, const MainAssistantPrompt& prompt) {
            row(name,
                (Prompts::mainAssistant(prompt) % between % Prompts::appContext(prompt)).toUtf8());
        };
        auto prompt = promptFor(CompanionPersona::classic, emptyPrompt());
        prompt.toolsAvailable = true;
        golden("classic-with-native-empty", prompt);
        prompt = promptFor(CompanionPersona::deadpanRoommate, fullPrompt());
        golden("deadpanRoommate-without-native-full", prompt);
        prompt = promptFor(CompanionPersona::judgmentalAnimal, fullPrompt());
        prompt.toolsAvailable = true;
        prompt.nativeTools = false;
        golden("judgmentalAnimal-with-text-full", prompt);
    }
    void promptIsWordForWordAsBefore()
    {
        QFETCH(QByteArray, prompt);
        const auto name = QLatin1String(QTest::currentDataTag()) + u".txt"_s;
        QFile file(QFINDTESTDATA("golden") + u'/' + name);
        if (qEnvironmentVariableIsSet(rewrite)) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            QCOMPARE(file.write(prompt), prompt.size());
            QSKIP("rewritten");
        }
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        QCOMPARE(QString::fromUtf8(prompt), QString::fromUtf8(file.readAll()));
    }

    void withoutLookUpsThereAreStillActions()
    {
        auto prompt = promptFor(CompanionPersona::classic, fullPrompt());
        prompt.nativeTools = false;
        const auto text = Prompts::mainAssistant(prompt);
        QVERIFY(text.contains(u"```buddy-actions\n{\"actions\":[{\"type\""));
        QVERIFY(!text.contains(u"```buddy-tools\n") && !text.contains(u"call the provided"));
    }

    /// Those without a golden file of their own.
    void eachPersonaHasAVoice_data()
    {
        QTest::addColumn<CompanionPersona>("persona");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("last");
        using enum CompanionPersona;
        row("doomed", doomedCreature, "You are a small, exhausted creature who is somehow also",
            "then what's left to earn. we can do that now or after you've slept");
        row("allergic", allergicToSincerity, "You care deeply about the user, but direct emotional",
            "then we look at what's left in the course and write to your professor. i'll draft it");
        row("devoted", devotedPet, "You are the user's fiercely devoted pet — a small creature",
            "write to your professor, and i'm right next to you for both");
    }
    void eachPersonaHasAVoice()
    {
        QFETCH(CompanionPersona, persona);
        QFETCH(QString, first);
        QFETCH(QString, last);
        const auto text = Prompts::mainAssistant(promptFor(persona, fullPrompt()));
        QVERIFY(text.contains(u"You are a desktop study companion"));
        QVERIFY(text.contains(QString(u"\n\n" % first)));
        QVERIFY(text.contains(QString(last % u"\n\nIf the user ever hints at self-harm")));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MainAssistantPromptTest)
#include "MainAssistantPromptTest.moc"
