#pragma once

#include "PobblewigLinux/desktop/ApplicationBus.h"
#include "PobblewigLinux/desktop/DirectoryLock.h"

namespace pobblewig {

/// Ensures that only one process uses a data directory. Other directories may have other processes,
/// even on the same bus.
class SingleInstance {
public:
    enum class Claim {
        /// This process is the first. Also returned if the directory cannot be opened, and no
        /// process answers on the bus.
        first,
        /// Another process exists and was asked to come to the front or to open the link.
        handedOver,
        /// Another process exists but does not answer.
        unanswered,
    };

    SingleInstance(const QDir& dataDirectory, ApplicationBus& bus);

    /// Whether another process seems to use the directory. A quick look that claims nothing.
    bool isContested() const { return m_lock.isHeldByAnother(); }

    /// Call this before the directory is read. May wait for the disk, or some seconds if the other
    /// process is busy. The claim lasts as long as this object; further calls return the same.
    Claim claim(const std::optional<QUrl>& link);

    /// Starts to accept requests of other processes; until then they wait.
    void announce();

    /// A text for the user if the claim was `unanswered`.
    QString refusal() const;

private:
    QString busName() const;

    QDir m_directory;
    ApplicationBus& m_bus;
    DirectoryLock m_lock;
};

} // namespace pobblewig
