#pragma once

#include "activity/ObservationReport.h"
#include "activity/RuleEngine.h"

namespace pobblewig {

/// The program's state for the diagnostics page.
struct DiagnosticsInfo {
    ObservationReport observation;
    /// What each rule would do now, and why.
    QStringList ruleVerdicts;
    /// Why the companion spoke first, or did not.
    QStringList proactiveVerdicts;
    /// The number of memory tool calls by models since the start.
    int totalToolCalls = 0;
    /// The librarian's latest successful run, and its latest error.
    std::optional<TimePoint> librarianLastRunAt = std::nullopt;
    std::optional<QString> librarianLastError = std::nullopt;
    std::optional<TimePoint> librarianLastErrorAt = std::nullopt;

    /// The text of the whole page.
    QString text() const;

    bool operator==(const DiagnosticsInfo&) const = default;
};

} // namespace pobblewig
