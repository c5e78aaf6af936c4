"""A conversation with the demo model, from the typed message to the files on the disk."""

import unittest

from program import Atspi, DemoModel, Program, wait_for, xdotool


def texts(messages, role):
    return [message["text"] for message in messages if message["role"] == role]


def said(rows):
    """What the last row says, without who says it."""
    return rows[-1].partition(": ")[2] if rows else ""


class ConversationEndToEndTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.model = DemoModel(delay_ms=5)
        cls.addClassCleanup(cls.model.stop)

    def test_a_typed_message_is_answered_and_kept_over_a_restart(self):
        with Program(self.model.variables) as program:
            program.start()
            program.click_the_buddy()
            field = program.control("Message")
            Atspi.Component.grab_focus(field)
            xdotool("type", "--delay", "5", "hello little one")
            xdotool("key", "Return")

            kept = wait_for(lambda: len(program.chat_file()) == 2 and program.chat_file(),
                            "both messages in the file")
            self.assertEqual(texts(kept, "user"), ["hello little one"])
            answer = texts(kept, "assistant")[0]
            self.assertIn("demo model", answer)
            wait_for(lambda: answer in program.conversation()[-1], "the answer on the screen")
            wait_for(lambda: program.shown("Model") == "demo model", "the model's name")

            program.kill()
            program.start()
            self.assertEqual(program.chat_file(), kept)
            program.open_chat()
            wait_for(lambda: answer in program.conversation()[-1], "the answer after a restart")

    def test_a_reply_appears_while_it_streams_and_can_be_stopped(self):
        slow = DemoModel(delay_ms=60)
        self.addCleanup(slow.stop)
        with Program(slow.variables) as program:
            program.start()
            program.open_chat()
            program.send("tell me a long story")
            first = wait_for(lambda: said(program.conversation()[2:]), "the first words")
            later = wait_for(lambda: len(said(program.conversation()[2:])) > len(first)
                             and said(program.conversation()[2:]), "more words")
            self.assertTrue(later.startswith(first))
            program.press("Stop")
            wait_for(lambda: not program.is_usable("Stop"), "the end of the turn")
            self.assertTrue(said(program.conversation()[2:]).startswith(later))
            kept = wait_for(lambda: texts(program.chat_file(), "assistant"), "the part of the reply")
            self.assertEqual([kept[0], program.chat_file()[-1]["stopped"]],
                             [said(program.conversation()[2:]), True])

    def test_the_window_is_mirrored_for_those_who_read_from_right_to_left(self):
        for language, is_mirrored in (("ar", True), ("en", False)):
            with Program({"LC_ALL": language, "LANGUAGE": language}) as program:
                program.start()
                program.open_chat()
                button, field = (
                    Atspi.Component.get_extents(program.control(name), Atspi.CoordType.SCREEN).x
                    for name in ("Send", "Message"))
                self.assertEqual(button < field, is_mirrored, language)

    def test_without_a_model_the_message_is_not_lost(self):
        with Program() as program:
            program.start()
            program.open_chat()
            program.send("is anybody configured?")
            told = wait_for(lambda: program.shown("Error"), "the error")
            self.assertTrue(told.startswith("No model is set up yet."), told)
            self.assertEqual(program.chat_file(), [])

    def test_a_data_directory_that_cannot_be_is_told_and_lived_without(self):
        with Program(self.model.variables, is_set_up=False) as program:
            program.data.parent.mkdir(parents=True)
            program.data.write_text("a file where the directory should be")
            program.start()
            program.click_the_buddy()
            wait_for(lambda: program.shown("Notice"), "the notice")
            program.send("hello")
            wait_for(lambda: "demo model" in program.conversation()[-1], "the answer")
            self.assertEqual(program.data.read_text(), "a file where the directory should be")


if __name__ == "__main__":
    unittest.main()
