"""Chromium without a window, driven through its WebDriver."""

import base64
import json
import os
import socket
import subprocess
import time
import urllib.error
import urllib.request

ARROW_DOWN, END, ESCAPE = "\ue015", "\ue010", "\ue00c"


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


class Browser:
    """One window. To be used in a with statement, which ends the browser."""

    def __init__(self):
        self.root = f"http://127.0.0.1:{free_port()}"
        self.driver = subprocess.Popen(["chromedriver", f"--port={self.root.rpartition(':')[2]}"],
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.session = None

    def __enter__(self):
        self.wait_for_driver()
        arguments = ["--headless=new", "--disable-gpu", "--hide-scrollbars", "--force-device-scale-factor=1"]
        # The browser's sandbox refuses to run for root, who tests in containers.
        arguments += ["--no-sandbox"] if os.geteuid() == 0 else []
        answer = self.call("POST", "/session", {"capabilities": {"alwaysMatch": {
            "browserName": "chrome", "goog:chromeOptions": {"args": arguments},
            "goog:loggingPrefs": {"browser": "ALL"}}}})
        self.session = answer["sessionId"]
        self.post("/timeouts", {"script": 120000})
        return self

    def __exit__(self, *_):
        if self.session:
            self.call("DELETE", f"/session/{self.session}")
        self.driver.terminate()
        self.driver.wait()

    def wait_for_driver(self):
        for _ in range(300):
            try:
                if self.call("GET", "/status")["ready"]:
                    return
            except OSError:
                time.sleep(0.1)
        raise RuntimeError("chromedriver does not listen")

    def call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.root + path, data, {"Content-Type": "application/json"}, method=method)
        try:
            with urllib.request.urlopen(request, timeout=180) as response:
                return json.load(response)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def post(self, path, body):
        return self.call("POST", f"/session/{self.session}{path}", body)

    def resize(self, width, height):
        self.post("/window/rect", {"width": width, "height": height})

    def open(self, path, width=1300, height=800):
        self.resize(width, height)
        self.post("/url", {"url": "file://" + path})

    def run(self, script, *arguments):
        """Runs the body of a function and returns its result."""
        return self.post("/execute/sync", {"script": script, "args": list(arguments)})

    def run_async(self, script):
        """Runs the body of a function that calls its last argument with the result."""
        return self.post("/execute/async", {"script": script, "args": []})

    def spent(self):
        """Returns the processor time that the page's thread has had, in milliseconds."""
        answer = self.post("/goog/cdp/execute", {"cmd": "Performance.getMetrics", "params": {}})
        return 1000 * next(entry["value"] for entry in answer["metrics"] if entry["name"] == "TaskDuration")

    def cost(self, script, arguments):
        """Returns how many milliseconds of processor time the script takes, called with one argument after the other,
        so that a busy machine measures what an idle one does."""
        self.post("/goog/cdp/execute", {"cmd": "Performance.enable", "params": {"timeDomain": "threadTicks"}})
        before = self.spent()
        self.run("for (const argument of arguments[0]) { (function () {" + script + "})(argument); }", arguments)
        return (self.spent() - before) / len(arguments)

    def press(self, keys):
        """Types the keys into whatever has the focus."""
        steps = [{"type": kind, "value": key} for key in keys for kind in ("keyDown", "keyUp")]
        self.post("/actions", {"actions": [{"type": "key", "id": "keyboard", "actions": steps}]})

    def messages(self):
        """Returns what the console was told since the last call."""
        return [entry["message"] for entry in self.post("/se/log", {"type": "browser"})]

    def use_colors(self, scheme):
        self.post("/goog/cdp/execute", {"cmd": "Emulation.setEmulatedMedia", "params": {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]}})

    def keep_picture(self, path):
        answer = self.call("GET", f"/session/{self.session}/screenshot")
        with open(path, "wb") as file:
            file.write(base64.b64decode(answer))

    def print_page(self, width, height):
        """Returns the page as a PDF on paper of that size in centimetres."""
        return base64.b64decode(self.post("/print", {"page": {"width": width, "height": height}}))
