"""Opens the pages in headless Chromium at the width of a desk and of a phone, and has some pictured in light and dark.

usage: look.py PAGES PICTURES

Fails where a page is wider than its window or tells the console something, and where the search finds no declaration.
"""

import functools
import glob
import http.server
import os
import sys
import threading

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../../tests/command"))
from report_browser import Browser  # noqa: E402

PAGES, PICTURES = (os.path.abspath(path) for path in sys.argv[1:3])
WIDTHS = {"desk": 1400, "phone": 390}
PICTURED = ["index", "shortcuts", "command", "classUCPActionManager", "namespacezelutil_1_1host", "host_2c__api_8h",
            "pages", "annotated"]
TOO_WIDE = """
const root = document.documentElement;
const widest = [...document.querySelectorAll("body *")].find(e => e.getBoundingClientRect().right > root.clientWidth + 1
    && !e.closest("div.fragment, pre, table, .memproto, #MSearchSelectWindow, #MSearchResultsWindow"));
return root.scrollWidth <= root.clientWidth ? "" : root.scrollWidth + " pixels wide, because of "
    + (widest ? widest.tagName + "." + widest.className + "#" + widest.id : "a table or code");
"""


def use_width(browser, width):
    """Emulates the width, since a window is never as narrow as a phone."""
    browser.post("/goog/cdp/execute", {"cmd": "Emulation.setDeviceMetricsOverride", "params": {
        "width": width, "height": 1200, "deviceScaleFactor": 1, "mobile": False}})


class QuietHandler(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


def serve():
    """Serves the pages until the end of the script: a script of a page in a file may not look into its frames."""
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(QuietHandler, directory=PAGES))
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return f"http://127.0.0.1:{server.server_port}/"


def look_at(browser, url):
    """Yields what is wrong with the page at any width."""
    browser.post("/url", {"url": url})
    name = url.rpartition("/")[2]
    for width in WIDTHS.values():
        use_width(browser, width)
        wide = browser.run(TOO_WIDE)
        if wide:
            yield f"{name}: {wide}"
    yield from (f"{name}: {message}" for message in browser.messages() if "favicon.ico" not in message)


def keep_pictures(browser, root, width):
    for scheme in ("light", "dark"):
        browser.use_colors(scheme)
        for name in PICTURED:
            browser.post("/url", {"url": f"{root}{name}.html"})
            browser.keep_picture(f"{PICTURES}/{name}_{width}_{scheme}.png")


def search(browser, root, name):
    """Yields a finding unless the search offers the name when it is typed."""
    browser.post("/url", {"url": root + "index.html"})
    browser.run("document.getElementById('MSearchField').focus()")
    browser.press(name)
    browser.run_async("setTimeout(arguments[0], 2000)")
    browser.keep_picture(f"{PICTURES}/search.png")
    found = browser.run("""
        const frame = document.getElementById("MSearchResults");
        const list = frame.contentDocument ? frame.contentDocument.body : frame;
        return getComputedStyle(document.getElementById("MSearchResultsWindow")).display !== "none" ? list.innerText : "";
    """)
    if name.lower() not in found.lower():
        yield f"The search for {name} shows: {found!r}"


def main():
    os.makedirs(PICTURES, exist_ok=True)
    pages = sorted(map(os.path.basename, glob.glob(f"{PAGES}/*.html")))
    findings = []
    root = serve()
    with Browser() as browser:
        for page in pages:
            findings.extend(look_at(browser, root + page))
        for name, width in WIDTHS.items():
            use_width(browser, width)
            keep_pictures(browser, root, name)
        use_width(browser, WIDTHS["desk"])
        findings.extend(search(browser, root, "updateShortcut"))
    print("\n".join(findings))
    print(f"{len(pages)} pages at {len(WIDTHS)} widths, {len(findings)} findings")
    return 1 if findings or not pages else 0


sys.exit(main())
