#!/usr/bin/env python3
"""Changes lines of sources one at a time and says whether a test fails for each.

Usage: mutants.py BUILD COUNT SEED TESTS SOURCE...

BUILD is a configured build directory, TESTS a file that says which test programs cover which sources: lines of a path
prefix and the programs' names. COUNT changes are drawn at random from all that are possible in the sources. A change that
does not compile does not count. The last lines are the surviving changes and the share of the killed ones.
"""

import pathlib
import random
import re
import subprocess
import sys

# What is exchanged for what, one occurrence at a time. Blanks around operators keep templates and streams out.
EXCHANGES = [
    (" == ", " != "),
    (" != ", " == "),
    (" < ", " <= "),
    (" <= ", " < "),
    (" > ", " >= "),
    (" >= ", " > "),
    (" && ", " || "),
    (" || ", " && "),
    (" + ", " - "),
    (" - ", " + "),
    ("true", "false"),
    ("false", "true"),
    ("if (", "if (!"),
    (" + 1", " + 2"),
]
STATEMENT = re.compile(r"^\s+(?!return|const|auto|using|static|constexpr|namespace|break|continue|case|default)\w.*;$")
CONSTANT = re.compile(r"(?<![\w.])(\d+)(?![\w.x'])")
TIME_FOR_A_PROGRAM = 120


class Mutant:
    def __init__(self, path, number, old, new):
        self.path, self.number, self.old, self.new = path, number, old, new

    def __str__(self):
        return f"{self.path}:{self.number + 1}: {self.old.strip()}  =>  {self.new.strip() or '(no line)'}"


def exchanged(line):
    """Yields the line with each exchange at each place."""
    for old, new in EXCHANGES:
        at = line.find(old)
        while at >= 0:
            yield line[:at] + new + line[at + len(old):]
            at = line.find(old, at + 1)


def mutants_of(path):
    lines = path.read_text().split("\n")
    for number, line in enumerate(lines):
        code = line.split("//")[0]
        if not code.strip() or code.lstrip().startswith(("#", "static_assert", "template", "*")):
            continue
        if STATEMENT.match(code):
            yield Mutant(path, number, line, "")
        for new in exchanged(code):
            yield Mutant(path, number, line, new)
        for match in CONSTANT.finditer(code):
            value = int(match.group(1))
            yield Mutant(path, number, line, f"{code[:match.start()]}{value + 1}{code[match.end():]}")


class Workshop:
    """Builds and runs in one build directory."""

    def __init__(self, build, table):
        self.build = build
        self.table = [line.split() for line in pathlib.Path(table).read_text().splitlines() if line.strip() and line[0] != "#"]

    def programs(self, path):
        """Returns the programs of the longest prefix."""
        fitting = [row for row in self.table if str(path).startswith(row[0])]
        if not fitting:
            sys.exit(f"mutants.py: no test program is named for {path}")
        return max(fitting, key=lambda row: len(row[0]))[1:]

    def compiles(self, programs):
        command = ["cmake", "--build", self.build, "--target", *programs]
        return subprocess.run(command, capture_output=True).returncode == 0

    def killer(self, programs):
        """Returns the first program that fails, or None."""
        for program in programs:
            command = ["ctest", "--test-dir", self.build, "-R", f"^{program}\\.", "--stop-on-failure", "-j2",
                       "--timeout", str(TIME_FOR_A_PROGRAM)]
            if subprocess.run(command, capture_output=True).returncode != 0:
                return program
        return None

    def judge(self, mutant):
        """Returns 'invalid', 'survived' or the program that killed it."""
        programs = self.programs(mutant.path)
        before = mutant.path.read_text()
        lines = before.split("\n")
        lines[mutant.number] = mutant.new
        try:
            mutant.path.write_text("\n".join(lines))
            if not self.compiles(programs):
                return "invalid"
            return self.killer(programs) or "survived"
        finally:
            mutant.path.write_text(before)


def main(build, count, seed, table, *sources):
    workshop = Workshop(build, table)
    paths = [pathlib.Path(source) for source in sources]
    for path in paths:
        programs = workshop.programs(path)
        if not workshop.compiles(programs) or workshop.killer(programs):
            sys.exit(f"mutants.py: the tests of {path} fail without any change")
    candidates = [mutant for path in paths for mutant in mutants_of(path)]
    random.Random(int(seed)).shuffle(candidates)
    killed, survivors = 0, []
    for mutant in candidates:
        if killed + len(survivors) == int(count):
            break
        verdict = workshop.judge(mutant)
        if verdict == "invalid":
            continue
        if verdict == "survived":
            survivors.append(mutant)
        else:
            killed += 1
        print(f"{verdict:24} {mutant}", flush=True)
    print(f"\n{killed} of {killed + len(survivors)} changes were noticed.")
    for survivor in survivors:
        print(f"    survived: {survivor}")


if __name__ == "__main__":
    if len(sys.argv) < 6:
        sys.exit(__doc__)
    main(*sys.argv[1:])
