"""A Canvas site with a few courses, in pages of one entry."""

import http.server
import json
import threading
import urllib.parse


class Canvas:
    def __init__(self, token, assignments):
        """The assignments by the name of their course."""
        self.token = token
        self.lists = {"/api/v1/courses": []}
        for number, (name, work) in enumerate(assignments.items(), 1):
            self.lists["/api/v1/courses"].append(
                {"id": number, "name": name, "course_code": name[:4].upper(),
                 "workflow_state": "available"})
            self.lists[f"/api/v1/courses/{number}/assignments"] = [
                {"id": number * 100 + at, "workflow_state": "published"} | entry
                for at, entry in enumerate(work)]
        handler = type("Handler", (Handler,), {"site": self})
        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        self.server.daemon_threads = True
        self.address = f"http://127.0.0.1:{self.server.server_port}"
        threading.Thread(target=self.server.serve_forever, args=[0.05], daemon=True).start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.shutdown()
        self.server.server_close()


class Handler(http.server.BaseHTTPRequestHandler):
    def log_message(self, *_):
        pass

    def do_GET(self):
        url = urllib.parse.urlsplit(self.path)
        entries = self.site.lists.get(url.path)
        if self.headers["Authorization"] != f"Bearer {self.site.token}":
            self.answer(401, {"errors": [{"message": "Invalid access token."}]})
        elif entries is None:
            self.answer(404, {})
        else:
            page = int(urllib.parse.parse_qs(url.query).get("page", ["0"])[0])
            following = f'<{self.site.address}{url.path}?page={page + 1}>; rel="next"'
            self.answer(200, entries[page:page + 1], following if page + 1 < len(entries) else None)

    def answer(self, status, content, link=None):
        body = json.dumps(content).encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(body)))
        if link:
            self.send_header("Link", link)
        self.end_headers()
        self.wfile.write(body)
