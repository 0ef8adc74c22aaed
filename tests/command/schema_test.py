"""Validates good and bad files against the command's JSON Schemas by the package jsonschema.

usage: schema_test.py COMMAND PROJECT

The files are those of examples/product and the examples of docs/lint.md. Of the bad ones a schema sees only those of the
rules below; whether names are repeated or known is beyond it. Every small change of some good files is looked at by the
schema and by those rules of `zelutil lint`: both accept it or neither does.
"""

import json
import os
import re
import subprocess
import sys
import tempfile

import jsonschema

COMMAND, PROJECT = sys.argv[1:3]
KINDS = ("defaults", "user", "actions", "facets")
RULES_OF_FORM = {"ZU003", "ZU004", "ZU005", "ZU021", "ZU022", "ZU025"}
# A text that is no JSON, one that is no file of the library, and one with a byte that is no UTF-8.
RULES_OF_NO_KIND = {"ZU001", "ZU002", "ZU031"}
SETTINGS = "examples/product/share/qtxsetup/canvas/resources/tessel"

# Files beside the examples: kind, whether it is good, text.
FILES = [
    ("defaults", True, '{"meta":[]}'),
    ("defaults", True, '{"version":7,"meta":[{"header":"","attribute":"a","children":[{"header":"","attribute":"b",'
                       '"tclCommand":"t","submanagerId":101,"defaultsettings":[{"name":"x","value":""}]}]}]}'),
    ("defaults", True, '{"meta":[{"header":"","attribute":"a","tclCommand":"t","submanagerId":7,"defaultsettings":9}]}'),
    ("defaults", False, '[]'),
    ("defaults", False, '{"meta":{}}'),
    # A section groups others or has settings, for which both members are needed.
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","tclCommand":"t"}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","defaultsettings":[]}]}'),
    ("defaults", False, '{"meta":[{"header":"A"}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","unique":"true"}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","children":[{"header":"","attribute":1}]}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","tclCommand":"t","defaultsettings":[{"name":"x"}]}]}'),
    ("defaults", False, '{"meta":[{"header":"","attribute":"a","tclCommand":"t","submanagerId":100,'
                        '"defaultsettings":[]}]}'),
    ("user", True, '{"meta":[{"header":"","attribute":"a","overriddensettings":[{"actions":"a text"}]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","overriddensettings":[{"x":1}]}]}'),
    ("user", True, '{"meta":[{"header":"","attribute":"a","submanagerId":7,"overriddensettings":{"x":[1]}}]}'),
    ("user", True, '{"meta":[{"header":"","attribute":"a","submanagerId":100,"overriddensettings":[]}]}'),
    ("user", True, '{"meta":[{"header":"","attribute":"a","overriddensettings":[{"actions":[]}]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","submanagerId":100,"overriddensettings":[{"x":"y"}]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","submanagerId":100,"overriddensettings":[{"actions":[]},'
                    '{"actions":[]}]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","submanagerId":101,"overriddensettings":[{"actions":[]}]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","overridensettings":[]}]}'),
    ("user", False, '{"meta":[{"header":"","attribute":"a","overriddensettings":[{"actions":[{"id":0,"rmb":true}]}]}]}'),
    ("actions", False, '{"actions":[{"id":1.5,"context":"c","command":"d"}]}'),
    ("actions", False, '{"actions":[{"id":1,"context":"","command":"d"}]}'),
    ("facets", False, '{"meta":[{"header":"A","facets":[{"name":"x"}]}]}'),
]


# Good files with all that the forms have. The last sections tell the kind where another one lacks what does.
CHANGED = {
    "defaults": {"version": 7, "meta": [
        {"header": "A", "attribute": "a", "tclCommand": "t", "unique": True, "submanagerId": 101,
         "defaultsettings": [{"name": "x", "value": "1"}],
         "children": [{"header": "B", "attribute": "b"}]},
        {"header": "K", "attribute": "k", "tclCommand": "t", "submanagerId": 100, "defaultsettings": {"actions": [
            {"id": 1, "parent_id": 0, "name": "n", "icon": "i", "context": "c", "command": "d", "shortcut": "M",
             "rmb": True}]}},
        {"header": "H", "attribute": "h", "tclCommand": "t", "submanagerId": 7, "defaultsettings": {"x": [1]}},
        {"header": "Z", "attribute": "z", "tclCommand": "t", "defaultsettings": []}]},
    "user": {"meta": [
        {"header": "A", "attribute": "a", "unique": 1, "overriddensettings": [{"x": "1", "y": "2"}],
         "children": [{"header": "B", "attribute": "b", "submanagerId": 101, "overriddensettings": [{"x": "1"}]}]},
        {"header": "K", "attribute": "k", "submanagerId": 100, "overriddensettings": [{"actions": [
            {"id": 1, "shortcut": "M", "rmb": True}]}]},
        {"header": "H", "attribute": "h", "submanagerId": 7, "overriddensettings": {"x": [1]}},
        {"header": "Z", "attribute": "z", "overriddensettings": []}]},
    "actions": {"actions": [
        {"id": 1, "parent_id": 2, "name": "n", "icon": "i", "context": "c", "command": "d"},
        {"id": 2, "parent_id": 0, "name": "n", "icon": "i", "context": "c", "command": "e", "shortcut": "M",
         "rmb": True},
        {"id": 3, "context": "c", "command": "f"}]},
    "facets": {"version": 7, "meta": [
        {"header": "A", "facets": [{"name": "x", "type": "Numerical"}, {"name": "y", "type": "Text"}]},
        {"header": "Z", "facets": []}]},
}
VALUES = (None, True, 0, -1, 2, 2147483648, 1.5, "", "x", [], {}, [{}], ["x"], {"x": "y"})


def changed_values(value):
    """Yields the value with one place changed: replaced, left out, doubled, or beside a member that is unknown."""
    for other in VALUES:
        if other != value or type(other) is not type(value):
            yield other
    if isinstance(value, list):
        for at, element in enumerate(value):
            yield value[:at] + value[at + 1:]
            yield value[:at] + [element] + value[at:]
            for other in changed_values(element):
                yield value[:at] + [other] + value[at + 1:]
    if isinstance(value, dict):
        yield {**value, "unknown": "x"}
        for key, member in value.items():
            yield {other: kept for other, kept in value.items() if other != key}
            for other in changed_values(member):
                yield {**value, key: other}


def refused_by_lint(texts):
    """Returns the numbers of the texts in whose form `zelutil lint` finds something."""
    with tempfile.TemporaryDirectory() as directory:
        names = [os.path.join(directory, f"{number}.cfg") for number in range(len(texts))]
        for name, text in zip(names, texts):
            with open(name, "w", encoding="utf-8") as file:
                file.write(text)
        rules = [option for rule in sorted(RULES_OF_FORM | RULES_OF_NO_KIND) for option in ("--rule", rule)]
        lint = subprocess.run([COMMAND, "lint", "--json", *rules, *names], stdout=subprocess.PIPE, check=False)
    files = json.loads(lint.stdout)["files"]
    assert [file["file"] for file in files] == names
    return {number for number, file in enumerate(files) if file["results"]}


def disagreements(kind, validator):
    """Returns a line for each change that either the schema or lint alone accepts, and the number of changes."""
    texts = sorted({json.dumps(value) for value in changed_values(CHANGED[kind])})
    refused = refused_by_lint(texts)
    lines = []
    for number, text in enumerate(texts):
        errors = [error.message for error in validator.iter_errors(json.loads(text))]
        if bool(errors) != (number in refused):
            lines.append(f"{kind}: {text}\n  schema: {errors or 'no error'}; lint finds "
                         f"{'something' if number in refused else 'nothing'}")
    return lines, len(texts)


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
        if schema.get("$id") != f"urn:zelutil:schema:{kind}:1":
            failures.append(f"the schema of {kind} is not known by its name")
        form = json.loads(subprocess.run([COMMAND, "schema", kind, "--json"], stdout=subprocess.PIPE, check=True).stdout)
        if form != {"zelutil": {"format": 1, "command": "schema"}, "kind": kind, "schema": schema, "findings": []}:
            failures.append(f"the form for programs of the schema of {kind} is another one")
        validators[kind] = jsonschema.Draft7Validator(schema)
    files = [(kind, good, text, "a file of this test") for kind, good, text in FILES] + list(examples())
    for kind, name in (("defaults", "tessel_settings.cfg"), ("facets", "facet_settings.cfg")):
        with open(os.path.join(PROJECT, SETTINGS, name), encoding="utf-8") as file:
            files.append((kind, True, file.read(), name))
    for kind, good, text, origin in files:
        errors = [error.message for error in validators[kind].iter_errors(json.loads(text))]
        if good == bool(errors):
            failures.append(f"{origin}: {text}\n  {errors or 'no error'}")
    changes = 0
    for kind in KINDS:
        lines, count = disagreements(kind, validators[kind])
        failures += lines
        changes += count
    wrong = subprocess.run([COMMAND, "schema", "other"], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    if wrong.returncode != 2 or wrong.stdout:
        failures.append(f"an unknown kind: exit code {wrong.returncode}")
    print("\n".join(failures))
    bad = sum(1 for file in files if not file[1])
    print(f"{len(files)} files, {bad} of them bad, {changes} changes, {len(failures)} failures")
    return 1 if failures or bad < 15 or changes < 1000 else 0


sys.exit(main())
