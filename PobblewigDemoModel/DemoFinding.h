#pragma once

#include "foundation/JSONValue.h"

#include <QString>

#include <vector>

namespace pobblewig {

/// Something that the app should remember.
struct DemoFinding {
    /// The list in the answer: "notes", "observations", "referenceItems" or "proposedSections".
    QString list;
    JSONValue::Object entry;

    bool operator==(const DemoFinding&) const = default;
};

using DemoFindings = std::vector<DemoFinding>;

} // namespace pobblewig
