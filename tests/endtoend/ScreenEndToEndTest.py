"""Looking at the screen, as the user asks for it: by the button in the chat panel."""

import subprocess
import unittest

from program import DemoModel, Program, wait_for


def class_in_front():
    root = subprocess.run(["xprop", "-root", "_NET_ACTIVE_WINDOW"], check=True, text=True,
                          capture_output=True).stdout
    window = root.split()[-1]
    return subprocess.run(["xprop", "-id", window, "WM_CLASS"], text=True,
                          capture_output=True).stdout


class Terminal:
    """A window of another program, in front."""

    def __init__(self, name):
        self.process = subprocess.Popen(["xterm", "-class", name, "-name", name, "-e", "cat"])
        wait_for(lambda: name in class_in_front(), f"{name} in front")

    def close(self):
        self.process.kill()
        self.process.wait()


class ScreenEndToEndTest(unittest.TestCase):
    def setUp(self):
        self.model = DemoModel()
        self.addCleanup(self.model.stop)
        self.program = self.enterContext(Program(self.model.variables))
        self.program.start()

    def put_in_front(self, name):
        self.addCleanup(Terminal(name).close)
        self.program.open_chat()

    def test_the_picture_of_the_window_in_front_goes_with_the_question(self):
        self.put_in_front("Firefox")
        self.program.press("Look at my screen")
        kept = wait_for(lambda: len(self.program.chat_file()) == 2 and self.program.chat_file(),
                        "the answer")
        self.assertTrue(kept[0]["hadImage"])
        for file in self.program.data.rglob("*"):
            self.assertNotIn(b"JFIF", file.read_bytes() if file.is_file() else b"")

    def test_a_password_manager_in_front_is_refused_by_its_name(self):
        self.put_in_front("KeePassXC")
        self.program.press("Look at my screen")
        refusal = "Screenshots are disabled while KeePassXC is frontmost (excluded app)."
        wait_for(lambda: refusal in (self.program.shown("Error") or ""), "the refusal")
        self.assertEqual(self.program.chat_file(), [])


if __name__ == "__main__":
    unittest.main()
