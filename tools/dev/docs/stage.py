"""Copies what the pages are made of to one directory, in the form that Doxygen reads.

usage: stage.py PROJECT DIRECTORY

Guide pages lie side by side there. Their links lead to each other; a link to a file that has no page becomes the name of
that file. A heading gets its page's name and its own as identifier, by which links find it.

Headers lose what is no declaration of its own: copies and moves that the compiler makes ("= default"), specialisations
that the primary template documents, and classes within the private part of another, to whose list Doxygen would link
without making one. No line moves, so that warnings name the right one.
"""

import os
import re
import shutil
import sys

PROJECT, DIRECTORY = sys.argv[1:3]
ROOT_PAGES = ["README.md", "CONTRIBUTING.md", "SECURITY.md", "CHANGELOG.md"]
EXAMPLE_PAGES = {"examples/qt_board/README.md": "qt_board.md"}

# A header of zelutil::host describes itself above its namespace, which several headers share.
SHARED_NAMESPACE = re.compile(r"\n\n((?:///.*\n)+)(?=namespace zelutil::host \{)")
# A header in C describes itself above its includes.
HEADER_IN_C = re.compile(r"\n\n((?:///.*\n)+)(?=\n#include)")
ACCESS = re.compile(r"^(public|protected|private):$|^};$")
PRIVATE_CLASS = re.compile(r"^    (struct|class) \w+[^;]* \{$")
DEFAULTED = re.compile(r"^ +(\w+\((const \w+&|\w+&&)( \w+)?\)|\w+& operator=\((const \w+&|\w+&&)( \w+)?\)) = default;$")


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def read(path):
    with open(os.path.join(PROJECT, path), encoding="utf-8") as file:
        return file.read()


# --- Headers ----------------------------------------------------------------------------------------------------------


def described_file(text):
    """Has the comment of a header document the header: an empty line above it becomes a command."""
    text = HEADER_IN_C.sub(r"\n/// \\file\n\1", text, count=1)
    return SHARED_NAMESPACE.sub(r"\n/// \\file\n\1", text, count=1)


def without_what_the_language_documents(text):
    lines = text.split("\n")
    for number, line in enumerate(lines):
        if DEFAULTED.match(line):
            lines[number] = ""
        if line == "template <>" and lines[number + 1].endswith(");"):
            lines[number] = lines[number + 1] = ""
    return "\n".join(lines)


def without_private_classes(text):
    lines = text.split("\n")
    is_private = is_within = False
    for number, line in enumerate(lines):
        if ACCESS.match(line):
            is_private = line == "private:"
        is_within = is_within or (is_private and PRIVATE_CLASS.match(line) is not None)
        if is_within:
            lines[number] = ""
        if line == "    };":
            is_within = False
    return "\n".join(lines)


def stage_headers():
    for directory, _, names in os.walk(os.path.join(PROJECT, "include")):
        for name in names:
            path = os.path.relpath(os.path.join(directory, name), PROJECT)
            text = without_private_classes(without_what_the_language_documents(described_file(read(path))))
            write(os.path.join(DIRECTORY, path), text)


# --- Guide pages ------------------------------------------------------------------------------------------------------


def pages():
    """Returns the name of the page of each guide."""
    guides = {path: path for path in ROOT_PAGES}
    guides.update({"docs/" + name: name for name in os.listdir(os.path.join(PROJECT, "docs")) if name.endswith(".md")})
    return {**guides, **EXAMPLE_PAGES}


def identifier(page, heading=""):
    """Returns the identifier of a page, or of the heading in it that GitHub's kind of link names so."""
    words = re.sub(r"[^\w\- ]", "", heading.lower()).strip().replace(" ", "-")
    name = page[: -len(".md")]
    if not words:
        return "index" if page == "README.md" else name
    return f"{name}-{words}"


def code(match):
    """Returns code in a line as HTML where Doxygen 1.9 would take a quotation mark or a bracket in it for its own."""
    text = match[1]
    if not re.search(r"[\"<>]", text):
        return match[0]
    for character, name in (("\\", "\\\\"), ("&", "&amp;"), ("<", "&lt;"), (">", "&gt;"), ('"', "&quot;"), ("*", "\\*")):
        text = text.replace(character, name)
    return f"<code>{text}</code>"


class Guide:
    def __init__(self, path, names):
        self.path = path
        self.page = names[path]
        self.names = names
        self.identifiers = set()

    def target(self, link):
        """Returns where the link leads among the pages, or nothing for a file that has none."""
        if re.match(r"\w+://", link):
            return link
        file, _, heading = link.partition("#")
        path = os.path.normpath(os.path.join(os.path.dirname(self.path), file)) if file else self.path
        if path in self.names:
            return "#" + identifier(self.names[path], heading)
        if not os.path.exists(os.path.join(PROJECT, path)):
            sys.exit(f"{self.path}: there is no {link}")
        if path.startswith("docs/images/"):
            return os.path.basename(path)
        return None

    def link(self, match):
        text, link = match.groups()
        target = self.target(link)
        if target is None:
            path = os.path.normpath(os.path.join(os.path.dirname(self.path), link))
            return f"{text} (`{path}`)"
        return f"[{text}]({target})"

    def new_identifier(self, heading):
        """Returns the identifier of a heading; of several of one text the later ones are numbered."""
        first = unique = identifier(self.page, heading)
        number = 0
        while unique in self.identifiers:
            number += 1
            unique = f"{first}-{number}"
        self.identifiers.add(unique)
        return unique

    def heading(self, match):
        line, level, text = match.group(0, 1, 2)
        if level == "#":
            return line if self.page == "README.md" else f"{line} {{#{identifier(self.page)}}}"
        return f"{line} {{#{self.new_identifier(text)}}}"

    def prose(self, text):
        text = re.sub(r"\[([^\]]*)\]\(([^)]*)\)", self.link, text)
        # Doxygen 1.9 takes two stars before code for a text of two stars.
        text = re.sub(r"\*\*((?:`[^`]*`|[^*`])+)\*\*", lambda bold: f"<b>{bold[1]}</b>", text)
        text = re.sub(r"`([^`]+)`", code, text)
        return re.sub(r"^(#+) (.*)$", self.heading, text, flags=re.MULTILINE)

    def text(self):
        """Returns the page. Code stays as it is, but Doxygen colours C++ only."""
        parts = re.split(r"(^```[^\n]*\n.*?^```$|(?<=\n\n)(?:    [^\n]*\n|\n(?=    ))+)",
                         read(self.path), flags=re.MULTILINE | re.DOTALL)
        for number, part in enumerate(parts):
            if number % 2 == 0:
                parts[number] = self.prose(part)
            elif part.startswith("```") and not part.startswith("```cpp"):
                parts[number] = re.sub(r"^```.*", "```{.unparsed}", part)
        return "".join(parts)


def stage_guides():
    names = pages()
    for path, page in names.items():
        write(os.path.join(DIRECTORY, "guides", page), Guide(path, names).text())


shutil.rmtree(DIRECTORY, ignore_errors=True)
stage_headers()
stage_guides()
