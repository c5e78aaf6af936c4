#include "settings/CompanionPersona.h"

#include <array>

namespace pobblewig {

namespace {

struct PersonaTexts {
    QStringView displayName;
    QStringView tagline;
};

constexpr std::array texts {
    PersonaTexts { u"Classic", u"The original Pobblewig — warm, concise, no bit." },
    PersonaTexts {
        u"Deadpan Roommate", u"Someone nearby who has witnessed this exact disaster before." },
    PersonaTexts {
        u"Academically Doomed Creature", u"A tiny companion surviving college alongside you." },
    PersonaTexts {
        u"Quietly Judgmental Animal", u"A creature that noticed exactly what happened." },
    PersonaTexts { u"Supportive (Allergic to Sincerity)",
        u"Cares too much to be casual, and is trying anyway." },
    PersonaTexts { u"Dramatically Devoted Pet",
        u"Loves you operatically. Fights your deadlines. Keeps the vigil." },
};

} // namespace

QString displayName(CompanionPersona persona)
{
    return texts[size_t(persona)].displayName.toString();
}

QString tagline(CompanionPersona persona)
{
    return texts[size_t(persona)].tagline.toString();
}

} // namespace pobblewig
