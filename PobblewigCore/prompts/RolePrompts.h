#pragma once

#include "settings/AssistantRole.h"

#include <QStringView>

namespace pobblewig::RolePrompts {

/// What the role expects of the companion in a conversation; empty if it expects nothing.
QStringView principles(AssistantRole role);

} // namespace pobblewig::RolePrompts
