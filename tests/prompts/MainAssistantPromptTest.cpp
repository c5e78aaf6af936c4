#include "prompts/MainAssistantPrompt.h"

#include "conversation/BuddyTools.h"
#include "foundation/EnumNames.h"
#include "foundation/ISO8601.h"
#include "support/ToolWorld.h"

#include <QFile>
#include <QTest>

namespace pobblewig {

namespace {

/// Set to anything, it has the prompts as they are now written over those in "golden".
constexpr auto rewrite = "POBBLEWIG_REWRITE_GOLDEN";

enum class Tools { without, with };
enum class Protocol { native, text };
enum class Memory { empty, full };

MainAssistantPrompt emptyPrompt()
{
    return {
        .situation = { .summary = QStringLiteral("No active app session right now."),
            .canvasConnected = true },
        .now = *ISO8601::parse(u"2026-03-01T08:15:00Z"),
    };
}

MainAssistantPrompt fullPrompt()
{
    auto prompt = emptyPrompt();
    prompt.memory = QStringLiteral("- Studies biology.\n- Grades: 100%1, then 90%2.");
    prompt.situation = {
        .mode = CoachMode::studying,
        .roles = { AssistantRole::accountabilityPartner, AssistantRole::tutor },
        .summary = QStringLiteral("Current app: LibreOffice (org.libreoffice), active for 25 min"),
        .currentForm = QStringLiteral("mouse (brown color scheme)"),
        .referenceTOC = QStringLiteral("academics.professors — 2 items"),
        .chronologicalIndex = QStringLiteral("- [id:0A1B2C3D] day 2026-02-28: Wrote the draft."),
        .sessionInfo = QStringLiteral("Day 2026-03-01, session started 08:02, 3 turns today."),
        .unfinishedIntent = QStringLiteral("- Ask Professor Davis for an extension."),
    };
    prompt.hasImage = true;
    return prompt;
}

ToolLines toolLines()
{
    ToolWorld world;
    return BuddyTools(world.everyTool()).lines();
}

void golden(CompanionPersona persona, Tools tools, Protocol protocol, Memory memory)
{
    auto prompt = memory == Memory::full ? fullPrompt() : emptyPrompt();
    prompt.situation.persona = persona;
    prompt.toolsAvailable = tools == Tools::with;
    prompt.nativeTools = protocol == Protocol::native;
    prompt.tools = toolLines();
    const auto name = QStringList { EnumNames::text(persona), EnumNames::text(tools),
        EnumNames::text(protocol), EnumNames::text(memory) }
                          .join(u'-');
    QTest::newRow(qPrintable(name)) << Prompts::mainAssistant(prompt).toUtf8();
}

} // namespace

class MainAssistantPromptTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// Every pair of choices occurs.
    void promptIsWordForWordAsBefore_data()
    {
        using Persona = CompanionPersona;
        QTest::addColumn<QByteArray>("prompt");
        golden(Persona::classic, Tools::with, Protocol::native, Memory::empty);
        golden(Persona::classic, Tools::without, Protocol::text, Memory::full);
        golden(Persona::deadpanRoommate, Tools::with, Protocol::text, Memory::empty);
        golden(Persona::deadpanRoommate, Tools::without, Protocol::native, Memory::full);
        golden(Persona::doomedCreature, Tools::with, Protocol::native, Memory::full);
        golden(Persona::doomedCreature, Tools::without, Protocol::text, Memory::empty);
        golden(Persona::judgmentalAnimal, Tools::with, Protocol::text, Memory::full);
        golden(Persona::judgmentalAnimal, Tools::without, Protocol::native, Memory::empty);
        golden(Persona::allergicToSincerity, Tools::with, Protocol::native, Memory::full);
        golden(Persona::allergicToSincerity, Tools::without, Protocol::text, Memory::empty);
        golden(Persona::devotedPet, Tools::with, Protocol::text, Memory::full);
        golden(Persona::devotedPet, Tools::without, Protocol::native, Memory::empty);
    }
    void promptIsWordForWordAsBefore()
    {
        QFETCH(QByteArray, prompt);
        const auto name = QLatin1String(QTest::currentDataTag()) + QStringLiteral(".txt");
        QFile file(QFINDTESTDATA("golden") + u'/' + name);
        if (qEnvironmentVariableIsSet(rewrite)) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            QCOMPARE(file.write(prompt), prompt.size());
            QSKIP("rewritten");
        }
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
        QCOMPARE(QString::fromUtf8(prompt), QString::fromUtf8(file.readAll()));
    }

    void theTextProtocolSpeaksOfNoFunctions()
    {
        auto prompt = fullPrompt();
        prompt.toolsAvailable = true;
        prompt.nativeTools = false;
        const auto text = Prompts::mainAssistant(prompt);
        QVERIFY(!text.contains(u"call the provided functions"));
        QVERIFY(!text.contains(u"App control via action functions"));
        QVERIFY(text.contains(u"```buddy-tools\n") && text.contains(u"```buddy-actions\n"));
    }

    void onlyAPersonaIsAStudyCompanion()
    {
        auto prompt = fullPrompt();
        constexpr QStringView core = u"You are a desktop study companion";
        QVERIFY(!Prompts::mainAssistant(prompt).contains(core));
        prompt.situation.persona = CompanionPersona::doomedCreature;
        QVERIFY(Prompts::mainAssistant(prompt).contains(core));
    }
};

} // namespace pobblewig

QTEST_GUILESS_MAIN(pobblewig::MainAssistantPromptTest)
#include "MainAssistantPromptTest.moc"
