#pragma once

#include <QStringList>

namespace pobblewig {

/// What the program can observe of other applications in this session, for display to the user.
struct ObservationReport {
    QString frontmostBackend = QStringLiteral("none");
    QString idleBackend = QStringLiteral("none");
    /// Sentences that say what cannot be observed, and why.
    QStringList notes;

    bool operator==(const ObservationReport&) const = default;
};

} // namespace pobblewig
