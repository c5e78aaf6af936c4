#pragma once

#include <QString>

namespace pobblewig {

/// The colours that the windows can have for what stands out.
enum class AccentChoice { coral, amber, moss, teal, sky, violet, rose, graphite };

/// A stored name that is unknown stands for coral.
AccentChoice accentChoice(const QString& name);

/// For the user.
QString displayName(AccentChoice accent);

} // namespace pobblewig
