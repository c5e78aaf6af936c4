#pragma once

#include <QString>

namespace pobblewig {

/// What the companion does for the user, besides keeping company.
enum class AssistantRole { accountabilityPartner, tutor };

QString displayName(AssistantRole role);

} // namespace pobblewig
