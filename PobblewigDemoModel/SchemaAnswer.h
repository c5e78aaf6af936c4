#pragma once

#include "foundation/JSONValue.h"

namespace pobblewig::SchemaAnswer {

/// The emptiest value that a JSON Schema allows: no optional property, no list entry, no text, the
/// first of several choices, and nothing where null is a choice. Asked what is worth remembering,
/// a model answers so when there is nothing.
JSONValue emptiest(const JSONValue& schema);

} // namespace pobblewig::SchemaAnswer
