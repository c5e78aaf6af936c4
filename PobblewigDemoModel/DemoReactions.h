#pragma once

#include "foundation/JSONValue.h"

#include <QDateTime>

namespace pobblewig::DemoReactions {

/// The emotion of an exchange by the words that the user wrote; "none" if nothing stands out or
/// the matter is serious.
JSONValue judged(const QString& prompt, const QDateTime& now);

} // namespace pobblewig::DemoReactions
