#pragma once

#include "foundation/JSONValue.h"

namespace pobblewig::SchemaAnswer {

/// The emptiest value that a JSON Schema allows: no optional properties, no list entries, no text,
/// the first of several choices, and null if it is allowed. A model gives this answer if nothing is
/// worth remembering.
JSONValue emptiest(const JSONValue& schema);

} // namespace pobblewig::SchemaAnswer
