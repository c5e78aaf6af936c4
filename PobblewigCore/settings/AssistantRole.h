#pragma once

#include <QString>

namespace pobblewig {

/// What the companion is to the user, besides company.
enum class AssistantRole { accountabilityPartner, tutor };

QString displayName(AssistantRole role);

} // namespace pobblewig
