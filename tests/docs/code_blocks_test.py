"""Compiles or runs every block of code in README and docs.

usage: code_blocks_test.py PROJECT COMMAND LIBRARY_NAME PREFIX CXX CXX_FLAGS

COMMAND is the built `zelutil`, PREFIX an installed zelutil, and CXX_FLAGS what a host needs to be linked with it. A block
tells by its word behind ``` what it is, and CHECKS what is done with it; one without a word is an error.
"""

import glob
import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

PROJECT, COMMAND, LIBRARY_NAME, PREFIX, CXX, CXX_FLAGS = sys.argv[1:7]
sys.path.insert(0, os.path.join(PROJECT, "tests/command"))
from transcript import World  # noqa: E402

# Tests of their own read these: the rules' examples, the long transcript, the examples of the shortcut rules.
CHECKED_ELSEWHERE = {("docs/lint.md", "json"), ("docs/command.md", "console"), ("docs/shortcuts.md", "shortcuts")}
USERS_FILE = '{"meta": [{"header": "Display", "attribute": "display", "overriddensettings": []}]}'
# The presets that a command line of cmake names.
PRESET = re.compile(r"--preset (\S+)|(?:--build|--install) build/(\S+)")


def read(path):
    with open(os.path.join(PROJECT, path), encoding="utf-8") as file:
        return file.read()


def write(path, text):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def documents():
    paths = ["README.md", "CONTRIBUTING.md", "SECURITY.md", "CHANGELOG.md"]
    for pattern in ("docs/*.md", "examples/*/README.md"):
        paths += sorted(os.path.relpath(path, PROJECT) for path in glob.glob(os.path.join(PROJECT, pattern)))
    return paths


class Block:
    def __init__(self, document, line, kind, text):
        self.document, self.line, self.kind, self.text = document, line, kind, text

    def lines(self):
        """Returns the words of each command line, without comments."""
        for line in self.text.splitlines():
            words = shlex.split(line, comments=True)
            if words:
                yield line, words


def blocks(document):
    """Yields the blocks of a document; code that is merely indented has the kind "indented"."""
    opened = None
    previous = ""
    for number, line in enumerate(read(document).splitlines(keepends=True), 1):
        if opened is None and line.startswith("```"):
            opened = Block(document, number, line[3:].strip(), "")
        elif opened is not None and line.startswith("```"):
            yield opened
            opened = None
        elif opened is not None:
            opened.text += line
        elif line.startswith("    ") and not previous.strip():
            yield Block(document, number, "indented", line)
        previous = line


def ran(arguments, **options):
    """Returns nothing when the program succeeds, else what it printed."""
    done = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, encoding="utf-8", check=False,
                          **options)
    return [] if done.returncode == 0 else [f"{' '.join(arguments)}: {done.returncode}\n{done.stdout}"]


# --- C++ and CMake ----------------------------------------------------------------------------------------------------


def check_cpp(block, directory):
    source = os.path.join(directory, "block.cpp")
    write(source, block.text if block.text.startswith("#include") else "#include <zelutil/zelutil.h>\n" + block.text)
    return ran([CXX, "-std=c++17", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-I", os.path.join(PROJECT, "include"),
                source])


def check_cmake(block, directory):
    """Configures a project with these lines, whose host is called as they call it."""
    project = os.path.join(directory, "project")
    os.mkdir(project)
    write(os.path.join(project, "host.cpp"), "int main() {}\n")
    write(os.path.join(project, "CMakeLists.txt"),
          "cmake_minimum_required(VERSION 3.25)\nproject(block LANGUAGES CXX)\nadd_executable(my_host host.cpp)\n" + block.text)
    return ran(["cmake", "-S", project, "-B", os.path.join(project, "build"), f"-DCMAKE_PREFIX_PATH={PREFIX}",
                f"-DCMAKE_CXX_COMPILER={CXX}", "-DCMAKE_CXX_COMPILER_WORKS=1"])


# --- Shell ------------------------------------------------------------------------------------------------------------


def check_dev(words):
    """./dev has the command, and the first line of its script has the options."""
    if len(words) == 1:
        return []
    script = f"tools/dev/{words[1]}.sh"
    if not os.path.exists(os.path.join(PROJECT, script)):
        return [f"./dev has no command {words[1]}"]
    usage = read(script).splitlines()[0]
    return [f"./dev {words[1]} has no {word}" for word in words[2:] if word.startswith("--") and word not in usage]


def check_packages(words):
    known = set(re.findall(r"[\w+.-]+", read("tools/dev/lib/packages.sh")))
    return [f"./dev needs no package {word}" for word in words[3:] if word not in known]


def check_presets(line):
    known = {preset["name"] for preset in json.loads(read("CMakePresets.json"))["configurePresets"]}
    return [f"there is no preset {name}" for pair in PRESET.findall(line) for name in pair if name and name not in known]


def new_world():
    return World(COMMAND, LIBRARY_NAME, os.path.join(PROJECT, "examples"))


def prepare(world):
    """Adds what the documents name besides: two versions of the defaults, and users' files."""
    defaults = os.path.join(world.product, "share/qtxsetup/canvas/resources/tessel/tessel_settings.cfg")
    for name in ("old.cfg", "new.cfg"):
        shutil.copy(defaults, os.path.join(world.home, name))
    for name in ("product-1", "product-2"):
        shutil.copytree(world.product, os.path.join(world.root, "opt", name))
    for directory in ("pcbenv/tessel", "users"):
        os.makedirs(os.path.join(world.home, directory))
        write(os.path.join(world.home, directory, "tessel_settings.cfg"), USERS_FILE)


def check_in_world(line, world):
    code, printed = world.run(line)
    return [] if code == 0 else [f"{line}: {code}\n{printed}"]


def check_sh(block, directory):
    if any(words[0] == "g++" for _, words in block.lines()):
        return walk_through(block, directory)
    findings = []
    with new_world() as world:
        prepare(world)
        for line, words in block.lines():
            if words[0] == "./dev":
                findings += check_dev(words)
            elif words[:3] == ["sudo", "apt-get", "install"]:
                findings += check_packages(words)
            elif words[0] == "cmake":
                findings += check_presets(line)
            else:
                findings += check_in_world(line, world)
    return findings


def walk_through(block, directory):
    """Does what the document asks a stranger to do: builds its first host with the installed library and runs it."""
    host = next(other for other in blocks(block.document) if other.kind == "cpp")
    write(os.path.join(directory, "host.cpp"), host.text)
    os.mkdir(os.path.join(directory, "build"))
    shutil.copytree(os.path.join(PROJECT, "examples"), os.path.join(directory, "examples"))
    home = os.path.join(directory, "home")
    os.mkdir(home)
    os.symlink(PREFIX, os.path.join(home, "zelutil"))
    tools = os.path.join(directory, "tools")
    os.mkdir(tools)
    write(os.path.join(tools, "g++"), f'#!/bin/sh\nexec "{CXX}" {CXX_FLAGS} "$@"\n')
    os.chmod(os.path.join(tools, "g++"), 0o755)
    environment = {"PATH": tools + ":/usr/bin:/bin", "HOME": home, "LC_ALL": "C.UTF-8"}
    findings = ran(["bash", "-e", "-c", block.text], cwd=directory, env=environment)
    if not findings and not os.path.exists(os.path.join(home, "pcbenv/tessel/tessel_settings.cfg")):
        findings.append("the host has saved nothing")
    return findings


# --- The command and its files ----------------------------------------------------------------------------------------


def check_console(block, _):
    with new_world() as world:
        count, findings = world.replay(f"```console\n{block.text}```\n")
    return findings if count else ["no line begins with a prompt"]


def check_json(block, _):
    """JSON is a file of the library's, which the linter is content with, a profile, or an editor's settings."""
    content = json.loads(block.text)
    if "json.schemas" in content:
        files = [entry["url"].rpartition("/")[2] for entry in content["json.schemas"]]
        return [f"there is no schema {file}" for file in files
                if not os.path.exists(os.path.join(PROJECT, "command/schema", file))]
    with new_world() as world:
        write(os.path.join(world.home, "block.json"), block.text)
        return check_in_world(f"zelutil {'import' if 'zelutilProfile' in content else 'lint'} block.json", world)


def check_wishes(block, _):
    with new_world() as world:
        write(os.path.join(world.home, "wishes.txt"), block.text)
        return check_in_world("zelutil plan wishes.txt", world)


def check_usage(block, _):
    """Each option is one that the help of the subcommand names."""
    words = block.text.split()
    with new_world() as world:
        code, help_text = world.run(" ".join(words[:2]) + " --help")
    options = re.findall(r"--[\w-]+", block.text)
    return [f"{words[1]} has no {option}" for option in options if code != 0 or option not in help_text]


def check_text(_block, _directory):
    """A drawing means nothing to a program."""
    return []


CHECKS = {"cpp": check_cpp, "cmake": check_cmake, "sh": check_sh, "console": check_console, "json": check_json,
          "wishes": check_wishes, "usage": check_usage, "text": check_text}


def check(block):
    if block.kind not in CHECKS:
        return [f"nobody knows how to check code of the kind {block.kind!r}"]
    with tempfile.TemporaryDirectory() as directory:
        return CHECKS[block.kind](block, directory)


def main():
    counts = {}
    failures = 0
    for document in documents():
        for block in blocks(document):
            if (document, block.kind) in CHECKED_ELSEWHERE:
                continue
            counts[block.kind] = counts.get(block.kind, 0) + 1
            for finding in check(block):
                failures += 1
                print(f"{document}:{block.line}: {finding}")
    print(", ".join(f"{count} {kind}" for kind, count in sorted(counts.items())) + f"; {failures} failures")
    return 1 if failures or not counts else 0


sys.exit(main())
