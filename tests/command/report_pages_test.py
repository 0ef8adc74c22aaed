"""Opens the pages that `zelutil sheet` and `zelutil report` make in a browser, and uses them as people do.

usage: report_pages_test.py COMMAND EXAMPLES AXE PICTURES

AXE is the script of the accessibility checker axe-core, PICTURES a directory for pictures of the pages.
"""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile

from report_browser import ARROW_DOWN, END, ESCAPE, Browser

COMMAND, EXAMPLES, AXE, PICTURES = (os.path.abspath(argument) for argument in sys.argv[1:5])
SETTINGS_FILE = "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg"
HOSTILE = "</script><img src=x onerror='window.hacked=1'>\u2028\"&amp;"
MANY = 10000

USER = {"meta": [
    {"header": "Display", "attribute": "display", "overriddensettings": [
        {"display::grids::grid": "0.25"}, {"display::colors::background": "#000000"}, {"no_such_setting": "1"}]},
    {"header": "Saving", "attribute": "general::saving", "overriddensettings": [{"autosave_interval": "60"}]},
    {"header": "Shortcuts", "attribute": "shortcuts", "submanagerId": 100, "overriddensettings": [{"actions": [
        {"id": 7, "shortcut": "Alt+Backspace"}, {"id": 19, "shortcut": "Shift+M"}, {"id": 22, "shortcut": "Ctrl+Left"},
        {"id": 33, "shortcut": "Ctrl+Home"}, {"id": 35, "shortcut": ""}]}]}]}


def many_settings():
    """Returns defaults with 10,000 settings in 200 sections, and one setting and one action with hostile texts."""
    sections = [{"header": f"S{number}", "attribute": f"section_{number}", "tclCommand": "t", "defaultsettings": [
        {"name": f"setting_{number}_{item}", "value": f"value {item}"} for item in range(MANY // 200)]}
        for number in range(200)]
    sections.append({"header": "H", "attribute": "hostile", "tclCommand": "t",
                     "defaultsettings": [{"name": "hostile " + HOSTILE, "value": HOSTILE}]})
    sections.append({"header": "A", "attribute": "actions", "tclCommand": "t", "submanagerId": 100, "defaultsettings": {
        "actions": [{"id": 1, "name": HOSTILE, "context": HOSTILE, "command": HOSTILE, "shortcut": "Ctrl+" + HOSTILE},
                    {"id": 2, "name": HOSTILE, "context": HOSTILE, "command": "c", "shortcut": "Ctrl+S"}]}})
    return {"meta": sections}


class World:
    """An installation and a user, in which the command makes pages."""

    def __init__(self, directory, defaults, user):
        self.directory = directory
        self.product = os.path.join(directory, "product")
        shutil.copytree(os.path.join(EXAMPLES, "product"), self.product)
        open(os.path.join(self.product, "tools/bin/libzelutil.so"), "w").close()
        if defaults:
            self.write(os.path.join(self.product, SETTINGS_FILE), defaults)
        self.write(os.path.join(directory, "pcbenv/tessel/tessel_settings.cfg"), user)

    @staticmethod
    def write(path, value):
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            # The files that ship have lines.
            json.dump(value, file, indent=1)

    def page(self, subcommand):
        path = os.path.join(self.directory, subcommand + ".html")
        environment = {"QTXROOT": self.product, "HOMEDRIVE": "Z:", "HOMEPATH": self.directory, "PATH": "/usr/bin:/bin"}
        subprocess.run([COMMAND, subcommand, "-o", path], env=environment, check=True, stdout=subprocess.DEVNULL)
        return path


class Checks:
    """Counts what was looked at, and tells what is not as it should be."""

    def __init__(self, browser):
        self.browser = browser
        self.passed = 0
        self.failed = 0

    def equal(self, what, seen, expected):
        self.true(what, seen == expected, f"{seen!r} instead of {expected!r}")

    def true(self, what, holds, seen=""):
        self.passed += 1 if holds else 0
        self.failed += 0 if holds else 1
        print(f"{'ok    ' if holds else 'FAILED'} {what}{'' if holds else ': ' + str(seen)}")

    def is_sound(self, name):
        """The page loads nothing, tells the console nothing, and the accessibility checker finds nothing."""
        self.equal(f"{name}: the console is empty", self.browser.messages(), [])
        loaded = self.browser.run("return performance.getEntriesByType('resource').map((entry) => entry.name)")
        self.equal(f"{name}: nothing is loaded", loaded, [])
        with open(AXE, encoding="utf-8") as file:
            self.browser.run(file.read() + "; return null;")
        result = self.browser.run_async("axe.run(document).then(arguments[arguments.length - 1])")
        broken = [(rule["id"], rule["nodes"][0]["html"], rule["nodes"][0]["failureSummary"])
                  for rule in result["violations"]]
        self.true(f"{name}: axe-core looks at more than 15 rules", len(result["passes"]) > 15, len(result["passes"]))
        self.equal(f"{name}: axe-core finds nothing", broken, [])
        contrasts = [rule for rule in result["passes"] + result["violations"] if rule["id"] == "color-contrast"]
        self.true(f"{name}: axe-core looks at the contrasts", len(contrasts) == 1)


def rows_of(browser, grid):
    return browser.run("return [...document.querySelectorAll(`#${arguments[0]} tbody tr`)]"
                       ".map((row) => [...row.cells].map((cell) => cell.textContent))", grid)


def text_of(browser, identifier):
    return browser.run("return document.getElementById(arguments[0]).textContent", identifier)


def active_row(browser):
    """Returns the first cell of the row that the table with the focus names as the active one."""
    return browser.run("const id = document.activeElement.getAttribute('aria-activedescendant');"
                       "return id ? document.getElementById(id).cells[0].textContent : null")


def focused(browser):
    return browser.run("return document.activeElement.id")


def check_sheet(browser, checks, path):
    browser.open(path, 1200, 1000)
    checks.is_sound("sheet")
    figures = browser.run("return [...document.querySelectorAll('figure svg')].map((svg) => [svg.getAttribute('role'),"
                          "svg.querySelector('title').textContent, svg.querySelector('desc').textContent])")
    checks.true("sheet: each picture has a title and a text", figures and all(
        role == "img" and title.startswith("Keyboard of ") and text for role, title, text in figures), figures)
    checks.true("sheet: a change is told in words", any(
        text == "Alt+Backspace: Undo (changed)." for _, _, text in figures), figures)
    overflow = browser.run("return [...document.querySelectorAll('svg .what')].filter((line) => {"
                           "const key = line.parentNode.querySelectorAll('rect');"
                           "const box = line.getBoundingClientRect();"
                           "return ![...key].some((rect) => { const room = rect.getBoundingClientRect();"
                           "return box.left >= room.left && box.right <= room.right && box.top >= room.top && "
                           "box.bottom <= room.bottom + 1; }); }).map((line) => line.textContent)")
    checks.equal("sheet: each name fits its key", overflow, [])
    pages = [len(re.findall(rb"/Type /Page\b", browser.print_page(*size))) for size in ((29.7, 21.0), (27.94, 21.59))]
    checks.true("sheet: A4 and Letter take equally many pages", pages[0] == pages[1] > 0, pages)
    browser.resize(1000, 620)
    browser.run("document.getElementById('context-3').scrollIntoView()")
    browser.keep_picture(os.path.join(PICTURES, "sheet.png"))


def check_report(browser, checks, path):
    browser.open(path)
    checks.is_sound("report")
    checks.equal("report: the user's settings are named first",
                 [row[0] for row in rows_of(browser, "changed-settings")],
                 ["general::saving::autosave_interval", "display::colors::background", "display::grids::grid"])
    browser.press("/")
    checks.equal("report: / goes to the search", focused(browser), "search")
    browser.press("grids grid 25")
    checks.equal("report: the search finds", [row[:3] for row in rows_of(browser, "all-settings")],
                 [["display::grids::grid", "0.25", "0.635"]])
    checks.equal("report: the number is told", text_of(browser, "settings-count"), "1 setting of 195")
    browser.press(ARROW_DOWN)
    checks.equal("report: the arrow goes to the rows", active_row(browser), "display::grids::grid")
    checks.true("report: all about the row is shown", "set by the user" in text_of(browser, "detail"),
                text_of(browser, "detail"))
    # Pictures are the same wherever they are made.
    browser.run("for (const text of document.querySelectorAll('dd'))"
                " text.textContent = text.textContent.replace(arguments[0], '/home/ann')", os.path.dirname(path))
    browser.run("document.getElementById('settings').scrollIntoView()")
    browser.keep_picture(os.path.join(PICTURES, "report.png"))
    browser.press("/" + ESCAPE)
    checks.equal("report: Esc clears the search", text_of(browser, "settings-count"), "195 settings of 195")
    browser.press(ARROW_DOWN + END)
    checks.equal("report: End goes to the last row", active_row(browser),
                 browser.run("return JSON.parse(document.getElementById('data').textContent).settings.at(-1).name"))
    browser.run("document.querySelector('#section-table button[aria-label=\"Show display::grids\"]').click()")
    checks.true("report: a section shows its settings", all(
        row[0].startswith("display::grids::") for row in rows_of(browser, "all-settings")))
    browser.use_colors("dark")
    checks.is_sound("report, dark")
    browser.run("document.getElementById('changes').scrollIntoView()")
    browser.keep_picture(os.path.join(PICTURES, "report_dark.png"))
    browser.use_colors("light")


def check_many(browser, checks, world):
    browser.open(world.page("report"))
    checks.equal("many: all settings are there", text_of(browser, "settings-count"), "10,001 settings of 10,001")
    checks.true("many: few rows are in the document", len(rows_of(browser, "all-settings")) < 100)
    start = browser.run("return performance.timing.domContentLoadedEventEnd - performance.timing.domLoading")
    search = browser.cost(
        "const input = document.getElementById('search'); input.value = arguments[0];"
        "input.dispatchEvent(new Event('input')); document.body.offsetHeight",
        ["s", "se", "set", "setting_1", "9_4", "value 4", ""])
    scroll = browser.cost(
        "const box = document.getElementById('all-settings'); box.scrollTop = arguments[0];"
        "box.dispatchEvent(new Event('scroll')); document.body.offsetHeight", [step * 30000 for step in range(10)])
    print(f"       10,001 settings: there after {start} ms; a search costs {search:.1f} ms, a step of scrolling "
          f"{scroll:.1f} ms")
    checks.true("many: a search costs less than 50 ms", search < 50, search)
    checks.true("many: a step of scrolling costs less than 16 ms", scroll < 16, scroll)
    browser.run("document.getElementById('search').focus()")
    browser.press("hostile")
    checks.equal("many: hostile texts are texts", rows_of(browser, "all-settings")[0][1], HOSTILE)
    checks.is_sound("many")
    checks.equal("many: no text runs", browser.run("return [window.hacked ?? null, document.images.length]"), [None, 0])
    browser.open(world.page("sheet"))
    checks.is_sound("hostile sheet")
    checks.equal("hostile sheet: texts are texts",
                 browser.run("return document.querySelector('tbody td').textContent"), HOSTILE.replace("\u2028", "\u2028"))
    checks.equal("hostile sheet: no text runs",
                 browser.run("return [window.hacked ?? null, document.images.length]"), [None, 0])


def main():
    with tempfile.TemporaryDirectory() as directory, Browser() as browser:
        checks = Checks(browser)
        usual = World(os.path.join(directory, "usual"), None, USER)
        check_sheet(browser, checks, usual.page("sheet"))
        check_report(browser, checks, usual.page("report"))
        check_many(browser, checks, World(os.path.join(directory, "many"), many_settings(), {"meta": []}))
    print(f"{checks.passed} passed, {checks.failed} failed")
    return 1 if checks.failed else 0


sys.exit(main())
