#include "prompts/PlatformWording.h"

namespace pobblewig {

const PlatformWording PlatformWording::macOS {
    .identity = u"You are the user's wiggling, a private personal companion living on their Mac.",
};

const PlatformWording PlatformWording::linuxDesktop {
    .identity =
        u"You are the user's wiggling, a private personal companion living on their desktop.",
};

} // namespace pobblewig
