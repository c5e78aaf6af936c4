#include "PobblewigDemoModel/DemoSettings.h"

#include "PobblewigDemoModel/DemoDates.h"
#include "PobblewigDemoModel/DemoWords.h"

#include <algorithm>
#include <array>

namespace pobblewig {

namespace {

/// The beginning of a user's word, and the app's name for it.
struct Name {
    QStringView spoken;
    QStringView known;
};

constexpr std::array modes { Name { u"focus", u"focus" }, Name { u"stud", u"studying" },
    Name { u"relax", u"relaxing" }, Name { u"exercis", u"exercising" },
    Name { u"work", u"exercising" }, Name { u"do", u"doNotDisturb" },
    Name { u"open", u"openEnded" }, Name { u"normal", u"openEnded" } };
constexpr std::array personas { Name { u"classic", u"classic" },
    Name { u"deadpan", u"deadpanRoommate" }, Name { u"doom", u"doomedCreature" },
    Name { u"judg", u"judgmentalAnimal" }, Name { u"allergic", u"allergicToSincerity" },
    Name { u"devoted", u"devotedPet" } };

template <size_t Size>
QString known(const std::array<Name, Size>& names, const QString& spoken)
{
    const auto begins = [&](const Name& name) {
        return spoken.startsWith(name.spoken, Qt::CaseInsensitive);
    };
    const auto found = std::ranges::find_if(names, begins);
    return found == names.end() ? spoken : found->known.toString();
}

/// Turns "deadpanRoommate" into "deadpan roommate".
QString inWords(QString name)
{
    static const QRegularExpression border(QStringLiteral("(?=[A-Z])"));
    return name.replace(border, QStringLiteral(" ")).toLower();
}

DemoPlan set(const QString& sentence, const QString& key, const QString& value)
{
    const auto id = QStringLiteral("settings-%1-%2").arg(key, DemoWords::slug(value));
    return { sentence,
        { { QStringLiteral("update_settings"),
            { { QStringLiteral("proposalId"), id }, { QStringLiteral("key"), key },
                { QStringLiteral("value"), value } } } } };
}

DemoPlan setModeForAWhile(const DemoSentence& sentence)
{
    const auto mode = known(modes, sentence.part(u"mode"));
    DemoToolCall call { QStringLiteral("set_temporary_mode"),
        { { QStringLiteral("mode"), mode } } };
    if (const auto minutes = DemoDates::readMinutes(sentence.match.captured()))
        call.arguments[QStringLiteral("minutes")] = *minutes;
    return { QStringLiteral("A change of mode for a while: %1.").arg(inWords(mode)), { call } };
}

DemoPlan setMode(const DemoSentence& sentence)
{
    const auto mode = known(modes, sentence.part(u"mode"));
    return set(
        QStringLiteral("A change of mode: %1.").arg(inWords(mode)), QStringLiteral("mode"), mode);
}

DemoPlan setPersona(const DemoSentence& sentence)
{
    const auto persona = known(personas, sentence.part(u"persona"));
    return { QStringLiteral("A change of voice: %1.").arg(inWords(persona)),
        { { QStringLiteral("set_persona"),
            { { QStringLiteral("proposalId"),
                  QStringLiteral("persona-") + DemoWords::slug(persona) },
                { QStringLiteral("persona"), persona } } } } };
}

DemoPlan setMascot(const DemoSentence& sentence)
{
    static const QRegularExpression colors(
        QStringLiteral(R"(\b(?:original|brown|white|golden|pink|blue|lavender)\b)"),
        QRegularExpression::CaseInsensitiveOption);
    const auto mascot = sentence.part(u"mascot").toLower();
    const auto color = colors.match(sentence.match.captured()).captured().toLower();
    DemoToolCall call { QStringLiteral("set_mascot"),
        { { QStringLiteral("proposalId"), QStringLiteral("mascot-") + mascot },
            { QStringLiteral("mascot"), mascot } } };
    if (!color.isEmpty()) {
        call.arguments[QStringLiteral("proposalId")] =
            QStringLiteral("mascot-%1-%2").arg(mascot, color);
        call.arguments[QStringLiteral("colorScheme")] = color;
    }
    return { QStringLiteral("A change of form: %1.").arg((color + u' ' + mascot).trimmed()),
        { call } };
}

DemoPlan pause(const DemoSentence&)
{
    return set(QStringLiteral("A pause: nobody watches then which application is in front."),
        QStringLiteral("pausedIndefinitely"), QStringLiteral("true"));
}

DemoPlan resume(const DemoSentence&)
{
    return set(QStringLiteral("No more pause: I watch again which application is in front."),
        QStringLiteral("pausedIndefinitely"), QStringLiteral("false"));
}

DemoPlan setRole(const DemoSentence& sentence)
{
    const auto isTutor = sentence.part(u"role").startsWith(u't', Qt::CaseInsensitive);
    return set(QStringLiteral("A new role for me."), QStringLiteral("roles"),
        isTutor ? QStringLiteral(R"(["tutor"])") : QStringLiteral(R"(["accountabilityPartner"])"));
}

DemoPlan setInterval(const DemoSentence& sentence)
{
    const auto what = sentence.part(u"what").toLower();
    const auto minutes = sentence.part(u"minutes");
    return set(QStringLiteral("A look every %1 minutes, then.").arg(minutes),
        what + QStringLiteral("SyncIntervalMinutes"), minutes);
}

DemoPlan setSync(const DemoSentence& sentence)
{
    const auto what = sentence.part(u"what").toLower();
    const auto isOn = (sentence.part(u"before") + sentence.part(u"after")).toLower() == u"on";
    return set(QStringLiteral("The switch for %1.").arg(what), what + QStringLiteral("SyncEnabled"),
        isOn ? QStringLiteral("true") : QStringLiteral("false"));
}

DemoPlan setNamed(const DemoSentence& sentence)
{
    return set(QStringLiteral("One setting, as you name it."), sentence.part(u"key"),
        sentence.part(u"value"));
}

} // namespace

const DemoRules& DemoSettings::rules()
{
    static const auto mode = QStringLiteral(R"((?<mode>focus|stud(?:y|ying)|relax(?:ing)?|)"
                                            R"(exercis(?:e|ing)|work ?out|do.?not.?disturb|)"
                                            R"(open.?ended|normal))");
    static const DemoRules all {
        { QStringLiteral(
              R"(^(?:(?:let me|let's|i want to|i need to|help me|start) )?%1\b.*\bfor\b.*)")
                .arg(mode),
            setModeForAWhile },
        { QStringLiteral(R"(^(?:switch|change|go|set)\b(?=.*\bmode\b).*?\b%1\b)").arg(mode),
            setMode },
        { QStringLiteral(R"(^(?:pause|stop) (?:the )?(?:observ|watch))"), pause },
        { QStringLiteral(R"(^(?:resume|start|continue) (?:the )?(?:observ|watch))"), resume },
        { QStringLiteral(R"(^(?:be|become) my (?<role>tutor|accountability partner)\b)"), setRole },
        { QStringLiteral(R"(^(?:set|change|make) (?:the |my )?(?<what>canvas|calendar|cloud) )"
                         R"((?:sync )?interval\D*(?<minutes>\d{1,6}))"),
            setInterval },
        { QStringLiteral(
              R"(^(?:turn|switch) (?:(?<before>on|off) )?(?:the |my )?)"
              R"((?<what>canvas|calendar|reminders|cloud) sync(?: (?<after>on|off))?\b)"),
            setSync },
        { QStringLiteral(R"(^set (?<key>\w+) to (?<value>.+)$)"), setNamed },
        { QStringLiteral(
              R"(^(?:be|become|act|talk|sound|(?:change|switch) your (?:persona|voice))\b)"
              R"(.*?\b(?<persona>classic|deadpan|doom|judg|allergic|devoted))"),
            setPersona },
        { QStringLiteral(
              R"(^(?:turn into|become|be|change (?:in)?to)\b.*\b(?<mascot>axolotl|mouse)\b.*)"),
            setMascot },
    };
    return all;
}

} // namespace pobblewig
