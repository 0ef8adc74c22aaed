"""Validates good and bad files against the command's JSON Schemas by the package jsonschema.

usage: schema_test.py COMMAND PROJECT

The files are those of examples/product and the examples of docs/lint.md. Of the bad ones a schema sees only those of the
rules below; whether names are repeated or known is beyond it.
"""

import json
import os
import re
import subprocess
import sys

import jsonschema

COMMAND, PROJECT = sys.argv[1:3]
KINDS = ("defaults", "user", "actions", "facets")
RULES_OF_FORM = {"ZU003", "ZU004", "ZU005", "ZU021", "ZU022", "ZU025"}
# A text that is no JSON, and one that is no file of the library.
RULES_OF_NO_KIND = {"ZU001", "ZU002"}
SETTINGS = "examples/product/share/qtxsetup/canvas/resources/tessel"

# Files beside the examples: kind, whether it is good, text.
FILES = [
    ("defaults", True, '{"meta":[]}'),
    ("defaults", True, '{"version":7,"meta":[{"header":"","attribute":"a","children":[{"header":"","attribute":"b",'
                       '"tclCommand":"t","submanagerId":101,"defaultsettings":[{"name":"x","value":""}]}]}]}'),
    ("defaults", True, '{"meta":[{"header":"","attribute":"a","tclCommand":"t","submanagerId":7,"defaultsettings":9}]}'),
    ("defaults", False, '[]'),
    ("defaults", False, '{"meta":{}}'),
    ("defaults", False, '{"meta":[{"header":"A"}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","unique":"true"}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","children":[{"header":"","attribute":1}]}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"x"}]}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","tclCommand":"t","submanagerId":100,'
                        '"defaultsettings":[]}]}'),
    ("user", True, '{"meta":[{"header":"","attribute":"a","overriddensettings":[{"actions":"a text"}]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","overriddensettings":[{"x":1}]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","overridensettings":[]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","overriddensettings":[{"actions":[{"id":0,"rmb":true}]}]}]}'),
    ("actions", False, '{"actions":[{"id":1.5,"context":"c","command":"d"}]}'),
    ("actions", False, '{"actions":[{"id":1,"context":"","command":"d"}]}'),
    ("facets", False, '{"meta":[{"header":"A","facets":[{"name":"x"}]}]}'),
]


def kind_of(text):
    """Tells the kind of an example as docs/lint.md says."""
    for kind, words in (("user", ("overriddensettings",)), ("defaults", ("defaultsettings", "tclCommand")),
                        ("facets", ("facets",)), ("actions", ("actions",))):
        if any(f'"{word}"' in text for word in words):
            return kind
    return "defaults"


def examples():
    """Yields the kind of each example of docs/lint.md, whether its form is good, its text and its rule."""
    with open(os.path.join(PROJECT, "docs/lint.md"), encoding="utf-8") as file:
        document = file.read()
    for number, body in re.findall(r"^## (ZU\d+): (.*?)(?=^## |\Z)", document, re.MULTILINE | re.DOTALL):
        for label, text in re.findall(r"^(Bad|Good):\n\n```json\n(.*?)\n```", body, re.MULTILINE | re.DOTALL):
            if label == "Good" or number not in RULES_OF_NO_KIND:
                yield kind_of(text), label == "Good" or number not in RULES_OF_FORM, text, number


def main():
    failures = []
    validators = {}
    for kind in KINDS:
        printed = subprocess.run([COMMAND, "schema", kind], stdout=subprocess.PIPE, check=True).stdout
        with open(os.path.join(PROJECT, f"command/schema/{kind}.schema.json"), "rb") as file:
            if printed != file.read():
                failures.append(f"the schema of {kind} that is printed is not the one that is installed")
        schema = json.loads(printed)
        jsonschema.Draft7Validator.check_schema(schema)
        validators[kind] = jsonschema.Draft7Validator(schema)
    files = [(kind, good, text, "a file of this test") for kind, good, text in FILES] + list(examples())
    for kind, name in (("defaults", "tessel_settings.cfg"), ("facets", "facet_settings.cfg")):
        with open(os.path.join(PROJECT, SETTINGS, name), encoding="utf-8") as file:
            files.append((kind, True, file.read(), name))
    for kind, good, text, origin in files:
        errors = [error.message for error in validators[kind].iter_errors(json.loads(text))]
        if good == bool(errors):
            failures.append(f"{origin}: {text}\n  {errors or 'no error'}")
    wrong = subprocess.run([COMMAND, "schema", "other"], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    if wrong.returncode != 2 or wrong.stdout:
        failures.append(f"an unknown kind: exit code {wrong.returncode}")
    print("\n".join(failures))
    bad = sum(1 for file in files if not file[1])
    print(f"{len(files)} files, {bad} of them bad, {len(failures)} failures")
    return 1 if failures or bad < 15 else 0


sys.exit(main())
