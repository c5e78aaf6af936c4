#pragma once

#include "mascots/MascotColorScheme.h"
#include "mascots/MascotShape.h"

#include <QString>

namespace pobblewig {

/// The character that the buddy appears as. The user's choices, their checks, the prompts and the
/// pictures all derive from one array: a new mascot needs only an entry and its drawing.
struct Mascot {
    enum class Offer {
        /// Drawn in special cases only.
        nobody,
        /// The user can choose it in the settings.
        user,
        /// The prompts mention it, too.
        userAndAssistant
    };
    using All = std::span<const Mascot>;

    QLatin1String id;
    QLatin1String displayName;
    Offer offer = Offer::nobody;
    const MascotShape* shape = nullptr;
    /// Its own colours.
    const MascotColorScheme* colors = nullptr;
    /// The colour schemes that the user can choose.
    std::span<const MascotColorScheme> schemes;

    /// In the order in which they are offered.
    static All all();

    /// Null for an unknown id.
    static const Mascot* find(QStringView id, All mascots = all());

    /// The mascot that the user sees for a stored id: the mouse, if the id is unknown or the mascot
    /// cannot be chosen.
    static const Mascot& userFacing(QStringView id, All mascots = all());
};

/// A mascot and its colours, compared to see whether the buddy must be redrawn.
struct MascotSetting {
    QString mascot;
    QString scheme;

    bool operator==(const MascotSetting&) const = default;
};

} // namespace pobblewig
