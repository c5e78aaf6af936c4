"""A desktop's tray that speaks D-Bus: it keeps what is put into it and uses its menu."""

import os
import threading

from gi.repository import Gio, GLib

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
INTERFACE = f"""
<node><interface name="{WATCHER}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


class Service:
    """An object on the session bus, served by a thread of its own until it is closed."""

    def __init__(self, name, path, interface):
        self.name, self.path = name, path
        self.interface = Gio.DBusNodeInfo.new_for_xml(interface).interfaces[0]
        self.context = GLib.MainContext()
        self.loop = GLib.MainLoop(self.context)
        ready = threading.Event()
        self.thread = threading.Thread(target=self.serve, args=[ready])
        self.thread.start()
        assert ready.wait(20)

    def serve(self, ready):
        self.context.push_thread_default()
        self.bus = connect()
        self.bus.register_object(self.path, self.interface, self.take, self.tell, None)
        call(self.bus, "org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
             GLib.Variant("(su)", (self.name, 4)))
        ready.set()
        self.loop.run()
        self.bus.close_sync()
        self.context.pop_thread_default()

    def close(self):
        self.context.invoke_full(GLib.PRIORITY_DEFAULT, self.loop.quit)
        self.thread.join()

    def tell(self, _bus, _sender, _path, _interface, _name):
        """The value of a property."""


class Tray(Service):
    def __init__(self):
        self.items = []
        super().__init__(WATCHER, "/StatusNotifierWatcher", INTERFACE)

    def take(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            self.items.append((sender, arguments.unpack()[0]))
        invocation.return_value(None)

    def tell(self, _bus, _sender, _path, _interface, name):
        return {"IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0),
                "RegisteredStatusNotifierItems": GLib.Variant("as", [])}[name]


class Item:
    """What a program has in a tray."""

    def __init__(self, owner):
        self.owner = owner
        self.bus = connect()

    def property(self, name):
        arguments = GLib.Variant("(ss)", (ITEM, name))
        return call(self.bus, self.owner, "/StatusNotifierItem", "org.freedesktop.DBus.Properties",
                    "Get", arguments)[0]

    def tool_tip(self):
        return self.property("ToolTip")[2]

    def picture(self):
        """The bytes of the smallest size."""
        return min(self.property("IconPixmap"))[2]

    def activate(self):
        call(self.bus, self.owner, "/StatusNotifierItem", ITEM, "Activate",
             GLib.Variant("(ii)", (0, 0)))

    def entries(self):
        """Each entry's properties by its labels, such as "Mode/Focus"."""
        arguments = GLib.Variant("(iias)", (0, -1, []))
        _revision, root = call(self.bus, self.owner, self.property("Menu"), MENU, "GetLayout",
                               arguments)
        found = {}
        add_entries(root, "", found)
        return found

    def click(self, labels):
        entry = self.entries()[labels]
        arguments = GLib.Variant("(isvu)", (entry["id"], "clicked", GLib.Variant("i", 0), 0))
        call(self.bus, self.owner, self.property("Menu"), MENU, "Event", arguments)


def add_entries(parent, prefix, found):
    for number, properties, children in parent[2]:
        label = properties.get("label", "").replace("_", "")
        if label:
            found[prefix + label] = properties | {"id": number}
            add_entries((number, properties, children), prefix + label + "/", found)


def connect():
    flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
             | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
    return Gio.DBusConnection.new_for_address_sync(
        os.environ["DBUS_SESSION_BUS_ADDRESS"], flags, None, None)


def call(bus, owner, path, interface, method, arguments):
    answer = bus.call_sync(owner, path, interface, method, arguments, None,
                           Gio.DBusCallFlags.NONE, 20000, None)
    return answer.unpack()
