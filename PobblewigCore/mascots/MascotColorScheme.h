#pragma once

#include "mascots/Mascot.h"
#include "mascots/RGB.h"

#include <QString>

#include <map>
#include <vector>

namespace pobblewig {

/// What each letter of a bitmap looks like.
using MascotPalette = std::map<char, RGB>;

/// Colours for a mascot, for the same letters as its sprite has.
struct MascotColorScheme {
    QString id;
    QString displayName;
    MascotPalette palette;
    RGB eyeColor;
    RGB pawColor;

    static const std::vector<MascotColorScheme>& mouseSchemes();
    static const std::vector<MascotColorScheme>& axolotlSchemes();

    /// The axolotl has its own; every other mascot has the mouse's.
    static const std::vector<MascotColorScheme>& schemes(Mascot mascot);

    /// The mascot's first scheme if it has none of that id.
    static const MascotColorScheme& forID(const QString& id, Mascot mascot);

    bool operator==(const MascotColorScheme&) const = default;
};

} // namespace pobblewig
