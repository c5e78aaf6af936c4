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

/// Colours for a mascot, by the letters of its shape.
struct MascotColorScheme {
    QLatin1String id;
    QLatin1String displayName;
    std::span<const LetterColor> letters;
    RGB eyeColor;
    /// The colour of the petting paw and the claws.
    RGB pawColor;

    /// The mascot's first scheme if it has none with that id.
    static const MascotColorScheme& forID(QStringView id, const Mascot& mascot);
};

} // namespace pobblewig
