#pragma once

#include "foundation/JSONValue.h"

#include <QString>

#include <vector>

namespace pobblewig {

/// Something that the demo model would have the app remember.
struct DemoFinding {
    /// Of the answer: "notes", "observations", "referenceItems" or "proposedSections".
    QString list;
    JSONValue::Object entry;

    bool operator==(const DemoFinding&) const = default;
};

using DemoFindings = std::vector<DemoFinding>;

} // namespace pobblewig
