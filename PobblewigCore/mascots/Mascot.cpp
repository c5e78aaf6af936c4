#include "mascots/Mascot.h"

#include "mascots/Axolotl.h"
#include "mascots/Crab.h"
#include "mascots/Mouse.h"

#include <algorithm>

namespace pobblewig {

namespace {

using Offer = Mascot::Offer;

constexpr std::array table {
    Mascot { Crab::shape.id, QLatin1String("Skrit (crab)"), Offer::nobody, &Crab::shape,
        &Crab::colors, Mouse::schemes },
    Mascot { Mouse::shape.id, QLatin1String("Mouse"), Offer::userAndAssistant, &Mouse::shape,
        &Mouse::schemes.front(), Mouse::schemes },
    Mascot { Axolotl::shape.id, QLatin1String("Axolotl"), Offer::userAndAssistant, &Axolotl::shape,
        &Axolotl::schemes.front(), Axolotl::schemes },
    // Shows the user's own picture, or looks like the mouse without one.
    Mascot { QLatin1String("meme"), QLatin1String("Meme"), Offer::user, &Mouse::shape,
        &Mouse::schemes.front(), Mouse::schemes },
};

} // namespace

auto Mascot::all() -> All
{
    return table;
}

const Mascot* Mascot::find(QStringView id, All mascots)
{
    const auto found =
        std::ranges::find_if(mascots, [&](const auto& mascot) { return mascot.id == id; });
    return found == mascots.end() ? nullptr : &*found;
}

const Mascot& Mascot::userFacing(QStringView id, All mascots)
{
    const auto* mascot = find(id, mascots);
    if (mascot && mascot->offer != Offer::nobody)
        return *mascot;
    return *std::ranges::find_if(
        mascots, [](const auto& first) { return first.offer != Offer::nobody; });
}

} // namespace pobblewig
