"""Every page of every window as assistive technology finds it."""

import unittest

from program import Atspi, GLib, Program, children, wait_for, xdotool

WINDOWS = {
    "settings": ("Pobblewig Settings", ["general", "companion", "models", "connections", "activity",
                                        "privacy", "confirmations", "folders", "shortcuts", "about"]),
    "memory": ("Pobblewig Memory", ["notes", "reference", "days", "observations", "patterns",
                                    "prompt", "data"]),
    "coming-up": ("Coming up", ["days"]),
    "activity": ("Pobblewig Activity", ["day", "week", "rules", "usage"]),
    "diagnostics": ("Pobblewig Diagnostics", ["overview", "models", "tools", "files", "keys"]),
    "welcome": ("Welcome to Pobblewig", ["welcome", "model", "companion", "privacy", "desktop",
                                         "done"]),
}


class PagesEndToEndTest(unittest.TestCase):
    def test_every_control_has_a_name(self):
        self.program = self.enterContext(Program())
        self.program.start()
        for window, (title, pages) in WINDOWS.items():
            for page in pages:
                with self.subTest(window=window, page=page):
                    self.open(f"pobblewig:{window}/{page}", title)
                    self.assertEqual(self.nameless(title), [])
            xdotool("key", "Escape")
            wait_for(lambda: not self.program.window_titled(title)(), f"the end of {title}")

    def open(self, link, title):
        assert self.program.launch(link).wait(timeout=30) == 0
        wait_for(self.program.window_titled(title), title)

    def nameless(self, title):
        """The roles of controls in sight that say nothing."""
        window = next(child for child in children(self.program.application())
                      if child.get_name() == title)
        return self.silent_below(window)

    def silent_below(self, node):
        try:
            states = node.get_state_set()
            if not states.contains(Atspi.StateType.SHOWING):
                return []
            is_silent = (states.contains(Atspi.StateType.FOCUSABLE) and not node.get_name()
                        and node.get_role() != Atspi.Role.SCROLL_BAR)
            own = [node.get_role_name()] if is_silent else []
            return own + [role for child in children(node) for role in self.silent_below(child)]
        except GLib.Error:  # It went while it was read.
            return []


if __name__ == "__main__":
    unittest.main()
