"""What the hand does in a conversation: its keys, its second thoughts, and what it does early."""

import json
import unittest

from model import Held, ScriptedModel
from program import Atspi, Program, wait_for, xdotool

# The menu of the last answer.
COPY, ANSWER_AGAIN, EARLIER_ANSWER = range(3)


class HandEndToEndTest(unittest.TestCase):
    def setUp(self):
        self.model = ScriptedModel()
        self.addCleanup(self.model.stop)
        self.program = self.enterContext(Program(self.model.variables))
        self.program.start()
        self.program.open_chat()

    def send(self, text):
        self.program.send(text)
        self.wait_for_last(f"You said: {text}")

    def wait_for_last(self, text):
        wait_for(lambda: self.said() and self.said()[-1] == text, f'"{text}" at the end')
        wait_for(lambda: not self.program.is_usable("Stop"), "the end of the turn")

    def said(self):
        """By both, as it is shown."""
        return [row.partition(": ")[2] for row in self.program.conversation() if ": " in row]

    def stored(self):
        return [message["text"]
                for message in json.loads((self.program.data / "transcript.json").read_text())]

    def focus_input(self):
        Atspi.Component.grab_focus(self.program.control("Message"))
        wait_for(lambda: self.program.focused() == "Message", "the focus")

    def write(self, text):
        self.focus_input()
        xdotool("type", "--delay", "5", text)
        wait_for(lambda: self.program.typed() == text, "the text in the input")
        xdotool("key", "Return")

    def test_a_question_is_asked_in_other_words_and_an_answer_given_again(self):
        self.send("first")
        self.send("secnd")
        self.focus_input()
        xdotool("key", "Up")
        wait_for(lambda: self.program.typed() == "secnd", "the question in the input")
        self.assertEqual(self.program.shown("Editing"), "Editing your last message")
        xdotool("key", "Left", "Left", "o", "Return")
        self.wait_for_last("You said: second")
        expected = ["first", "You said: first", "second", "You said: second"]
        self.assertEqual(self.said(), expected)
        wait_for(lambda: self.stored() == expected, "the same in the file")

        self.model.will_answer("Another answer.")
        self.program.choose(-1, ANSWER_AGAIN)
        self.wait_for_last("Another answer.")
        wait_for(lambda: self.stored() == [*expected[:3], "Another answer."], "one answer")
        self.program.choose(-1, EARLIER_ANSWER)
        self.wait_for_last("You said: second")

    def test_what_is_sent_early_waits_for_the_reply(self):
        held = Held("Let me", " think.")
        self.model.will_answer(held)
        self.program.send("one")
        wait_for(lambda: self.said()[-1:] == ["Let me"], "the beginning of the reply")
        self.write("two")
        wait_for(lambda: self.program.shown("Next message") == "Next: two", "the message in wait")
        self.assertEqual((self.program.typed(), self.model.asked), ("", ["one"]))
        held.release()
        self.wait_for_last("You said: two")
        self.assertEqual(self.said(), ["one", "Let me think.", "two", "You said: two"])

        self.model.will_answer(Held("Let me"))
        self.program.send("three")
        wait_for(lambda: self.said()[-1] == "Let me", "the beginning of the reply")
        self.write("four")
        wait_for(lambda: self.program.shown("Next message") == "Next: four", "the message in wait")
        self.program.press("Stop")
        wait_for(lambda: self.program.typed() == "four", "what was not sent")
        self.assertEqual(self.model.asked, ["one", "two", "three"])

    def test_what_opens_by_a_key_closes_by_one_and_gives_the_focus_back(self):
        self.send("one")
        self.program.tab_to("Look at my screen")
        xdotool("key", "ctrl+slash")
        wait_for(lambda: "Edit your last message" in self.program.texts_shown(), "the keys")
        xdotool("key", "Escape")
        wait_for(lambda: "Edit your last message" not in self.program.texts_shown(), "their end")
        wait_for(lambda: self.program.focused() == "Look at my screen", "the focus back")
        self.focus_input()
        xdotool("key", "ctrl+f")
        wait_for(lambda: self.program.focused() == "Find", "the find bar")
        xdotool("type", "SAID")
        wait_for(lambda: self.program.shown("Matches") == "1 of 1", "the match")
        xdotool("key", "Escape")
        wait_for(lambda: self.program.focused() == "Message", "the focus back in the input")
        self.assertTrue(self.program.window_titled("Pobblewig Chat")())
        xdotool("key", "Escape")
        wait_for(lambda: not self.program.window_titled("Pobblewig Chat")(), "no panel")


if __name__ == "__main__":
    unittest.main()
