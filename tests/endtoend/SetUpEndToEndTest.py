"""A new user with a model server on this computer, from the first start to a memory in order."""

import json
import pathlib
import unittest

from program import Atspi, DemoModel, GLib, Program, all_below, wait_for

USUAL_PORT = 11434


class SetUpEndToEndTest(unittest.TestCase):
    def test_from_an_empty_home_to_an_answer_and_a_memory_in_order(self):
        model = DemoModel(arguments=["--port", str(USUAL_PORT)])
        self.addCleanup(model.stop)
        self.program = self.enterContext(Program(is_set_up=False))
        self.program.start()
        self.set_up()
        for text in ("hello", "I like green tea", "I study law in Cork", "could you start a section about rowing?"):
            self.tell(text)
        self.program.press("New session")
        wait_for(lambda: len(self.notes()) >= 2 and self.section(), "what the librarian noted")
        self.correct_and_delete_notes()
        self.confirm_the_section()
        self.allow_and_revoke()
        self.turn_the_memory_off()

    def set_up(self):
        wait_for(self.program.window_titled("Welcome to Pobblewig"), "the assistant")
        self.program.press("Continue")
        wait_for(lambda: str(USUAL_PORT) in self.text("Address"), "the server that was found")
        self.program.press("Use this model")
        wait_for(lambda: "answers from your next message on" in self.program.texts_shown(),
                 "the choice")
        for control in ("How that sounds", "Keep conversations", "What this desktop cannot offer",
                        "Start talking"):
            self.program.press("Continue")
            wait_for(lambda: self.program.shown(control), "the next page")
        self.program.press("Start talking")
        wait_for(self.program.window_titled("Pobblewig Chat"), "the chat")
        wait_for(lambda: self.file("settings")["hasCompletedOnboarding"], "the end of the set-up")
        written = pathlib.Path(self.program.environment["XDG_CONFIG_HOME"], "Pobblewig/environment")
        self.assertIn(f'MAIN_MODEL_BASE_URL="http://127.0.0.1:{USUAL_PORT}/v1"',
                      written.read_text())

    def correct_and_delete_notes(self):
        self.open("memory/notes")
        before = self.notes()
        shown = self.text("Note")
        self.assertIn(shown, before)
        Atspi.EditableText.set_text_contents(self.field("Note"), "Likes rooibos")
        self.program.press("Save the correction")
        wait_for(lambda: "Likes rooibos" in self.notes() and shown not in self.notes(),
                 "the correction")
        self.program.press("Delete")
        wait_for(lambda: len(self.notes()) == len(before) - 1, "one note less")
        self.assertNotIn("Likes rooibos", self.notes())

    def confirm_the_section(self):
        self.open("memory/reference")
        self.program.press("Confirm")
        wait_for(lambda: self.section()["confirmed"], "the confirmed section")

    def allow_and_revoke(self):
        self.program.open_chat()
        self.program.send("switch to study mode")
        self.program.press("Allow always for ordinary settings")
        wait_for(lambda: not self.asks(), "the allowance")
        self.open("settings/confirmations")
        self.program.press("Ask before changing a setting")
        wait_for(self.asks, "the question again")

    def turn_the_memory_off(self):
        self.open("settings/privacy")
        self.program.press("Memory")
        wait_for(lambda: self.file("settings")["memoryEnabled"] is False, "no memory")

    def asks(self):
        return self.file("settings").get("actionConfirmations", {}).get("settings_change", True)

    def tell(self, text):
        before = len(self.program.chat_file())
        self.program.send(text)
        wait_for(lambda: len(self.program.chat_file()) >= before + 2, f'an answer to "{text}"')

    def open(self, link):
        assert self.program.launch(f"pobblewig:{link}").wait(timeout=30) == 0

    def text(self, name):
        try:
            return Atspi.Text.get_text(self.field(name), 0, -1)
        except (GLib.Error, StopIteration):  # It is not there yet, or went while it was read.
            return ""

    def field(self, name):
        """Not its label."""
        return next(control for control in all_below(self.program.application(), name)
                    if control.get_state_set().contains(Atspi.StateType.EDITABLE))

    def file(self, name):
        """Empty until the program writes it."""
        file = self.program.data / f"{name}.json"
        return json.loads(file.read_text()) if file.exists() else {}

    def notes(self):
        return [note["text"] for note in self.file("memory").get("notes", [])]

    def section(self):
        return next((section for section in self.file("reference").get("sections", [])
                     if section["path"] == "custom.rowing"), None)


if __name__ == "__main__":
    unittest.main()
