"""A school that is connected, what comes up there, and a token that is revoked."""

import datetime
import json
import unittest

from canvas import Canvas
from program import Atspi, DemoModel, Program, children, steadily, wait_for


def due_in(days=0, hours=0):
    due = datetime.datetime.now(datetime.timezone.utc) + datetime.timedelta(days=days, hours=hours)
    return due.strftime("%Y-%m-%dT%H:%M:%SZ")


class ConnectionsEndToEndTest(unittest.TestCase):
    def setUp(self):
        model = DemoModel()
        self.addCleanup(model.stop)
        self.program = self.enterContext(Program(model.variables))
        self.canvas = self.enterContext(Canvas("secret", {
            "History of Europe": [
                {"name": "Homework 1", "due_at": due_in(2), "points_possible": 10},
                {"name": "Essay", "due_at": due_in(3),
                 "submission": {"workflow_state": "submitted"}}],
            "Statistics": [{"name": "Homework 1", "due_at": due_in(4)},
                           {"name": "Far away", "due_at": due_in(60)}],
        }))
        self.program.start()

    def open(self, link):
        assert self.program.launch(link).wait(timeout=30) == 0

    def write(self, field, text):
        control = wait_for(lambda: self.program.usable(field), field)
        Atspi.EditableText.set_text_contents(control, text)

    def wait_for_state(self, words):
        wait_for(lambda: words in (self.program.shown("Canvas state") or ""), words)

    @steadily
    def list(self):
        """The rows of the view as assistive technology reads them."""
        application = self.program.application()
        window = next((window for window in children(application)
                       if window.get_name() == "Coming up"), None)
        return [row.get_name() for row in rows_below(window)] if window else []

    def connect(self):
        self.open("pobblewig:settings/connections")
        self.wait_for_state("Not connected.")
        self.write("Canvas address", self.canvas.address)
        self.write("Canvas token", "secret")
        self.program.press("Connect")
        self.wait_for_state("Connected.")

    def outcome(self):
        """Of the newest message that the companion began."""
        file = self.program.data / "interventions.json"
        records = json.loads(file.read_text())["records"] if file.exists() else []
        return records[0].get("outcome") if records else None

    def test_a_close_deadline_is_spoken_of_and_answered_with_one_click(self):
        self.canvas.lists["/api/v1/courses/1/assignments"][0]["due_at"] = due_in(hours=6)
        self.connect()
        self.program.open_chat()
        self.program.press("Got it")
        wait_for(lambda: self.outcome() == "accepted", "the outcome")
        wait_for(lambda: not self.program.is_usable("Remind me later"), "the end of the buttons")

    def test_deadlines_come_and_stay_when_the_token_is_revoked(self):
        self.connect()
        self.wait_for_state("Connected. Last sync just now: 2 courses, 4 deadlines.")

        self.program.open_chat()
        self.program.send("What's due?")
        wait_for(self.program.window_titled("Coming up"), "the view")
        rows = wait_for(self.list, "the deadlines")
        entries = [row for row in rows if "," in row]
        self.assertEqual([entry.split(",")[0] for entry in entries],
                         ["Homework 1", "Essay", "Homework 1 (STAT)"])
        self.assertTrue(entries[0].endswith("History of Europe · 10 points"))
        self.assertTrue(entries[1].endswith("History of Europe · Submitted"))

        self.canvas.token = "another"
        self.open("pobblewig:settings/connections")
        self.program.press("Sync now")
        self.wait_for_state("Canvas token rejected (401)")
        self.assertEqual(self.list(), rows)
        self.program.press("Disconnect")
        self.wait_for_state("Not connected.")
        self.assertNotIn("secret", self.program.log_text())


def rows_below(node):
    for child in children(node):
        if child.get_role() == Atspi.Role.LIST_ITEM:
            yield child
        yield from rows_below(child)


if __name__ == "__main__":
    unittest.main()
