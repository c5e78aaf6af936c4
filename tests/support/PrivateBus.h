#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QTemporaryDir>

namespace pobblewig {

/// A session bus of the test's own, which ends with this object. It starts no services: whatever
/// is installed, nobody answers but who was put there.
class PrivateBus {
public:
    PrivateBus()
    {
        const auto path = m_scratch.filePath(QStringLiteral("bus.conf"));
        QFile configuration(path);
        if (configuration.open(QIODevice::WriteOnly))
            configuration.write("<busconfig><type>session</type><listen>unix:path="
                + m_scratch.filePath(QStringLiteral("bus")).toUtf8()
                + "</listen><policy context='default'><allow send_destination='*'/>"
                  "<allow receive_sender='*'/>"
                  "<allow own='*'/></policy></busconfig>");
        configuration.close();
        m_daemon.start(QStringLiteral("dbus-daemon"),
            { QStringLiteral("--config-file=") + path, QStringLiteral("--nofork"),
                QStringLiteral("--print-address") });
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

    /// The same one for the same name.
    QDBusConnection connection(const char* name) const
    {
        return QDBusConnection::connectToBus(m_address, QLatin1String(name) + m_address);
    }

    /// Puts a service of the desktop's on the bus. False if it is not there now.
    bool offer(const char* service, const char* path, QObject* object) const
    {
        auto desktop = connection("desktop");
        desktop.unregisterObject(QLatin1String(path));
        return desktop.registerObject(
                   QLatin1String(path), object, QDBusConnection::ExportAllContents)
            && desktop.registerService(QLatin1String(service));
    }

    bool withdraw(const char* service) const
    {
        return connection("desktop").unregisterService(QLatin1String(service));
    }

    /// Sends a signal of the desktop's.
    void signal(const char* path, const char* interface, const char* name,
        const QVariantList& arguments) const
    {
        auto message = QDBusMessage::createSignal(
            QLatin1String(path), QLatin1String(interface), QLatin1String(name));
        message.setArguments(arguments);
        connection("desktop").send(message);
    }

private:
    QTemporaryDir m_scratch;
    QProcess m_daemon;
    QString m_address;
};

} // namespace pobblewig
