#pragma once

#include <QProcess>
#include <QString>

namespace pobblewig {

/// A session bus of the test's own, which ends with this object.
class PrivateBus {
public:
    PrivateBus()
    {
        const auto options = QStringLiteral("--session --nofork --print-address");
        m_daemon.start(QStringLiteral("dbus-daemon"), options.split(u' '));
        while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead())
            ;
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    }

    ~PrivateBus()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(PrivateBus)

    /// Empty if the bus did not come up.
    const QString& address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};

} // namespace pobblewig
