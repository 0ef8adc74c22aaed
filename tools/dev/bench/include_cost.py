#!/usr/bin/env python3
"""Measures what the library's header costs a host's compiler.

    include_cost.py INCLUDE_DIRECTORY AIM

Compiles `#include <zelutil/zelutil.h>` and the four headers of the standard library that any host has, in turns, and
prints the ratio of the least processor times. Fails where it is above AIM.
"""

import resource
import subprocess
import sys
import tempfile
from pathlib import Path

ROUNDS = 9
STANDARD = "#include <map>\n#include <memory>\n#include <set>\n#include <string>\n"
LIBRARY = "#include <zelutil/zelutil.h>\n"


def seconds_of(source, include_directory):
    before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
    subprocess.run(["g++", "-std=c++17", "-O2", "-I", include_directory, "-c", source, "-o", "/dev/null"], check=True)
    return resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before


def main():
    include_directory, aim = sys.argv[1], float(sys.argv[2])
    with tempfile.TemporaryDirectory() as directory:
        sources = []
        for name, text in (("standard.cpp", STANDARD), ("library.cpp", LIBRARY)):
            sources.append(Path(directory) / name)
            sources[-1].write_text(text)
        rounds = [[seconds_of(source, include_directory) for source in sources] for _ in range(ROUNDS)]
    standard, library = (min(times) for times in zip(*rounds))
    ratio = library / standard
    print(f"The include takes {library:.2f} s, {ratio:.2f} times the four headers of the standard library; {aim} is the aim.")
    return 0 if ratio <= aim else 1


sys.exit(main())
