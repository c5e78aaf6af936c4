"""A model server that answers what a test tells it to."""

import collections
import dataclasses
import http.server
import json
import threading


@dataclasses.dataclass
class Refusal:
    """An answer that is no reply."""

    status: int
    body: str
    headers: dict = dataclasses.field(default_factory=dict)


class Held:
    """A reply whose rest comes once it is released."""

    def __init__(self, beginning, rest=""):
        self.pieces = beginning, rest
        self.is_released = threading.Event()

    def release(self):
        self.is_released.set()


class ScriptedModel:
    """Gives the replies of a test in their order, then repeats what it is asked."""

    def __init__(self, *models):
        self.models = models
        self.replies = collections.deque()
        # While it stands, all that a chat gets.
        self.refusal = None
        # The texts of the user that were asked, and what else was fetched.
        self.asked = []
        self.asked_models = []
        self.fetched = []
        self.server = None
        self.listen(0)
        self.address = f"127.0.0.1:{self.server.server_port}"
        self.variables = {
            "MAIN_MODEL_BASE_URL": f"http://{self.address}/v1",
            "MAIN_MODEL_ID": "scripted",
            "MAIN_MODEL_API_KEY": "key",
        }

    def listen(self, port):
        handler = type("Handler", (Handler,), {"model": self})
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", port), handler)
        self.server.daemon_threads = True
        threading.Thread(target=self.server.serve_forever, args=[0.05], daemon=True).start()

    def stop(self):
        """Nothing answers at the address any more."""
        self.server.shutdown()
        self.server.server_close()

    def restart(self):
        self.listen(self.server.server_port)

    def will_answer(self, *replies):
        self.replies.extend(replies)

    def reply_to(self, request):
        if "response_format" in request:
            return "{}"
        asked = [message["content"] for message in request["messages"]
                 if message["role"] == "user"][-1]
        # What the program adds to the newest message stands before it.
        self.asked_models.append(request["model"])
        self.asked.append(asked.rpartition("\n")[2])
        if self.refusal:
            return self.refusal
        return self.replies.popleft() if self.replies else f"You said: {self.asked[-1]}"


class Handler(http.server.BaseHTTPRequestHandler):
    def log_message(self, *_):
        pass

    def do_GET(self):
        if self.path != "/v1/models":
            self.model.fetched.append(self.path)
        self.answer(200, json.dumps({"data": [{"id": name} for name in self.model.models]}))

    def do_POST(self):
        request = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
        reply = self.model.reply_to(request)
        if isinstance(reply, Refusal):
            self.answer(reply.status, reply.body, reply.headers)
            return
        self.send_response(200)
        self.send_header("Content-Type", "text/event-stream")
        self.end_headers()
        held = reply if isinstance(reply, Held) else None
        beginning, rest = held.pieces if held else (reply[:7], reply[7:])
        self.send_event({"content": beginning})
        if held:
            held.is_released.wait()
        self.send_event({"content": rest})
        self.send_event({}, "stop")
        self.wfile.write(b"data: [DONE]\n\n")

    def send_event(self, delta, reason=None):
        choice = {"index": 0, "delta": delta, "finish_reason": reason}
        self.wfile.write(f"data: {json.dumps({'choices': [choice]})}\n\n".encode())
        self.wfile.flush()

    def answer(self, status, body, headers=None):
        self.send_response(status)
        for name, value in ({"Content-Type": "application/json"} | (headers or {})).items():
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body.encode())))
        self.end_headers()
        self.wfile.write(body.encode())
