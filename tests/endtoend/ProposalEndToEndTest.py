"""What the model proposes and the user answers, from the typed wish to the files on the disk."""

import json
import unittest

from program import DemoModel, Program, wait_for


def proposal(program, status):
    """The proposals of that status as the file has them."""
    file = program.data / "proposals.json"
    kept = json.loads(file.read_text())["proposals"] if file.exists() else []
    return [entry["name"] for entry in kept if entry["status"] == status]


def setting(program, key):
    file = program.data / "settings.json"
    return json.loads(file.read_text()).get(key) if file.exists() else None


def last_text(program):
    messages = program.chat_file()
    return messages[-1]["text"] if messages else ""


def wait_until_told(program, beginning):
    wait_for(lambda: last_text(program).startswith(beginning), f'"{beginning}" in the conversation')


class ProposalEndToEndTest(unittest.TestCase):
    protocols = ([], ["--no-native-tools"])

    def each_protocol(self):
        for arguments in self.protocols:
            with self.subTest(arguments=arguments):
                model = DemoModel(arguments=arguments)
                self.addCleanup(model.stop)
                with Program(model.variables) as program:
                    program.start()
                    program.open_chat()
                    # A server without tools is known as one from the first turn on.
                    program.send("hello")
                    wait_for(lambda: len(program.chat_file()) == 2, "the greeting")
                    self.assertEqual("native tools rejected" in program.log_text(),
                                     "--no-native-tools" in arguments)
                    yield program

    def test_a_change_waits_for_the_user_over_a_restart(self):
        for program in self.each_protocol():
            program.send("switch to focus mode")
            banner = wait_for(lambda: program.find("Proposal: mode → focus"), "the banner")
            self.assertIn("Mode: Open-ended → Focus", program.texts_below(banner))
            self.assertEqual(setting(program, "mode"), None)

            program.kill()
            program.start()
            program.open_chat()
            program.control("Proposal: mode → focus")
            program.press("Confirm")
            wait_until_told(program, "Changed setting: mode → focus")
            self.assertEqual(setting(program, "mode"), "focus")
            wait_for(lambda: not program.find("Proposal: mode → focus"), "no banner")
            self.assertEqual(proposal(program, "pending"), [])

    def test_what_cannot_be_done_says_so_and_can_be_dismissed(self):
        for program in self.each_protocol():
            program.send("remind me to email Davis tomorrow at 9")
            wait_for(lambda: proposal(program, "pending"), "the proposal")
            program.press("Confirm")
            wait_until_told(program, "That didn't work: ")
            self.assertEqual(len(proposal(program, "pending")), 1)
            program.press("Dismiss")
            wait_until_told(program, "Dismissed the pending proposal: ")
            self.assertEqual(len(proposal(program, "rejected")), 1)

    def test_what_is_always_allowed_does_not_ask_again(self):
        for program in self.each_protocol():
            program.send("switch to focus mode")
            program.control("Proposal: mode → focus")
            program.press("Allow always")
            wait_until_told(program, "Changed setting: mode → focus")
            self.assertIs(setting(program, "actionConfirmations")["settings_change"], False)
            program.send("be a deadpan roommate")
            wait_until_told(program, "My persona changed: Classic → Deadpan Roommate.")
            self.assertEqual(proposal(program, "pending"), [])

    def test_forgetting_always_asks_and_names_what_goes(self):
        notes = {"notes": [{"id": "0B0E7A52-0000-4000-8000-000000000001", "text": "Likes tea",
                            "createdAt": "2026-01-01T08:00:00Z"}]}
        model = DemoModel()
        self.addCleanup(model.stop)
        with Program(model.variables) as program:
            program.data.mkdir(parents=True)
            (program.data / "memory.json").write_text(json.dumps(notes))
            program.start()
            program.open_chat()
            program.send("forget that I like tea")
            banner = program.control('Proposal: Delete the memory note "Likes tea"')
            self.assertIsNone(program.find("Allow always"))
            self.assertIn("Likes tea", program.texts_below(banner))
            program.press("Confirm")
            wait_until_told(program, 'Forgot the note "Likes tea"')
            wait_for((program.data / "observations.json").exists, "the record of it")
            for name in ("memory.json", "proposals.json", "observations.json"):
                self.assertNotIn("Likes tea", (program.data / name).read_text())

    def test_the_screen_is_looked_at_when_the_model_asks_for_it(self):
        for program in self.each_protocol():
            program.send("what's on my screen?")
            wait_for(lambda: len(program.chat_file()) == 4, "the answer")
            self.assertTrue(program.chat_file()[-1]["hadImage"])


if __name__ == "__main__":
    unittest.main()
