#include "PobblewigStarterMemes/Reaction.h"

#include "PobblewigStarterMemes/ReactionPictures.h"

#include <array>

namespace pobblewig {

namespace {

using enum MemeEmotion;
using namespace ReactionPictures;

constexpr std::array reactions {
    Reaction { "laughing-on-the-floor", "Can't breathe", laughingOnTheFloor, amused },
    Reaction { "spit-take", "There goes the coffee", spitTake, amused, shocked },
    Reaction { "popcorn", "Go on, I'm listening", popcorn, amused, smug },
    Reaction { "party-hat", "We did it", partyHat, celebrating },
    Reaction { "it-works", "It works, nobody move", itWorks, celebrating, amused },
    Reaction { "disco", "Victory dance", disco, celebrating, amused },
    Reaction { "handed-in", "Handed in with a minute to spare", handedIn, celebrating, smug },
    Reaction { "trophy", "A trophy for opening the file", trophy, celebrating, amused },
    Reaction { "this-is-fine", "This is fine, probably", thisIsFine, frustrated, amused },
    Reaction { "chewed-keyboard", "Reasoning with the keyboard", chewedKeyboard, frustrated },
    Reaction {
        "chart-going-wrong", "All going to plan, and then", chartGoingWrong, frustrated, shocked },
    Reaction { "head-on-desk", "Ghjgggggg", headOnDesk, frustrated, sad },
    Reaction { "orbiting-questions", "Wait, what", orbitingQuestions, confused },
    Reaction { "doing-the-math", "Two and two is fish", doingTheMath, confused, skeptical },
    Reaction { "loading", "Still thinking", loading, confused },
    Reaction { "raised-brow", "Run that by me again", raisedBrow, skeptical },
    Reaction { "side-eye", "Sure it is", sideEye, skeptical, offended },
    Reaction { "magnifier", "Something smells like a bug", magnifier, skeptical, confused },
    Reaction { "falling-monocle", "Excuse me?", fallingMonocle, offended, shocked },
    Reaction { "turned-back", "Not talking to you (for a minute)", turnedBack, offended, sad },
    Reaction { "one-star", "One star, would not be treated like this again", oneStar, offended,
        frustrated },
    Reaction { "jaw-through-the-floor", "Jaw, meet floor", jawThroughTheFloor, shocked },
    Reaction { "soul-leaving", "Out of body, back soon", soulLeaving, shocked, frustrated },
    Reaction { "plot-twist", "Plot twist", plotTwist, shocked },
    Reaction { "blanket-and-tea", "Room for one more", blanketAndTea, sympathetic, devoted },
    Reaction { "there-there", "There, there", thereThere, sympathetic },
    Reaction { "lent-umbrella", "Take it, I'm amphibious", lentUmbrella, sympathetic, devoted },
    Reaction { "emergency-cookie", "Emergency cookie", emergencyCookie, sympathetic, devoted },
    Reaction { "floating-on-tears", "Cried me a river", floatingOnTears, sad },
    Reaction { "brb-crying", "Be right back, crying", brbCrying, sad, frustrated },
    Reaction { "rainy-window", "Waiting for you", rainyWindow, sad },
    Reaction { "sunglasses", "Handled", sunglasses, smug, celebrating },
    Reaction { "sipping-tea", "I said what I said", sippingTea, smug, amused },
    Reaction { "mic-drop", "Nothing to add", micDrop, smug },
    Reaction { "night-watch", "Night watch", nightWatch, devoted },
    Reaction { "focus-guard", "Nobody gets past me", focusGuard, devoted },
    Reaction { "huge-heart", "All of it, for you", hugeHeart, devoted, sympathetic },
};

} // namespace

std::span<const Reaction> Reaction::all()
{
    return reactions;
}

QString Reaction::file() const
{
    return QLatin1String(id) + QStringLiteral(".webp");
}

std::vector<QString> Reaction::tags() const
{
    std::vector tags { MemeTags::rawValue(emotion) };
    if (secondEmotion)
        tags.push_back(MemeTags::rawValue(*secondEmotion));
    return tags;
}

MemeManifest Reaction::manifest()
{
    MemeManifest manifest;
    for (const auto& reaction : all())
        manifest.memes.push_back({ .file = reaction.file(),
            .emotions = reaction.tags(),
            .name = QLatin1String(reaction.name) });
    return manifest;
}

} // namespace pobblewig
