#pragma once

#include <QProcess>
#include <QString>

namespace pobblewig {

/// A session bus of the test's own, which ends with this object.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// Empty if the bus did not come up.
    const QString& address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};

} // namespace pobblewig
