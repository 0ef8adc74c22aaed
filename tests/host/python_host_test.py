"""Runs the example in Python against the built library, and its module's functions one by one.

usage: python_host_test.py LIBRARY EXAMPLES

Every case is a process of its own in an installation tree of its own. ZELUTIL_TEST_PRELOADED has libraries that such a
process needs before all others.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest

LIBRARY, EXAMPLES = sys.argv[1:3]

PRODUCT_VARIABLES = ("QTXROOT", "QTX_ROOT", "QTXINSTDIR", "QTX_SITE", "QTX_ZELUTIL_DEBUG", "tessel_settings",
                     "regression_testing")


class Installation(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.product = os.path.join(directory.name, "product")
        self.home = os.path.join(directory.name, "home")
        shutil.copytree(os.path.join(EXAMPLES, "product"), self.product)
        os.mkdir(self.home)
        # The root search wants a file of the library's name there.
        open(os.path.join(self.product, "tools", "bin", os.path.basename(LIBRARY)), "w").close()

    def write_user_file(self, text):
        path = os.path.join(self.home, "pcbenv", "tessel", "tessel_settings.cfg")
        os.makedirs(os.path.dirname(path))
        with open(path, "w") as file:
            file.write(text)

    def python(self, *arguments):
        """Runs Python in the installation; returns what it prints."""
        environment = {name: value for name, value in os.environ.items() if name not in PRODUCT_VARIABLES}
        environment.update(QTXROOT=self.product, HOMEDRIVE="Z:", HOMEPATH=self.home,
                           PYTHONPATH=os.path.join(EXAMPLES, "python_host"),
                           LD_PRELOAD=os.environ.get("ZELUTIL_TEST_PRELOADED", ""))
        done = subprocess.run([sys.executable, "-B", *arguments], env=environment, capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""), done.stdout)
        return done.stdout

    def example(self, *options):
        return self.python(os.path.join(EXAMPLES, "python_host", "host.py"), LIBRARY, *options)

    def evaluate(self, code):
        """Runs lines of code that find the module's Host as `host`; returns the lines they print."""
        return self.python("-c", f"import zelutil_host\nhost = zelutil_host.Host({LIBRARY!r})\n{code}").splitlines()


class Example(Installation):
    def test_a_new_process_has_what_was_saved(self):
        lines = self.example().splitlines()
        self.assertIn("  the start has 0 warnings", lines)
        self.assertIn("  U is refused to 43: 49 has it; so that one gives it up first", lines)
        self.assertIn('    heard: action 43, shortcut "T" -> "U"', lines)
        self.assertIn("    heard: action 51 is in the menu", lines)
        self.assertIn("    heard: the grid is 0.05", lines)
        self.assertIn("  2 settings changed, 3 actions are in the file", lines)
        self.assertEqual([line for line in lines if "not come back" in line], [])

        self.assertEqual(self.example("--read-back").splitlines()[3:], [
            "  Route track                  U            (shipped T), in the menu",
            "  Unroute                      T            (shipped U), in the menu",
            "  Fan-out                                   (shipped ), in the menu",
        ])

    def test_damage_is_shown(self):
        self.write_user_file('{"meta": [')
        self.assertIn("  the start has 1 warnings", self.example().splitlines())


class Module(Installation):
    def test_errors_say_why(self):
        self.assertEqual(self.evaluate("""
for call in (lambda: host.setting("none"), lambda: host.action(9999), lambda: host.read_int("units"),
             lambda: host.set_in_menu(9999, True), lambda: host.set_option(77, True)):
    try:
        call()
        print("no error")
    except zelutil_host.Error as error:
        print(error.status)
"""), ["2", "2", "3", "2", "1"])

    def test_records_are_whole(self):
        self.assertEqual(self.evaluate("""
setting = host.setting("units")
print(setting.fullName, setting.bareNames, setting.section, setting.value, setting.setByUser)
action = host.action(49)
print(action.id, action.name, action.context, action.command, action.shortcut, action.inMenu, action.runs, action.heldBy)
print(len(host.actions()) == len({action.id for action in host.actions()}))
print(host.sections()[0] in {setting.section for setting in host.settings()})
"""), ["general::locale::units ['units'] general::locale mm False",
       "49 Unroute ucpedit route unroute U True True 0", "True", "True"])

    def test_values_keep_their_types(self):
        self.assertEqual(self.evaluate("""
print(host.text_of(True), host.text_of(-7), host.text_of(0.1))
host.save({"grid": host.text_of(0.1)})
print(host.read_float("grid") == 0.1, repr(host.read_text("grid")))
print(host.option(zelutil_host.PATHS_WITH_BLANKS))
"""), ["true -7 0.1", "True '0.1'", "False"])

    def test_resets_bring_the_shipped_state_back(self):
        self.assertEqual(self.evaluate("""
host.set_shortcut(43, "F11")
host.set_shortcut(49, "F12")
result = host.save({"grid": "7", "none": "1"})
print(result.written, result.changedSettings, result.unknownSettings, result.savedActions)
print(host.reset(["grid"]).changedSettings, host.reset_shortcuts([43]).savedActions, host.action(43).shortcut)
print(host.reset_shortcuts().savedActions, host.action(49).shortcut)
print(host.restorable_actions_text().notRestored)
"""), ["True ['display::grids::grid'] ['none'] [43, 49]", "['display::grids::grid'] [49] T", "[] U", "[]"])

    def test_a_save_that_fails_has_its_result(self):
        os.makedirs(os.path.join(self.home, "pcbenv", "tessel", "tessel_settings.cfg"))
        self.assertEqual(self.evaluate("""
try:
    host.save({"grid": "7"})
except zelutil_host.Error as error:
    print(error.status == error.result.status, error.result.written, host.read_text("grid"))
"""), ["True False 7"])

    def test_nobody_is_told_after_a_cancel(self):
        self.assertEqual(self.evaluate("""
heard = []
subscription = host.on_section_changed("display", heard.extend)
host.save({"grid": "7"})
subscription.cancel()
host.save({"grid": "8"})
print(heard)
"""), ["['display::grids::grid']"])

    def test_paths_are_the_systems(self):
        path = self.evaluate("print(host.native_path(host.user_file_path()))\nprint(host.root())")
        self.assertEqual(os.path.normpath(path[0]), os.path.join(self.home, "pcbenv", "tessel", "tessel_settings.cfg"))
        self.assertEqual(path[1], "Z:" + self.product.replace("/", "\\"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
