#include "conversation/proposals/SelfChangeNote.h"

#include "mascots/Mascot.h"

namespace pobblewig {

namespace {

QString persona(const AppSettings& settings)
{
    return displayName(settings.companionPersona);
}

QString form(const AppSettings& settings)
{
    return Mascot::userFacing(settings.mascot).id;
}

QString colorScheme(const AppSettings& settings)
{
    const auto& mascot = Mascot::userFacing(settings.mascot);
    return MascotColorScheme::forID(settings.mascotColorScheme, mascot).displayName;
}

struct Aspect {
    QStringView key;
    QString (*name)(const AppSettings& settings);
    /// Takes the old name and the new one.
    QStringView words;
};

constexpr std::array aspects {
    Aspect { u"companionPersona", persona,
        u"My persona changed: %1 → %2. If my voice feels different from earlier messages, that's "
        u"why — those were my %1 persona." },
    Aspect { u"mascot", form,
        u"My desktop form changed: I was %1, now I'm %2. Anything earlier where I called myself %1 "
        u"was my old form — I'm %2 now." },
    Aspect { u"mascotColorScheme", colorScheme,
        u"My color scheme changed: %1 → %2. Same buddy, new colors." },
};

} // namespace

std::optional<QString> selfChangeNote(
    const QString& key, const AppSettings& before, const AppSettings& after)
{
    for (const auto& aspect : aspects) {
        const auto old = aspect.name(before);
        const auto current = aspect.name(after);
        if (aspect.key == key && old != current)
            return aspect.words.toString().arg(old, current);
    }
    return std::nullopt;
}

} // namespace pobblewig
