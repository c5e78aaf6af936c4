"""The buddy on the desktop beside its own window: the hot key, the tray, links."""

import json
import pathlib
import subprocess
import unittest

from program import BIN, Atspi, DemoModel, Program, wait_for, xdotool
from tray import Item, Tray

REGISTER = pathlib.Path(__file__).parents[2] / "scripts" / "register-url-scheme"


class PresenceEndToEndTest(unittest.TestCase):
    def setUp(self):
        self.program = self.enterContext(Program())
        self.is_chat_shown = self.program.window_titled("Pobblewig Chat")

    def settings(self):
        file = self.program.data / "settings.json"
        return json.loads(file.read_text()) if file.exists() else {}

    def start(self, *tools):
        for tool in tools:
            process = subprocess.Popen(tool)
            self.addCleanup(process.wait)
            self.addCleanup(process.kill)
        self.program.start()


class HotKeyEndToEndTest(PresenceEndToEndTest):
    def is_chat_in_front(self):
        name = subprocess.run(["xdotool", "getactivewindow", "getwindowname"], text=True,
                              capture_output=True, timeout=30).stdout
        return name.strip() == "Pobblewig Chat"

    def test_it_brings_the_chat_forward_with_the_keyboard_and_hides_it(self):
        self.start()
        # Whoever can hand something over comes after the hot key.
        self.program.open_chat()
        wait_for(self.is_chat_in_front, "the chat in front")
        terminal = subprocess.Popen(["xterm", "-e", "cat"])
        self.addCleanup(terminal.wait)
        self.addCleanup(terminal.kill)
        wait_for(lambda: not self.is_chat_in_front(), "the terminal in front")
        xdotool("type", "for the terminal")
        xdotool("key", "ctrl+alt+space")
        wait_for(self.is_chat_in_front, "the chat in front")
        xdotool("type", "for the buddy")
        message = self.program.control("Message")
        wait_for(lambda: Atspi.Text.get_text(message, 0, -1) == "for the buddy", "the typed text")
        xdotool("windowminimize", xdotool("getactivewindow").strip())
        wait_for(lambda: not self.is_chat_in_front(), "the chat out of sight")
        for is_shown in (True, False, True):
            xdotool("key", "ctrl+alt+space")
            wait_for(lambda: self.is_chat_in_front() == is_shown, f"the chat in front: {is_shown}")

    def test_keys_that_the_window_manager_has_are_told_as_taken(self):
        file = self.program.data.parent.parent / "config" / "Pobblewig" / "desktop.conf"
        file.parent.mkdir(parents=True)
        file.write_text("[chat]\nhotKey=Ctrl+Alt+Left\n")
        self.start()
        self.program.open_chat()
        wait_for(lambda: "Another program already uses Ctrl+Alt+Left"
                 in (self.program.shown("Notice") or ""), "the notice")


class TrayEndToEndTest(PresenceEndToEndTest):
    def start_in_a_tray(self):
        tray = Tray()
        self.addCleanup(tray.close)
        self.start()
        wait_for(lambda: tray.items, "the program in the tray")
        return Item(tray.items[0][0])

    def test_a_tray_on_the_bus_shows_the_settings_and_changes_them(self):
        item = self.start_in_a_tray()
        self.assertEqual(item.tool_tip(), "Pobblewig · Open-ended")
        self.assertEqual(item.entries()["Mode/Open-ended"]["toggle-state"], 1)
        self.assertFalse(item.entries()["Pause observation/Resume observation"]["enabled"])

        item.click("Mode/Focus")
        wait_for(lambda: self.settings().get("mode") == "focus", "the mode")
        wait_for(lambda: item.tool_tip() == "Pobblewig · Focus", "the mode in words")
        wait_for(lambda: item.entries()["Mode/Focus"]["toggle-state"] == 1, "the check")
        item.click("Mode/For 1 hour/Studying")
        wait_for(lambda: self.settings().get("modeRevertAt"), "the end of the mode")

        autostart = self.program.data.parent.parent / "config" / "autostart"
        item.click("Start at login")
        wait_for(lambda: list(autostart.glob("com.pobblewig.app.desktop")), "the autostart file")
        self.assertFalse(self.is_chat_shown())
        item.activate()
        wait_for(self.is_chat_shown, "the chat panel")
        item.click("Put the buddy away")
        is_buddy_shown = self.program.window_titled("Pobblewig")
        wait_for(lambda: not is_buddy_shown() and not self.is_chat_shown(), "the empty desktop")
        item.activate()
        wait_for(is_buddy_shown, "the buddy")
        item.click("Quit Pobblewig")
        self.assertEqual(self.program.process.wait(timeout=30), 0)

    def test_its_look_follows_the_state(self):
        model = DemoModel(delay_ms=60)
        self.addCleanup(model.stop)
        self.program.environment |= model.variables
        item = self.start_in_a_tray()
        self.program.open_chat()
        pictures = [item.picture()]
        for state, enter in (("asleep", lambda: item.click("Sleep now")),
                             ("thinking…", lambda: self.program.send("tell me a long story")),
                             ("observation paused",
                              lambda: item.click("Pause observation/Until resumed"))):
            enter()
            wait_for(lambda: item.tool_tip().endswith(state), f'"{state}"')
            wait_for(lambda: item.picture() not in pictures, f'a mark for "{state}"')
            pictures.append(item.picture())
            if self.program.is_usable("Stop"):
                self.program.press("Stop")
        item.click("Pause observation/Resume observation")
        wait_for(lambda: item.picture() == pictures[0], "the face without a mark")
        self.assertEqual(item.tool_tip(), "Pobblewig · Open-ended")

    def test_a_tray_that_embeds_takes_clicks(self):
        self.start(["trayer", "--edge", "top", "--widthtype", "request"])
        tray = xdotool("search", "--sync", "--onlyvisible", "--class", "trayer").split()[0]

        def icon():
            tree = subprocess.run(["xwininfo", "-id", tray, "-tree"], text=True, check=True,
                                  capture_output=True).stdout
            return next((line.split()[0] for line in tree.splitlines() if "pobblewig" in line),
                        None)

        window = wait_for(icon, "the icon in the tray")
        xdotool("mousemove", "--window", window, "8", "8", "click", "1")
        wait_for(self.is_chat_shown, "the chat panel")


class LinkEndToEndTest(PresenceEndToEndTest):
    def register(self, *arguments):
        subprocess.run([REGISTER, *arguments], check=True, env=self.program.environment)

    def test_a_link_reaches_a_build_that_runs_from_its_folder(self):
        file = self.program.data.parent / "applications" / "com.pobblewig.app.desktop"
        self.start()
        self.register(BIN / "pobblewig")
        written = file.read_text()
        self.register(BIN / "pobblewig")
        self.assertEqual(file.read_text(), written)
        subprocess.run(["gio", "open", "pobblewig://auth/callback?code=1"], check=True,
                       env=self.program.environment)
        wait_for(self.is_chat_shown, "the chat panel")

        self.register("--remove")
        self.assertFalse(file.exists())
        refused = subprocess.run(["gio", "open", "pobblewig://auth/callback?code=2"],
                                 env=self.program.environment, capture_output=True)
        self.assertNotEqual(refused.returncode, 0)


if __name__ == "__main__":
    unittest.main()
