"""What the model proposes and the user answers, from the typed wish to the files on the disk."""

import json
import unittest

from program import DemoModel, Program, wait_for, xdotool


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
    def started(self, *arguments):
        model = DemoModel(arguments=arguments)
        self.addCleanup(model.stop)
        program = self.enterContext(Program(model.variables))
        # The session that the tests share has a calendar service.
        settings = program.home / "config/Pobblewig/desktop.conf"
        settings.parent.mkdir(parents=True)
        settings.write_text("[calendars]\nprovider=folder\n")
        program.start()
        program.open_chat()
        return program

    def test_what_the_model_wishes_waits_for_the_user_whichever_way_it_says_so(self):
        for arguments in ([], ["--no-native-tools"]):
            with self.subTest(arguments=arguments):
                program = self.started(*arguments)
                self.change_waits_over_a_restart(program)
                self.assertEqual("native tools rejected" in program.log_text(),
                                 "--no-native-tools" in arguments)
                self.several_fold_and_a_change_is_undone(program)
                self.reminder_becomes_a_file(program)
                self.unwanted_can_be_dismissed(program)
                self.always_allowed_does_not_ask(program)
                program.send("what's on my screen?")
                program.press("Look now")
                wait_for(lambda: program.chat_file()[-1]["hadImage"], "the look at the screen")
                program.kill()

    def change_waits_over_a_restart(self, program):
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
        # The question, the reply, and one card in place of two notes.
        rows = program.conversation()
        self.assertRegex(rows[-1], r"^Done, \d\d?:\d\d.*: Mode: Open-ended → Focus$")
        self.assertFalse([row for row in rows if "→ focus" in row and "Done" not in row], rows)

    def several_fold_and_a_change_is_undone(self, program):
        """In the smallest panel."""
        window = xdotool("search", "--name", "Pobblewig Chat").split()[-1]
        xdotool("windowsize", "--sync", window, "300", "320")
        before = len(program.conversation())
        program.send("turn into a pink axolotl")
        program.control("2 things wait for you")
        program.unfold()
        for _ in range(2):
            waiting = proposal(program, "pending")
            program.press("Confirm")
            wait_for(lambda: len(proposal(program, "pending")) < len(waiting), "the change")
        self.assertEqual(setting(program, "mascotColorScheme"), "pink")
        # The question, the reply and the two changes.
        self.assertLessEqual(len(program.conversation()), before + 4)
        program.choose(-1, 1)
        wait_for(lambda: setting(program, "mascotColorScheme") != "pink", "the old colours")
        wait_for(lambda: program.conversation()[-1].startswith("Undone, "), "the card")

    def reminder_becomes_a_file(self, program):
        calendars = program.home / "Documents/Calendars"
        # In the way of the folder.
        calendars.parent.mkdir()
        calendars.touch()
        program.send("remind me to email Davis tomorrow at 9")
        wait_for(lambda: proposal(program, "pending"), "the proposal")
        program.press("Confirm")
        wait_for(lambda: "cannot be written to" in last_text(program), "the reason")
        self.assertEqual(len(proposal(program, "pending")), 1)

        calendars.unlink()
        program.press("Confirm")
        wait_until_told(program, "Added reminder 'Email Davis' due ")
        self.assertEqual(proposal(program, "pending"), [])
        [file] = calendars.iterdir()
        self.assertIn("SUMMARY:Email Davis", file.read_text())

    def unwanted_can_be_dismissed(self, program):
        program.send("become an axolotl")
        wait_for(lambda: proposal(program, "pending"), "the proposal")
        program.press("Dismiss")
        wait_until_told(program, "Dismissed the pending proposal: ")
        self.assertEqual(len(proposal(program, "rejected")), 1)

    def always_allowed_does_not_ask(self, program):
        program.send("switch to study mode")
        program.press("Allow always for ordinary settings")
        wait_until_told(program, "Changed setting: mode → studying")
        self.assertIs(setting(program, "actionConfirmations")["settings_change"], False)
        program.send("be a deadpan roommate")
        wait_until_told(program, "My persona changed: Classic → Deadpan Roommate.")
        self.assertEqual(proposal(program, "pending"), [])

    def test_forgetting_always_asks_and_names_what_goes(self):
        notes = {"notes": [{"id": "0B0E7A52-0000-4000-8000-000000000001", "text": "Likes tea",
                            "createdAt": "2026-01-01T08:00:00Z"}]}
        program = self.started()
        program.kill()
        (program.data / "memory.json").write_text(json.dumps(notes))
        program.start()
        program.open_chat()
        program.send("forget that I like tea")
        banner = program.control('Proposal: Delete the memory note "Likes tea"')
        self.assertIsNone(program.find("Allow always for ordinary settings"))
        self.assertIn("Likes tea", program.texts_below(banner))
        program.press("Confirm")
        wait_until_told(program, 'Forgot the note "Likes tea"')
        wait_for((program.data / "observations.json").exists, "the record of it")
        for name in ("memory.json", "proposals.json", "observations.json"):
            self.assertNotIn("Likes tea", (program.data / name).read_text())


if __name__ == "__main__":
    unittest.main()
