#pragma once

#include "foundation/JSONValue.h"

namespace pobblewig::MemeClassifierSchemas {

/// The form of the model's answer.
const JSONValue::Object& reaction();

} // namespace pobblewig::MemeClassifierSchemas
