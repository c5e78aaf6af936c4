"""Drives the real program as a person would: by what its controls are called and what they show."""

import functools
import json
import os
import pathlib
import signal
import subprocess
import tempfile
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

BIN = pathlib.Path(os.environ["POBBLEWIG_BIN"])


def wait_for(condition, what, limit=30.0):
    """The condition's first true value; fails after the limit, in seconds."""
    deadline = time.monotonic() + limit
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {limit:g} s in vain for {what}")
        time.sleep(0.02)


def steadily(read):
    """Reads a window anew while a part of it goes away under the reader."""
    @functools.wraps(read)
    def steady(*arguments):
        deadline = time.monotonic() + 5.0
        while True:
            try:
                return read(*arguments)
            except GLib.Error:
                if time.monotonic() > deadline:
                    raise
    return steady


class DemoModel:
    """The scripted model server, as it ships."""

    def __init__(self, delay_ms=0, arguments=()):
        self.process = subprocess.Popen(
            [BIN / "pobblewig-demo-model", "--delay-ms", str(delay_ms), *arguments],
            stdout=subprocess.PIPE, text=True)
        address = self.process.stdout.readline().removeprefix("listening on ").strip()
        self.variables = {
            "MAIN_MODEL_BASE_URL": f"http://{address}/v1",
            "MAIN_MODEL_ID": "demo model",
            "MAIN_MODEL_API_KEY": "demo",
            "MAIN_MODEL_PROVIDER": "demo model",
        }

    def stop(self):
        self.process.kill()
        self.process.communicate()


class Program:
    """One home directory, and the program started in it as often as a test likes."""

    def __init__(self, variables=None, is_set_up=True):
        self.scratch = tempfile.TemporaryDirectory(prefix="pobblewig-home-")
        home = pathlib.Path(self.scratch.name)
        self.home = home
        self.data = home / "data" / "Pobblewig"
        if is_set_up:
            self.data.mkdir(parents=True)
            (self.data / "settings.json").write_text('{"hasCompletedOnboarding": true}')
        self.environment = os.environ | {
            "HOME": str(home),
            "XDG_DATA_HOME": str(home / "data"),
            "XDG_CONFIG_HOME": str(home / "config"),
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        } | (variables or {})
        self.process = None
        self.menus = 0
        self.log = open(home / "log", "w+")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.kill()
        self.log.close()
        self.scratch.cleanup()

    def start(self):
        self.process = self.launch()
        wait_for(self.window_titled("Pobblewig"), "the buddy's window")

    def launch(self, *arguments):
        return subprocess.Popen([BIN / "pobblewig", *arguments], env=self.environment,
                                stdout=self.log, stderr=self.log)

    def kill(self):
        if self.process:
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()
            self.process = None

    def open_chat(self):
        """As any later launch does."""
        assert self.launch().wait(timeout=30) == 0
        wait_for(self.window_titled("Pobblewig Chat"), "the chat panel")

    def click_the_buddy(self):
        window = xdotool("search", "--sync", "--onlyvisible", "--name", "^Pobblewig$").split()[0]
        size = dict(line.split("=") for line in
                    xdotool("getwindowgeometry", "--shell", window).split())
        middle = [str(int(size["WIDTH"]) // 2), str(int(size["HEIGHT"]) * 2 // 3)]
        xdotool("mousemove", "--window", window, *middle, "click", "1")
        wait_for(self.window_titled("Pobblewig Chat"), "the chat panel")

    def send(self, text):
        Atspi.EditableText.set_text_contents(self.control("Message"), text)
        self.press("Send")

    def typed(self):
        """What stands in the input."""
        return Atspi.Text.get_text(self.control("Message"), 0, -1)

    def copied(self):
        """What pasting gives."""
        field = self.control("Message")
        Atspi.EditableText.set_text_contents(field, "")
        Atspi.EditableText.paste_text(field, 0)
        text = self.typed()
        Atspi.EditableText.set_text_contents(field, "")
        return text

    def choose(self, row, number):
        """An entry of the menu of a row of the conversation, both counted from 0."""
        place = wait_for(lambda: self.place_of(row), "the row")
        # Not where the last menu was: two clicks there could make a double one.
        self.menus += 1
        point = str(place.x + place.width // 2 + self.menus % 2 * 20), str(place.y + place.height // 2)
        self.choose_from(lambda: xdotool("mousemove", *point, "click", "3"), number)

    def choose_from(self, open_menu, number):
        before = self.windows()
        open_menu()
        menu = wait_for(lambda: self.windows() - before, "the menu")
        xdotool("key", *["Down"] * (number + 1), "Return")
        wait_for(lambda: not self.windows() & menu, "the end of the menu")

    def windows(self):
        """Those on the screen, with menus, which are no part of what assistive technology sees."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid",
                                str(self.process.pid)], timeout=30, capture_output=True, text=True)
        return set(found.stdout.split())

    @steadily
    def place_of(self, row):
        """On the screen; rows are counted from the end with negative numbers."""
        rows = list(children(self.control("Conversation")))
        place = Atspi.Component.get_extents(rows[row], Atspi.CoordType.SCREEN)
        return place if place.height > 0 else None

    def press(self, name):
        button = wait_for(lambda: self.usable(name), f'the button "{name}"')
        Atspi.Action.do_action(button, 0)

    def unfold(self):
        """Shows the proposals that wait, all of them before the first is looked for."""
        self.press("Show")
        wait_for(lambda: self.is_usable("Hide"), "the proposals")

    def is_usable(self, name):
        return self.usable(name) is not None

    @steadily
    def usable(self, name):
        """The control of that name that can be pressed now, or nothing."""
        application = self.application()
        found = all_below(application, name) if application else ()
        return next(filter(can_be_pressed, found), None)

    @steadily
    def shown(self, name):
        """The text of a label that is on the screen, or nothing."""
        control = self.find(name)
        if not control or not control.get_state_set().contains(Atspi.StateType.SHOWING):
            return None
        return control.get_description() or control.get_name()

    def tab_to(self, name):
        """Brings the focus there by the keyboard."""
        for _ in range(20):
            before = self.focused()
            if before == name:
                return
            xdotool("key", "Tab")
            wait_for(lambda: self.focused() not in (None, before), "another focus")
        raise AssertionError(f'no way by Tab to "{name}"')

    @steadily
    def focused(self):
        """The name of the control that has the focus, or nothing."""
        return next(focused_below(self.application()), None)

    @steadily
    def texts_shown(self):
        """All that the windows say at the moment."""
        return " ".join(shown_below(self.application()))

    @steadily
    def texts_below(self, node):
        """All that a part of the window says."""
        own = [node.get_name(), node.get_description()]
        return " ".join(filter(None, own + [self.texts_below(child) for child in children(node)]))

    @steadily
    def conversation(self):
        """The rows of the conversation as assistive technology reads them."""
        return [row.get_name() for row in children(self.control("Conversation"))]

    def chat_file(self):
        file = self.data / "chat.json"
        return json.loads(file.read_text()) if file.exists() else []

    def log_text(self):
        self.log.flush()
        return pathlib.Path(self.log.name).read_text()

    def control(self, name):
        return wait_for(lambda: self.find(name), f'a control named "{name}"')

    @steadily
    def find(self, name):
        application = self.application()
        return next(all_below(application, name), None) if application else None

    def window_titled(self, title):
        @steadily
        def find():
            application = self.application()
            return application and any(
                child.get_name() == title
                and child.get_state_set().contains(Atspi.StateType.SHOWING)
                for child in children(application))
        return find

    def application(self):
        desktop = Atspi.get_desktop(0)
        return next((child for child in children(desktop)
                     if self.process and child.get_process_id() == self.process.pid), None)


def xdotool(*arguments):
    return subprocess.run(["xdotool", *arguments], check=True, timeout=30, capture_output=True,
                          text=True).stdout


def children(node):
    return filter(None, (node.get_child_at_index(at) for at in range(node.get_child_count())))


def focused_below(node):
    for child in children(node):
        # The current row of a list says so even without the focus.
        if child.get_role() == Atspi.Role.LIST_ITEM:
            return
        if child.get_name() and child.get_state_set().contains(Atspi.StateType.FOCUSED):
            yield child.get_name()
        yield from focused_below(child)


def shown_below(node):
    for child in children(node):
        if not child.get_state_set().contains(Atspi.StateType.SHOWING):
            continue
        yield from filter(None, (child.get_name(), child.get_description()))
        if child.get_role() == Atspi.Role.TEXT:
            yield Atspi.Text.get_text(child, 0, -1)
        yield from shown_below(child)


def all_below(node, name):
    """What has that name, except windows."""
    for child in children(node):
        if child.get_name() == name and child.get_role() != Atspi.Role.FRAME:
            yield child
        if child.get_role() != Atspi.Role.LIST:
            yield from all_below(child, name)


def can_be_pressed(control):
    # The label of a field has its name.
    states = control.get_state_set()
    return (control.get_role() != Atspi.Role.LABEL
            and states.contains(Atspi.StateType.SENSITIVE)
            and states.contains(Atspi.StateType.SHOWING))
