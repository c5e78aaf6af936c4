#pragma once

#include "mascots/RGB.h"

#include <QLatin1String>
#include <QStringView>

#include <span>

namespace pobblewig {

struct Mascot;

struct LetterColor {
    char letter;
    RGB color;
};

/// Colours for a mascot, for the same letters as its shape has.
struct MascotColorScheme {
    QLatin1String id;
    QLatin1String displayName;
    std::span<const LetterColor> letters;
    RGB eyeColor;
    /// Of the petting paw and the claws.
    RGB pawColor;

    /// The mascot's first scheme if it has none of that id.
    static const MascotColorScheme& forID(QStringView id, const Mascot& mascot);
};

} // namespace pobblewig
