"""A session of the conversation, from what is said in it to what is remembered of it."""

import datetime
import json
import re
import unittest

from program import DemoModel, Program, wait_for


def stored(program, name):
    return json.loads((program.data / name).read_text())


def say(program, text):
    before = len(program.chat_file())
    program.send(text)
    wait_for(lambda: len(program.chat_file()) == before + 2, f'the answer to "{text}"')


def active_sessions(program):
    return [each for each in stored(program, "sessions.json") if "endedAt" not in each]


def end_session(program):
    """By hand; returns what was said in it."""
    messages = program.chat_file()
    wait_for(lambda: program.is_usable("New session"), "the end of the turn")
    program.press("New session")
    wait_for(lambda: program.chat_file() == [], "an empty conversation")
    wait_for(lambda: active_sessions(program), "the next session")
    return messages


def archives(program):
    return {file.name: json.loads(file.read_text()) for file in program.data.glob("chat-*.json")}


def archive_name(session):
    return f"chat-{session['dayKey']}-{session['id'][:8]}.json"


def age(file, days):
    """Moves every time and day in a file into the past."""
    def earlier(match):
        day = datetime.date.fromisoformat(match[0]) - datetime.timedelta(days=days)
        return day.isoformat()
    file.write_text(re.sub(r"\b\d{4}-\d\d-\d\d(?=T|\")", earlier, file.read_text()))


class SessionEndToEndTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.model = DemoModel()
        cls.addClassCleanup(cls.model.stop)

    def test_a_new_session_leaves_an_archive_a_summary_and_what_is_to_be_remembered(self):
        with Program(self.model.variables) as program:
            # What is noted as due would begin the next conversation.
            (program.data / "settings.json").write_text(
                '{"hasCompletedOnboarding": true, "dailyBriefingEnabled": false}')
            program.start()
            program.open_chat()
            say(program, "I like green tea")
            say(program, "I have to hand in the essay tomorrow")
            said = end_session(program)
            wait_for(lambda: program.conversation() == [], "an empty panel")

            (active,) = active_sessions(program)
            (ended,) = [each for each in stored(program, "sessions.json") if each != active]
            self.assertEqual(archives(program), {archive_name(ended): said})
            self.assertEqual(active["previousSessionID"], ended["id"])
            (daily,) = stored(program, "summaries.json")
            self.assertEqual(daily["id"], ended["dailySummaryID"])
            self.assertIn('"I like green tea"', daily["summary"])
            self.assertIn("Hand in the essay", daily["unresolvedIntent"][0])
            (item,) = stored(program, "reference.json")["items"]
            self.assertEqual((item["path"], item["title"]), ("academics.deadlines", "Essay"))

            say(program, "hello again, I like Green Tea!")
            end_session(program)
            (note,) = stored(program, "memory.json")["notes"]
            self.assertEqual(note["text"], "The user likes green tea.")
            self.assertEqual(note["observationCount"], 2)
            self.assertEqual(len(archives(program)), 2)
            self.assertEqual(len(stored(program, "summaries.json")), 2)
            self.assertNotIn("green tea", program.log_text().lower())

            program.kill()
            program.start()
            program.open_chat()
            program.control("Conversation")
            self.assertEqual(program.conversation(), [])
            self.assertEqual(len(stored(program, "sessions.json")), 3)

    def test_a_session_of_another_day_ends_by_itself(self):
        with Program(self.model.variables) as program:
            program.start()
            program.open_chat()
            say(program, "I went running")
            program.kill()
            for name in ("chat.json", "sessions.json"):
                age(program.data / name, days=2)
            said = program.chat_file()
            (session,) = stored(program, "sessions.json")
            program.start()
            wait_for(lambda: program.chat_file() == [], "an empty conversation", limit=60)
            self.assertEqual(archives(program), {archive_name(session): said})
            (daily,) = stored(program, "summaries.json")
            self.assertIn('"I went running"', daily["summary"])


if __name__ == "__main__":
    unittest.main()
