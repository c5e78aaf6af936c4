#pragma once

#include "activity/ObservationReport.h"
#include "activity/RuleEngine.h"

namespace pobblewig {

/// How the program is doing, for the diagnostics page.
struct DiagnosticsInfo {
    ObservationReport observation;
    /// What each rule would do now, and why.
    QStringList ruleVerdicts;
    /// Memory tools that models called since the start.
    int totalToolCalls = 0;
    /// Of the librarian: its latest run that went well, and what went wrong since.
    std::optional<TimePoint> librarianLastRunAt = std::nullopt;
    std::optional<QString> librarianLastError = std::nullopt;
    std::optional<TimePoint> librarianLastErrorAt = std::nullopt;

    /// The whole page.
    QString text() const;

    bool operator==(const DiagnosticsInfo&) const = default;
};

} // namespace pobblewig
