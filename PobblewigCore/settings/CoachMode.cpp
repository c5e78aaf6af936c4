#include "settings/CoachMode.h"

namespace pobblewig {

QString displayName(CoachMode mode)
{
    switch (mode) {
    case CoachMode::openEnded:
        return QStringLiteral("Open-ended");
    case CoachMode::focus:
        return QStringLiteral("Focus");
    case CoachMode::studying:
        return QStringLiteral("Studying");
    case CoachMode::relaxing:
        return QStringLiteral("Relaxing");
    case CoachMode::exercising:
        return QStringLiteral("Exercising");
    case CoachMode::doNotDisturb:
        return QStringLiteral("Do Not Disturb");
    }
    Q_UNREACHABLE();
}

} // namespace pobblewig
