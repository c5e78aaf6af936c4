#pragma once

#include "mascots/MascotColorScheme.h"
#include "mascots/MascotShape.h"

#include <QString>

namespace pobblewig {

/// Who the buddy looks like. What can be chosen, what is checked, the prompts and the pictures all
/// derive from one array of these: an entry is all that a new mascot takes, besides its drawing.
struct Mascot {
    enum class Offer {
        /// Drawn on occasion.
        nobody,
        /// The user can choose it in the settings.
        user,
        /// The prompts name it, too.
        userAndAssistant
    };
    using All = std::span<const Mascot>;

    QLatin1String id;
    QLatin1String displayName;
    Offer offer = Offer::nobody;
    const MascotShape* shape = nullptr;
    /// What it wears of itself.
    const MascotColorScheme* colors = nullptr;
    /// What it can be given to wear.
    std::span<const MascotColorScheme> schemes;

    /// In the order in which they are offered.
    static All all();

    /// Null for an unknown id.
    static const Mascot* find(QStringView id, All mascots = all());

    /// The mascot that the user gets for a stored id. An unknown one, or one that is nobody's
    /// choice, is the first that is: the mouse.
    static const Mascot& userFacing(QStringView id, All mascots = all());
};

/// A choice of mascot and colours, compared to see whether the buddy must be drawn anew.
struct MascotSetting {
    QString mascot;
    QString scheme;

    bool operator==(const MascotSetting&) const = default;
};

} // namespace pobblewig
