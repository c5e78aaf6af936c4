#pragma once

#include "foundation/JSONValue.h"

#include <QString>

namespace pobblewig {

/// A function call by the demo model.
struct DemoToolCall {
    QString name;
    JSONValue::Object arguments;

    QString argumentsText() const;
};

} // namespace pobblewig
