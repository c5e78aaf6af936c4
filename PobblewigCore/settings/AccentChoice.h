#pragma once

#include <QString>

namespace pobblewig {

/// The accent colours that the windows can have.
enum class AccentChoice { coral, amber, moss, teal, sky, violet, rose, graphite };

/// An unknown stored name gives coral.
AccentChoice accentChoice(const QString& name);

/// The name for the user.
QString displayName(AccentChoice accent);

} // namespace pobblewig
