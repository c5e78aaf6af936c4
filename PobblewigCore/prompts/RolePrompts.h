#pragma once

#include "settings/AssistantRole.h"

#include <QStringView>

namespace pobblewig::RolePrompts {

/// What the role asks of the companion in a conversation; empty if it asks nothing there.
QStringView principles(AssistantRole role);

} // namespace pobblewig::RolePrompts
