#include "mascots/Mascot.h"

namespace pobblewig {

QString displayName(Mascot mascot)
{
    switch (mascot) {
    case Mascot::skrit:
        return QStringLiteral("Skrit (crab)");
    case Mascot::mouse:
        return QStringLiteral("Mouse");
    case Mascot::axolotl:
        return QStringLiteral("Axolotl");
    case Mascot::meme:
        return QStringLiteral("Meme");
    }
    Q_UNREACHABLE();
}

Mascot userFacingMascot(const QString& id)
{
    if (id == u"axolotl")
        return Mascot::axolotl;
    if (id == u"meme")
        return Mascot::meme;
    return Mascot::mouse;
}

} // namespace pobblewig
