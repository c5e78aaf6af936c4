"""What a user reads when a model does not answer, and the way out of it."""

import json
import re
import unittest

from model import Refusal, ScriptedModel
from program import Atspi, Program, wait_for, xdotool

WORDS = "the server's own words"


def refusal(status, headers=None):
    return Refusal(status, json.dumps({"error": {"message": WORDS}}), headers or {})


class ProblemEndToEndTest(unittest.TestCase):
    def setUp(self):
        self.model = ScriptedModel("scripted-2", "another")
        self.addCleanup(lambda: self.model.stop())
        self.program = self.enterContext(Program(self.model.variables))
        self.program.start()
        self.program.open_chat()

    def fail_to_send(self, text, refusal, sentence):
        self.model.refusal = refusal
        self.program.send(text)
        self.wait_for_problem(sentence)

    def wait_for_problem(self, sentence):
        expected = f"{self.model.address} {sentence}"
        wait_for(lambda: self.program.shown("Error") in (sentence, expected), f'"{expected}"')

    def wait_for_answer_to(self, text):
        wait_for(lambda: self.program.conversation()[-1].endswith(f": You said: {text}"),
                 f'the answer to "{text}"')
        wait_for(lambda: not self.program.shown("Error"), "the end of the problem")
        self.assertEqual(sum(row.endswith(f": {text}") for row in self.program.conversation()), 2)

    def test_each_problem_has_its_sentence_and_a_way_out(self):
        with self.subTest("a key that is refused, and Retry by the keyboard"):
            self.fail_to_send("one", refusal(401), "does not accept the key.")
            self.assertNotIn(WORDS, self.program.texts_shown())
            self.program.tab_to("Details")
            xdotool("key", "space")
            wait_for(lambda: WORDS in self.program.texts_shown(), "the server's own words")
            self.model.refusal = None
            self.program.tab_to("Retry")
            xdotool("key", "space")
            self.wait_for_answer_to("one")

        with self.subTest("a page of the network"):
            page = Refusal(200, f"<html><body>{WORDS}</body></html>",
                           {"Content-Type": "text/html"})
            self.model.refusal = page
            self.program.send("two")
            self.wait_for_problem(f"A web page answers in place of {self.model.address}.")
            self.assertNotIn("<html>", self.program.texts_shown())
            self.retry("two")

        with self.subTest("nobody there"):
            self.model.stop()
            self.program.send("three")
            self.wait_for_problem(f"Nothing answers at {self.model.address} on this computer.")
            self.model.restart()
            self.retry("three")

    def retry(self, text):
        self.model.refusal = None
        self.program.press("Retry")
        self.wait_for_answer_to(text)

    def test_a_wait_is_counted_down(self):
        with self.subTest("it asks again by itself"):
            self.fail_to_send("one", refusal(429, {"Retry-After": "4"}),
                              "has had too many requests.")
            self.model.refusal = None
            first = self.wait_for_seconds("Pobblewig asks again in")
            self.wait_for_seconds("Pobblewig asks again in", below=first)
            self.wait_for_answer_to("one")

        with self.subTest("but not while the user writes"):
            self.fail_to_send("two", refusal(429, {"Retry-After": "3"}),
                              "has had too many requests.")
            field = self.program.control("Message")
            Atspi.EditableText.set_text_contents(field, "I would rather")
            self.wait_for_seconds("It can be asked again in")
            wait_for(lambda: "It can be asked again now." in self.program.texts_shown(), "the end")
            self.assertEqual(set(self.model.asked), {"one", "two"})
            self.retry("two")
            self.assertEqual(self.program.typed(), "I would rather")

    def wait_for_seconds(self, words, below=100):
        def seconds():
            found = re.search(rf"{words} (\d+) s\.", self.program.texts_shown())
            return found and int(found[1]) < below and int(found[1])
        return wait_for(seconds, f'"{words} n s", n below {below}')

    def test_a_model_that_is_not_there_can_be_replaced(self):
        self.fail_to_send("one", refusal(404), 'has no model named “scripted”.')
        self.model.refusal = None
        wait_for(lambda: self.program.is_usable("Choose a model"), "the offer")
        self.program.tab_to("Choose a model")
        self.program.choose_from(lambda: xdotool("key", "space"), 0)
        self.wait_for_answer_to("one")
        self.assertEqual(self.model.asked_models[-1], "scripted-2")


if __name__ == "__main__":
    unittest.main()
