#pragma once

#include "PobblewigLinux/desktop/ApplicationBus.h"

#include <QDir>
#include <QLockFile>

namespace pobblewig {

/// Sees to it that a data directory has one process; another directory may have another process,
/// on the same bus too.
class SingleInstance {
public:
    enum class Claim {
        /// This process is the one. So it is where the directory cannot be written to and hence
        /// not be locked.
        first,
        /// Another process is, and has been asked to come forward or to open the link.
        handedOver,
        /// Another process is, and gives no answer.
        unanswered,
    };

    SingleInstance(const QDir& dataDirectory, ApplicationBus& bus);

    /// To be called once, before the directory is read. May wait for some seconds when the other
    /// process is busy. The claim lasts as long as this object.
    Claim claim(const std::optional<QUrl>& link);

    /// The first process takes the others' requests from here on; until then they wait.
    void announce();

    /// For the user, once there was no answer.
    QString refusal() const;

private:
    bool mayProceed(std::chrono::milliseconds patience);
    QString busName() const;

    QDir m_directory;
    ApplicationBus& m_bus;
    QLockFile m_lock;
};

} // namespace pobblewig
