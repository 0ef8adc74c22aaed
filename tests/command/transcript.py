"""What documents show of the command, and a world in which that can be run."""

import os
import re
import shutil
import subprocess
import tempfile


def steps(text):
    """Yields each command line of the ```console blocks with the output that follows it."""
    for block in re.findall(r"^```console\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        for step in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
            line, _, output = step.partition("\n")
            yield line, output.rstrip("\n")


class World:
    """The example installation and an empty home in a directory of their own. Documents call them /opt/product and
    /home/ann, and the directory of the command /usr/bin. To be used in a with statement, which removes all."""

    def __init__(self, command, library_name, examples):
        self.directory = tempfile.TemporaryDirectory()
        self.root = self.directory.name
        self.command = command
        self.home = os.path.join(self.root, "home", "ann")
        self.product = os.path.join(self.root, "opt", "product")
        os.makedirs(self.home)
        shutil.copytree(os.path.join(examples, "product"), self.product)
        # The root search wants a file of the library's name there.
        open(os.path.join(self.product, "tools", "bin", library_name), "w").close()
        self.environment = {"PATH": os.path.dirname(command) + os.pathsep + "/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                            "QTXROOT": self.product, "HOMEDRIVE": "Z:", "HOMEPATH": self.home}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.directory.cleanup()

    def run(self, line):
        """Runs the line in a shell. Returns its exit code, and what it prints in the words of a document; standard error
        counts as output."""
        line = re.sub(r"/(opt|home)/", lambda place: self.root + place[0], line)
        done = subprocess.run(["bash", "-c", line], env=self.environment, cwd=self.home, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, encoding="utf-8", check=False)
        printed = done.stdout.replace(self.root, "").replace(os.path.dirname(self.command), "/usr/bin")
        return done.returncode, printed.rstrip("\n")

    def replay(self, text):
        """Runs the command lines of a document one after the other. Returns how many there are, and what differs."""
        transcript = list(steps(text))
        findings = []
        for line, expected in transcript:
            _, printed = self.run(line)
            if printed != expected:
                findings.append(f"$ {line}\n--- transcript:\n{expected}\n--- printed:\n{printed}\n")
        return len(transcript), findings
