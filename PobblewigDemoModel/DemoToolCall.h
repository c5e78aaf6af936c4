#pragma once

#include "foundation/JSONValue.h"

#include <QString>

namespace pobblewig {

/// A function that the demo model calls.
struct DemoToolCall {
    QString name;
    JSONValue::Object arguments;

    /// Whether it asks the app to change something, and not to look something up.
    bool isChange() const;

    QString argumentsText() const;
};

} // namespace pobblewig
