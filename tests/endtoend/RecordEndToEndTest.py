"""That nothing of a conversation is lost, however long it gets and however often one begins anew."""

import json
import unittest

from model import ScriptedModel
from program import Atspi, Program, children, wait_for, xdotool

TURNS = 31


class RecordEndToEndTest(unittest.TestCase):
    def setUp(self):
        model = ScriptedModel()
        self.addCleanup(model.stop)
        self.program = self.enterContext(Program(model.variables))

    def open(self):
        self.program.start()
        self.program.open_chat()

    def say(self, text):
        self.program.send(text)
        wait_for(lambda: [message["text"] for message in self.program.chat_file()[-2:]]
                 == [text, f"You said: {text}"], f'the answer to "{text}"')

    def test_the_first_of_many_messages_is_there_after_a_restart_and_in_the_past(self):
        self.open()
        for number in range(1, TURNS + 1):
            self.say(f"message {number}, then")
        self.program.kill()
        self.assertEqual(len(self.program.chat_file()), 30)
        self.open()
        rows = wait_for(lambda: len(self.program.conversation()) > 2 * TURNS
                        and self.program.conversation(), "the whole conversation")
        self.assertTrue(rows[1].endswith(": message 1, then"), rows[1])
        self.assertFalse(self.is_in_sight(1))
        xdotool("key", "ctrl+f")
        wait_for(lambda: self.program.focused() == "Find", "the find bar")
        xdotool("type", "message 1,")
        wait_for(lambda: self.program.shown("Matches") == "2 of 2", "both matches")
        xdotool("key", "Shift+Return")
        wait_for(lambda: self.is_in_sight(1), "the first message in sight")
        xdotool("key", "Escape")

        self.program.press("New session")
        self.program.press("Undo")
        wait_for(lambda: self.program.is_usable("New session"), "the session taken back")
        self.say("still here")
        wait_for(lambda: len(self.record()) == 2 * TURNS + 2, "all of it in the record")
        self.program.press("New session")
        wait_for(lambda: self.program.is_usable("Undo"), "the offer to take it back")
        self.say("a new one")
        wait_for(lambda: len(self.record()) == 2, "the new record")

        xdotool("key", "ctrl+h")
        wait_for(self.program.window_titled("Past conversations"), "the past conversations")
        wait_for(lambda: [title.splitlines()[0] for title in self.days()]
                 == ["Today · 2 messages", f"Today · {2 * TURNS + 2} messages"], "both")
        self.program.tab_to("Days")
        xdotool("key", "Down")
        wait_for(lambda: any(row.endswith(": message 1, then") for row in self.past_rows()),
                 "the earlier one")

    def days(self):
        return [row.get_name() for row in children(self.program.control("Days"))]

    def is_in_sight(self, row):
        view = self.program.control("Conversation")
        place = Atspi.Component.get_extents(view, Atspi.CoordType.SCREEN)
        found = self.program.place_of(row)
        return found and place.y <= found.y < place.y + place.height

    def past_rows(self):
        window = next(child for child in children(self.program.application())
                      if child.get_name() == "Past conversations")
        view = next(child for child in children(window) if child.get_name() == "Conversation")
        return [row.get_name() for row in children(view)]

    def record(self):
        return json.loads((self.program.data / "transcript.json").read_text())


if __name__ == "__main__":
    unittest.main()
