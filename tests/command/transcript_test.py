"""Replays a transcript of the command: runs each line that begins with "$ " and compares what it prints.

usage: transcript_test.py COMMAND LIBRARY_NAME EXAMPLES TRANSCRIPT

The lines stand in the ```console blocks of TRANSCRIPT and share one world, in their order.
"""

import sys

from transcript import World

COMMAND, LIBRARY_NAME, EXAMPLES, TRANSCRIPT = sys.argv[1:5]

with open(TRANSCRIPT, encoding="utf-8") as file, World(COMMAND, LIBRARY_NAME, EXAMPLES) as world:
    count, findings = world.replay(file.read())
print("\n".join(findings))
print(f"{count} steps, {len(findings)} of them differ")
sys.exit(1 if findings or count == 0 else 0)
