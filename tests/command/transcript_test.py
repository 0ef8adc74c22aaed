"""Replays a transcript of the command: runs each line that begins with "$ " and compares what it prints.

usage: transcript_test.py COMMAND LIBRARY_NAME EXAMPLES TRANSCRIPT

The lines stand in the ```console blocks of TRANSCRIPT and share one world, in their order: the example installation and
an empty home, which the transcript calls /opt/product and /home/ann. Standard error counts as output.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile

COMMAND, LIBRARY_NAME, EXAMPLES, TRANSCRIPT = sys.argv[1:5]
HOME_IN_TRANSCRIPT = "/home/ann"
PRODUCT_IN_TRANSCRIPT = "/opt/product"


def steps(text):
    """Yields each command line with the output that follows it."""
    for block in re.findall(r"^```console\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        for step in re.split(r"^\$ ", block, flags=re.MULTILINE)[1:]:
            line, _, output = step.partition("\n")
            yield line, output.rstrip("\n")


def make_world(directory):
    product = os.path.join(directory, "product")
    home = os.path.join(directory, "home")
    shutil.copytree(os.path.join(EXAMPLES, "product"), product)
    os.mkdir(home)
    # The root search wants a file of the library's name there.
    open(os.path.join(product, "tools", "bin", LIBRARY_NAME), "w").close()
    environment = {"PATH": os.path.dirname(COMMAND) + os.pathsep + "/usr/bin:/bin", "LC_ALL": "C.UTF-8",
                   "QTXROOT": product, "HOMEDRIVE": "Z:", "HOMEPATH": home}
    return home, environment


def main():
    with open(TRANSCRIPT, encoding="utf-8") as file:
        transcript = list(steps(file.read()))
    failures = 0
    with tempfile.TemporaryDirectory() as directory:
        home, environment = make_world(directory)
        for line, expected in transcript:
            done = subprocess.run(["bash", "-c", line], env=environment, cwd=home, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, encoding="utf-8")
            printed = done.stdout.replace(home, HOME_IN_TRANSCRIPT).rstrip("\n")
            printed = printed.replace(environment["QTXROOT"], PRODUCT_IN_TRANSCRIPT)
            if printed != expected:
                failures += 1
                print(f"$ {line}\n--- transcript:\n{expected}\n--- printed:\n{printed}\n")
    print(f"{len(transcript)} steps, {failures} of them differ")
    return 1 if failures or not transcript else 0


sys.exit(main())
