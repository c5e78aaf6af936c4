#include "PobblewigLinux/desktop/InhibitorReasons.h"

#include "PobblewigLinux/desktop/CallLogic.h"
#include "support/Awaited.h"
#include "support/PrivateBus.h"
#include "support/TableRow.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

namespace pobblewig {

struct Inhibition {
    QString program;
    QString reason;
};

static QDBusArgument& operator<<(QDBusArgument& to, const Inhibition& inhibition)
{
    to.beginStructure();
    to << inhibition.program << inhibition.reason;
    to.endStructure();
    return to;
}

static const QDBusArgument& operator>>(const QDBusArgument& from, Inhibition&)
{
    return from;
}

class GNOMESession : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.SessionManager")

public Q_SLOTS:
    QList<QDBusObjectPath> GetInhibitors() { return { QDBusObjectPath(u"/inhibitor/1"_s) }; }
};

class GNOMEInhibitor : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.SessionManager.Inhibitor")

public Q_SLOTS:
    QString GetReason() { return u"WebRTC has active PeerConnections"_s; }
};

class PlasmaPower : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.Solid.PowerManagement.PolicyAgent")

public Q_SLOTS:
    QList<pobblewig::Inhibition> ListInhibitions() { return { { u"a"_s, u"Playing"_s } }; }
};

class InhibitorReasonsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void desktopsTellWhyTheScreenStaysAwake()
    {
        qDBusRegisterMetaType<Inhibition>();
        qDBusRegisterMetaType<QList<Inhibition>>();
        const PrivateBus bus;
        InhibitorReasons inhibitors(bus.connection("program"));
        QCOMPARE(awaited(inhibitors.reasons()), QStringList());
        GNOMESession session;
        GNOMEInhibitor inhibitor;
        PlasmaPower power;
        QVERIFY(bus.offer("org.gnome.SessionManager", "/org/gnome/SessionManager", &session));
        QVERIFY(bus.offer("org.gnome.SessionManager", "/inhibitor/1", &inhibitor));
        QVERIFY(bus.offer(
            "org.kde.Solid.PowerManagement", "/org/kde/Solid/PowerManagement/PolicyAgent", &power));
        QCOMPARE(awaited(inhibitors.reasons()),
            QStringList({ u"WebRTC has active PeerConnections"_s, u"Playing"_s }));
    }

    void aCallIsToldFromAFilm()
    {
        QVERIFY(CallLogic::isCallReason(u"WebRTC has active PeerConnections"_s));
        QVERIFY(CallLogic::isCallReason(u"Zoom Meeting"_s));
        QVERIFY(!CallLogic::isCallReason(u"Playing video"_s));
        QVERIFY(CallLogic::isCallApp(u"us.zoom.xos"_s));
        QVERIFY(!CallLogic::isCallApp(u"org.mozilla.firefox"_s));
    }
};

} // namespace pobblewig

Q_DECLARE_METATYPE(pobblewig::Inhibition)

QTEST_GUILESS_MAIN(pobblewig::InhibitorReasonsTest)
#include "InhibitorReasonsTest.moc"
