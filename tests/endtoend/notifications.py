"""A desktop's notification server: it keeps what it is asked to show and presses what is on it."""

from gi.repository import GLib

from tray import Service

NAME = "org.freedesktop.Notifications"
PATH = "/org/freedesktop/Notifications"
INTERFACE = f"""
<node><interface name="{NAME}">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="Notify">
    <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{{sv}}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
  </method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
</interface></node>"""


class Notifications(Service):
    def __init__(self):
        self.shown = []
        super().__init__(NAME, PATH, INTERFACE)

    def take(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        if method == "GetCapabilities":
            invocation.return_value(GLib.Variant("(as)", (["body", "actions"],)))
        elif method == "Notify":
            body, actions = arguments.unpack()[4:6]
            self.shown.append((body, dict(zip(actions[1::2], actions[::2]))))
            invocation.return_value(GLib.Variant("(u)", (len(self.shown),)))
        else:
            invocation.return_value(None)

    def press(self, number, label):
        """A button of the notification of that number, counted from 0."""
        action = self.shown[number][1][label]
        self.bus.emit_signal(None, PATH, NAME, "ActionInvoked",
                             GLib.Variant("(us)", (number + 1, action)))
