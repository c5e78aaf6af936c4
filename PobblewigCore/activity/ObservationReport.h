#pragma once

#include <QStringList>

namespace pobblewig {

/// What the program can see of other applications in this session, for the user who wonders.
struct ObservationReport {
    QString frontmostBackend = QStringLiteral("none");
    QString idleBackend = QStringLiteral("none");
    /// What cannot be observed, and why: sentences.
    QStringList notes;

    bool operator==(const ObservationReport&) const = default;
};

} // namespace pobblewig
