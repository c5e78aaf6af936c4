"""Kills the program at random moments of a conversation; nothing that was shown as sent is lost."""

import json
import random
import unittest

from program import DemoModel, Program, wait_for

ROUNDS = 30
LONGEST_WAIT = 0.4


class CrashEndToEndTest(unittest.TestCase):
    def test_no_shown_message_is_lost(self):
        model = DemoModel(delay_ms=3)
        self.addCleanup(model.stop)
        chance = random.Random(20261121)
        with Program(model.variables) as program:
            shown = []
            for round_number in range(ROUNDS):
                program.start()
                program.open_chat()
                self.assert_kept(program, shown)
                program.send(f"message {round_number}")
                self.watch_for(program, chance.uniform(0, LONGEST_WAIT), shown)
                program.kill()
            self.assertGreater(len(shown), ROUNDS)

    def watch_for(self, program, seconds, shown):
        """Collects what the panel shows as sent or finished until the time is over."""
        try:
            wait_for(lambda: self.collect(program, shown), "the moment to die", seconds)
        except AssertionError:
            pass

    @staticmethod
    def collect(program, shown):
        rows = program.conversation()
        shown.extend(row for row in rows if row not in shown and "is writing: " not in row)
        return False

    def assert_kept(self, program, shown):
        file = program.data / "transcript.json"
        kept = [message["text"] for message in json.loads(file.read_text())] if shown else []
        recent = [row for row in shown if ": " in row][-20:]
        for row in recent:
            self.assertTrue(any(row.endswith(text) for text in kept), f"lost: {row!r}")


if __name__ == "__main__":
    unittest.main()
