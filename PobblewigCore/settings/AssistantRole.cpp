#include "settings/AssistantRole.h"

namespace pobblewig {

QString displayName(AssistantRole role)
{
    return role == AssistantRole::tutor ? QStringLiteral("Tutor")
                                        : QStringLiteral("Accountability partner");
}

} // namespace pobblewig
