#include "memes/reactions/MemeSilence.h"

namespace pobblewig {

std::optional<QString> memeSilence(CoachMode mode, Occupation occupation)
{
    if (mode == CoachMode::doNotDisturb)
        return QStringLiteral("do not disturb is on");
    switch (occupation) {
    case Occupation::none:
        return std::nullopt;
    case Occupation::fullScreen:
        return QStringLiteral("a window fills the screen");
    case Occupation::call:
        return QStringLiteral("you are in a call");
    }
    return std::nullopt;
}

} // namespace pobblewig
