"""The first minute with the program, in an empty home."""

import pathlib
import subprocess
import unittest

from model import ScriptedModel
from program import BIN, DemoModel, Program, wait_for


class FirstMinuteEndToEndTest(unittest.TestCase):
    def setUp(self):
        self.program = self.enterContext(Program(is_set_up=False))

    def test_the_buddy_says_hello_once_and_offers_what_its_model_can_do(self):
        model = DemoModel()
        self.addCleanup(model.stop)
        self.program.environment |= model.variables
        self.program.start()
        wait_for(lambda: "Click me to talk." in (self.program.shown("Bubble") or ""), "the hello")
        self.program.press("Dismiss bubble")
        wait_for(lambda: "pause that in my menu" in (self.program.shown("Bubble") or ""),
                 "what it sees")
        self.program.click_the_buddy()
        wait_for(lambda: not self.program.shown("Bubble"), "the end of the bubble")
        self.program.press("What can you do?")
        wait_for(lambda: any("Each of these sentences shows something" in row
                             for row in self.program.conversation()), "the demo model's answer")
        self.assertFalse(self.program.is_usable("What can you do?"))
        self.program.kill()
        for name in ("chat.json", "transcript.json"):
            (self.program.data / name).unlink()
        self.program.start()
        self.program.open_chat()
        self.program.press("Focus for 25 minutes")
        wait_for(lambda: "Focus until" in (self.program.shown("State") or ""), "the mode")
        self.assertIsNone(self.program.shown("Bubble"))

    def test_the_demo_model_gives_way_to_the_users_own_at_the_next_message(self):
        demo, own = DemoModel(), ScriptedModel()
        for model in (demo, own):
            self.addCleanup(model.stop)
        self.program.environment["POBBLEWIG_DEMO_MODEL_URL"] = demo.variables["MAIN_MODEL_BASE_URL"]
        self.program.start()
        self.program.open_chat()
        self.program.send("hello")
        wait_for(lambda: any("I am the built-in demo model" in row
                             for row in self.program.conversation()), "the demo model's answer")
        file = pathlib.Path(self.program.environment["XDG_CONFIG_HOME"]) / "Pobblewig/environment"
        file.write_text("".join(f"{name}={value}\n" for name, value in own.variables.items()))
        self.program.send("hello again")
        wait_for(lambda: self.program.conversation()[-1].endswith("You said: hello again"),
                 "the answer of the user's own")

    def test_what_it_is_can_be_asked_without_a_display(self):
        for option, words in (("--version", "Pobblewig "), ("--help", "--version")):
            said = subprocess.run([BIN / "pobblewig", option], env={}, text=True, check=True,
                                  capture_output=True, timeout=30).stdout
            self.assertIn(words, said)

    def test_without_a_model_it_explains_how_to_get_one(self):
        self.program.start()
        self.program.open_chat()
        self.program.press("How do I set up a model?")
        wait_for(lambda: any("MAIN_MODEL_BASE_URL" in row for row in self.program.conversation()),
                 "the explanation")
        self.assertIsNone(self.program.shown("Error"))
        self.program.press("What do you notice?")


if __name__ == "__main__":
    unittest.main()
