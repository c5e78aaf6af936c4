"""A reply in Markdown: how it reads, what copying gives, and that nothing in it acts by itself."""

import os
import pathlib
import unittest

from model import ScriptedModel
from program import Program, wait_for, xdotool

MENU = ["Copy message", "Copy as Markdown", "Answer again", "Copy code", "Find…"]
CODE = 'print("tea")\nprint("now")\n'
SHOWN = """Tea

Take good water and leaves, not a kettle:

• green
• black

Tea\tMinutes
green\t2

print("tea")
print("now")

"""


def lines(text):
    return [line for line in text.splitlines() if line]


def markdown(address):
    return f"""# Tea

Take **good** water and *leaves*, ~~not~~ a `kettle`:

- green
- black

| Tea | Minutes |
|-----|--------:|
| green | 2 |

```python
{CODE}```

<img src=http://{address}/spy.png> ![seen](http://{address}/seen.png)

[the manual](http://{address}/manual)"""


class MarkdownEndToEndTest(unittest.TestCase):
    def test_a_reply_is_shown_and_copied_as_it_is_meant_and_fetches_nothing(self):
        model = ScriptedModel()
        self.addCleanup(model.stop)
        program = self.enterContext(Program(model.variables))
        opened = self.watch_what_is_opened(program)
        program.start()
        program.open_chat()
        reply = markdown(model.address)
        model.will_answer(reply)
        program.send("How do I make tea?")
        wait_for(lambda: len(program.chat_file()) == 2, "the reply")
        self.assertEqual(program.chat_file()[-1]["text"], reply)
        shown = wait_for(lambda: program.conversation()[-1].endswith("the manual (127.0.0.1)")
                         and program.conversation()[-1], "the whole reply")
        self.assertEqual(lines(shown.partition(": ")[2].partition("<img")[0]), lines(SHOWN))

        program.choose(-1, MENU.index("Copy as Markdown"))
        self.assertEqual(program.copied(), reply)
        program.choose(-1, MENU.index("Copy message"))
        self.assertEqual(program.copied().partition("<img")[0], SHOWN)
        program.choose(-1, MENU.index("Copy code"))
        self.assertEqual(program.copied().strip(), CODE.strip())

        self.assertFalse(opened.exists())
        link = program.place_of(-1)
        xdotool("mousemove", str(link.x + 40), str(link.y + link.height - 41), "click", "1")
        wait_for(opened.exists, "the browser")
        self.assertEqual(wait_for(opened.read_text, "its address"),
                         f"http://{model.address}/manual\n")
        self.assertEqual(model.fetched, [])

    def watch_what_is_opened(self, program):
        """The file that tells."""
        opener = pathlib.Path(program.scratch.name) / "bin" / "xdg-open"
        opened = opener.with_name("opened")
        opener.parent.mkdir()
        opener.write_text(f'#!/bin/sh\necho "$@" >>{opened}\n')
        opener.chmod(0o755)
        program.environment["PATH"] = f"{opener.parent}:{os.environ['PATH']}"
        return opened


if __name__ == "__main__":
    unittest.main()
