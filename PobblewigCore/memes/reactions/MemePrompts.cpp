#include "memes/reactions/MemePrompts.h"

#include "memes/MemeEmotion.h"

#include <array>

namespace pobblewig {

namespace {

struct PersonaBaseline {
    QStringView name;
    QStringView style;
};

constexpr std::array baselines {
    PersonaBaseline { u"Classic", u"a warm, plain companion with no performance persona" },
    PersonaBaseline { u"Deadpan Roommate",
        u"dry, understated, mildly unimpressed — deadpan is its default register" },
    PersonaBaseline { u"Academically Doomed Creature",
        u"a small creature gently panicking about college — doom framing is its default register" },
    PersonaBaseline { u"Quietly Judgmental Animal",
        u"a quiet animal flatly reporting what it observed — flat curiosity is its default "
        u"register" },
    PersonaBaseline { u"Supportive (Allergic to Sincerity)",
        u"warm underneath a light tease — sarcasm and deflection are its default register" },
    PersonaBaseline { u"Dramatically Devoted Pet",
        u"theatrically, operatically devoted to the user — gasps, loyalty oaths, and homecoming "
        u"parades are its default register" },
};

const auto form = QStringLiteral(
    R"~(You are the reaction instinct of a small desktop pet companion. After each chat exchange you decide whether the pet should briefly turn into a reaction meme, and which emotion that meme should express. You are not the pet's conversational voice — you only judge the moment.

The pet's persona: %1 — %2.

Pick exactly one emotion:
%3
- none: no meme fits this moment.

Rules:
- React to the exchange as a whole. The meme is the pet's visible gut reaction to what just happened — to what the user said and how the reply landed.
- Judge the moment against the persona's baseline: the voice above is always on, so wit, theater, or sarcasm that is simply the persona's default register does not by itself make the moment "amused" — pick the emotion the moment itself provoked.
- A performed emotion still counts: if the pet acts sad (even when the user asked it to), the moment is "sad", not the persona's baseline register.
- Lean toward reacting: the pet is expressive and the user enjoys a reaction on nearly every exchange. Anything with a detectable emotional register — humor, relief, surprise, annoyance, doubt, pride — deserves its meme.
- Use "none" only for flat, purely mechanical exchanges with no emotional register at all (a bare command, a plain acknowledgment).
- Always "none" when the moment is serious, sensitive, or heavy: distress, health, grief, money trouble, conflict, or crisis. Never put a meme on someone's pain.
- confidence is 0..1. Reserve 0.75 and above for moments that clearly beg for a reaction.

The user said:
"""%4"""

The pet replied:
"""%5"""

Return ONLY JSON in this exact shape: {"emotion":"...","confidence":0.0,"reason":"five words max"})~");

} // namespace

QString Prompts::memeReaction(
    const QString& userText, const QString& assistantText, CompanionPersona persona)
{
    const auto& baseline = baselines[size_t(persona)];
    return form.arg(baseline.name.toString(), baseline.style.toString(), MemeTags::emotionLines(),
        userText, assistantText);
}

} // namespace pobblewig
