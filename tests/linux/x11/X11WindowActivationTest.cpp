#include "PobblewigLinux/x11/X11WindowActivation.h"

#include "support/ForeignWindow.h"

#include <QTest>

namespace pobblewig {

class X11WindowActivationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theWindowIsActivatedInTheNameOfTheUser()
    {
        const auto x11 = X11Connection::create();
        const auto manager = X11Connection::open({});
        QVERIFY(x11 && manager);
        const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(manager->get(), manager->root(), XCB_CW_EVENT_MASK, &events);
        QVERIFY(!manager->values(manager->root(), "_NET_SUPPORTED").empty());

        const ForeignWindow first("first", { 10, 10, 100, 100 }, 0xff0000);
        const ForeignWindow second("second", { 300, 10, 100, 100 }, 0x00ff00);
        QTRY_COMPARE(active(*x11), second.id());
        X11WindowActivation(*x11).activate(first.id());
        QTRY_COMPARE(active(*x11), first.id());

        // A window manager that goes by the times of the user's input heeds only such a source.
        constexpr std::uint32_t forTheUser = 2;
        QCOMPARE(source(*manager, first.id()), forTheUser);
    }

private:
    static xcb_window_t active(X11Connection& x11)
    {
        const auto windows = x11.values(x11.root(), "_NET_ACTIVE_WINDOW");
        return windows.empty() ? XCB_WINDOW_NONE : windows.front();
    }

    /// Who asked for the window's activation, among what has arrived; 0 if nobody did.
    static std::uint32_t source(X11Connection& manager, xcb_window_t window)
    {
        using Event = X11Reply<xcb_generic_event_t>;
        const auto activation = manager.atom("_NET_ACTIVE_WINDOW");
        while (const auto event = Event(xcb_poll_for_event(manager.get()))) {
            void* const raw = event.get();
            const auto* const message = static_cast<xcb_client_message_event_t*>(raw);
            if ((message->response_type & 0x7f) == XCB_CLIENT_MESSAGE && message->type == activation
                && message->window == window)
                return message->data.data32[0];
        }
        return 0;
    }
};

} // namespace pobblewig

QTEST_MAIN(pobblewig::X11WindowActivationTest)
#include "X11WindowActivationTest.moc"
