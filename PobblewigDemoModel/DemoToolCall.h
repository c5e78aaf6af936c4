#pragma once

#include "foundation/JSONValue.h"

#include <QString>

namespace pobblewig {

/// A function that the demo model calls.
struct DemoToolCall {
    QString name;
    JSONValue::Object arguments;

    QString argumentsText() const;
};

} // namespace pobblewig
