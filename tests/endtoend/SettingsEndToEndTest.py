"""The settings window as a user reaches it, and the file that it changes."""

import json
import unittest

from program import Atspi, Program, wait_for, xdotool


class SettingsEndToEndTest(unittest.TestCase):
    def setUp(self):
        self.program = self.enterContext(Program())
        self.program.start()
        self.program.open_chat()

    def setting(self, key):
        file = self.program.data / "settings.json"
        return json.loads(file.read_text()).get(key) if file.exists() else None

    def wait_for_setting(self, key, value):
        wait_for(lambda: self.setting(key) == value, f"{key} to be {value}")

    def open(self, link):
        assert self.program.launch(link).wait(timeout=30) == 0

    def test_a_change_takes_effect_at_once_and_can_be_taken_back(self):
        Atspi.Component.grab_focus(self.program.control("Message"))
        wait_for(lambda: self.program.focused() == "Message", "the focus")
        xdotool("key", "ctrl+comma")
        wait_for(self.program.window_titled("Pobblewig Settings"), "the settings")

        self.open("pobblewig:settings/privacy")
        self.program.press("Memory")
        self.wait_for_setting("memoryEnabled", False)
        self.program.press("Undo")
        self.wait_for_setting("memoryEnabled", True)

        xdotool("key", "ctrl+f")
        wait_for(lambda: self.program.focused() == "Search settings", "the search")
        xdotool("type", "--delay", "5", "observation pause")
        xdotool("key", "Return")
        wait_for(lambda: self.program.focused() == "Observation pause", "the setting")
        xdotool("key", "space")
        self.wait_for_setting("pausedIndefinitely", True)
        xdotool("key", "Escape")
        wait_for(lambda: not self.program.window_titled("Pobblewig Settings")(), "the end of it")

        # It opens where it was closed.
        self.program.kill()
        self.program.start()
        self.open("pobblewig:settings")
        wait_for(lambda: self.program.is_usable("Observation pause"), "the page")


if __name__ == "__main__":
    unittest.main()
