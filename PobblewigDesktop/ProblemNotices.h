#pragma once

#include "AppCoordinator.h"

#include <QCoreApplication>

namespace pobblewig {

/// Tells the user what does not work at the moment, each problem once.
class ProblemNotices {
    Q_DECLARE_TR_FUNCTIONS(ProblemNotices)

public:
    /// Returns all problems in words if they have changed since the last call; empty once there
    /// are none.
    std::optional<QString> news(const PublishedState& state);

private:
    void noteLibrarian(const LibrarianState& librarian);

    QStringList m_told;
    /// Told once: empty when the librarian works again.
    std::optional<QString> m_librarianNotice;
};

} // namespace pobblewig
