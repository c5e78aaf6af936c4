"""Files and pictures that go with a message, from the clipboard to the server."""

import base64
import http.server
import json
import pathlib
import subprocess
import threading
import unittest

from program import Atspi, Program, wait_for, xdotool


class Listener(http.server.BaseHTTPRequestHandler):
    """A model that says "Seen." and keeps what it was asked."""

    requests = []

    def do_POST(self):
        body = self.rfile.read(int(self.headers["Content-Length"]))
        self.requests.append(json.loads(body))
        self.send_response(200)
        self.send_header("Content-Type", "text/event-stream")
        self.end_headers()
        reply = {"choices": [{"index": 0, "delta": {"content": "Seen."}, "finish_reason": "stop"}]}
        self.wfile.write(b"data: %s\n\ndata: [DONE]\n\n" % json.dumps(reply).encode())

    def log_message(self, *_):
        pass


class AttachmentEndToEndTest(unittest.TestCase):
    def setUp(self):
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Listener)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        Listener.requests.clear()
        self.program = self.enterContext(Program({
            "MAIN_MODEL_BASE_URL": f"http://127.0.0.1:{server.server_port}/v1",
            "MAIN_MODEL_ID": "listener", "MAIN_MODEL_API_KEY": "key"}))
        self.program.start()
        self.program.open_chat()

    def paste(self, kind, content):
        """As another program's copy, which lives as long as its owner."""
        owner = subprocess.Popen(["xclip", "-selection", "clipboard", "-target", kind, "-quiet"],
                                 stdin=subprocess.PIPE)
        self.addCleanup(owner.wait)
        self.addCleanup(owner.kill)
        owner.stdin.write(content)
        owner.stdin.close()
        Atspi.Component.grab_focus(self.program.control("Message"))
        xdotool("key", "ctrl+v")

    def asked(self):
        """The content of the user's message, once the server has it."""
        request = wait_for(lambda: Listener.requests and Listener.requests[0], "the request")
        return request["messages"][-1]["content"]

    def test_a_pasted_text_file_reaches_the_server_and_no_file(self):
        notes = pathlib.Path(self.program.scratch.name) / "notes.txt"
        notes.write_text("Mitosis has four phases.")
        self.paste("text/uri-list", notes.as_uri().encode() + b"\r\n")
        wait_for(lambda: (self.program.shown("Kind and size") or "").startswith("Text"), "the chip")
        self.program.send("What is this?")
        self.assertIn("Attached file notes.txt:\nMitosis has four phases.\n", self.asked())
        kept = wait_for(lambda: len(self.program.chat_file()) == 2 and self.program.chat_file(),
                        "the answer")
        self.assertEqual(kept[0]["text"], "What is this?\n\n[attached: notes.txt]")
        for file in self.program.data.rglob("*"):
            self.assertNotIn(b"four phases", file.read_bytes() if file.is_file() else b"")

    def test_a_pasted_picture_reaches_the_server_as_a_jpeg(self):
        red = base64.b64decode("iVBORw0KGgoAAAANSUhEUgAAAAoAAAAKCAIAAAACUFjqAAAAEklEQVR4nGP4z8CAB+GTG8HS"
                               "ALfKY52fTcuYAAAAAElFTkSuQmCC")
        self.paste("image/png", red)
        wait_for(lambda: (self.program.shown("Kind and size") or "").startswith("Picture"),
                 "the chip")
        xdotool("key", "Return")
        words, picture = self.asked()
        self.assertIn("[attached: Pasted picture]", words["text"])
        self.assertTrue(picture["image_url"]["url"].startswith("data:image/jpeg;base64,/9j/"))


if __name__ == "__main__":
    unittest.main()
