#pragma once

#include <QString>

namespace pobblewig {

/// Who the buddy looks like. The crab is drawn on occasion but is no choice of the user; `meme`
/// wears a picture of the user's own, and looks like the mouse until there is one.
enum class Mascot { skrit, mouse, axolotl, meme };

QString displayName(Mascot mascot);

/// The mascot that the user gets for a stored id: every unknown one, the crab too, is the mouse.
Mascot userFacingMascot(const QString& id);

/// A choice of mascot and colours, compared to see whether the buddy must be drawn anew.
struct MascotSetting {
    QString mascot;
    QString scheme;

    bool operator==(const MascotSetting&) const = default;
};

} // namespace pobblewig
