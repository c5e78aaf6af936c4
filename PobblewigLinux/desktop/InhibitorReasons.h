#pragma once

#include "foundation/Task.h"

#include <QDBusConnection>
#include <QStringList>

namespace pobblewig {

/// Why programs keep the screen awake, as GNOME's session manager and Plasma's power manager know
/// it. A desktop that does not tell has no reasons.
class InhibitorReasons {
public:
    explicit InhibitorReasons(QDBusConnection bus);

    Task<QStringList> reasons();

private:
    Task<QDBusMessage> call(QString service, QString path, QString interface, QString method);
    Task<QStringList> inGNOME();
    Task<QStringList> inPlasma();

    QDBusConnection m_bus;
};

} // namespace pobblewig
