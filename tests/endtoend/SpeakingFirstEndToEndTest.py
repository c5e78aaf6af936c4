"""The companion speaks first: on the desktop, in the chat, and in its files."""

import datetime
import json
import unittest

from notifications import Notifications
from program import DemoModel, Program, wait_for


def deadline(number, title, source, hours):
    due = datetime.datetime.now(datetime.timezone.utc) + datetime.timedelta(hours=hours)
    return {"id": f"0B0E7A52-0000-4000-8000-00000000000{number}", "path": "academics.deadlines",
            "title": title, "summary": "Due soon", "source": source,
            "details": {"dueAt": due.strftime("%Y-%m-%dT%H:%M:%SZ"), "course": "Art",
                        "submissionState": "unsubmitted"},
            "createdAt": "2026-01-01T08:00:00Z", "updatedAt": "2026-01-01T08:00:00Z"}


class SpeakingFirstEndToEndTest(unittest.TestCase):
    def setUp(self):
        model = DemoModel()
        self.addCleanup(model.stop)
        self.host = Notifications()
        self.addCleanup(self.host.close)
        self.program = self.enterContext(Program(model.variables))

    def keep(self, *items):
        memory = {"version": 1, "items": items, "sections": []}
        (self.program.data / "reference.json").write_text(json.dumps(memory))

    def outcomes(self):
        file = self.program.data / "interventions.json"
        records = json.loads(file.read_text())["records"] if file.exists() else []
        return {record["triggerType"]: record.get("outcome") for record in records}

    def test_close_deadlines_are_told_and_answered_on_the_desktop_and_in_the_chat(self):
        self.keep(deadline(1, "Essay", "canvas_sync", 5), deadline(2, "Lab", "classroom_sync", 9))
        self.program.start()
        wait_for(lambda: len(self.host.shown) == 2, "the notifications")
        body, actions = self.host.shown[0]
        self.assertRegex(body, "^“Essay” for Art is due .*, in about 4 hours.")
        self.assertLessEqual({"Got it", "Not now", "That's wrong", "Remind me later"},
                             actions.keys())
        self.host.press(0, "Got it")
        wait_for(lambda: self.outcomes().get("canvas_deadline") == "accepted", "the answer")
        self.assertFalse(self.program.window_titled("Pobblewig Chat")())

        self.program.open_chat()
        wait_for(lambda: "“Lab” for Art is due" in self.program.conversation()[-1], "the message")
        self.program.press("That's wrong")
        wait_for(lambda: self.outcomes()["classroom_deadline"] == "contextCorrected", "the answer")
        wait_for(lambda: "What did I get wrong?" in self.program.conversation()[-1], "the question")
        wait_for(lambda: not self.program.is_usable("That's wrong"), "no buttons")

    def test_the_day_begins_with_a_briefing(self):
        self.keep(deadline(1, "Essay", "canvas_sync", 40))
        self.program.start()
        self.program.open_chat()
        wait_for(lambda: any("Hello! Due soon: Essay." in row
                             for row in self.program.conversation()), "the briefing")
        self.program.press("Got it")
        wait_for(lambda: self.outcomes().get("daily_briefing") == "accepted", "the answer")
        settings = json.loads((self.program.data / "settings.json").read_text())
        self.assertEqual(settings["lastDailyBriefingDayKey"], str(datetime.date.today()))


if __name__ == "__main__":
    unittest.main()
