"""What the rule checks share: the list of files, and C++ text without comments and literals."""

import os
import re
import sys

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))


def files(folder, *endings):
    """Paths relative to the root, sorted, of the files below `folder` with one of the endings."""
    found = []
    for directory, _, names in os.walk(os.path.join(ROOT, folder)):
        for name in names:
            if name.endswith(endings):
                found.append(os.path.relpath(os.path.join(directory, name), ROOT))
    return sorted(found)


def public_headers():
    """The headers that are installed, relative to src/."""
    return [os.path.relpath(name, "src") for name in files("src", ".h") if not name.startswith("src/pi/platform/")]


def read(name):
    with open(os.path.join(ROOT, name), encoding="utf-8") as file:
        return file.read()


_TOKEN = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<d>[^()\s]*)\(.*?\)(?P=d)"|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])\'(?:\\.|[^\'\\\n])+\'', re.S
)


def code_only(text):
    """The text with comments and literals emptied; line numbers stay."""

    def blank(match):
        token = match.group(0)
        lines = "\n" * token.count("\n")
        return lines if token.startswith(("//", "/*")) else '""' + lines

    return _TOKEN.sub(blank, text)


def finish(breaches, checked, what):
    """Prints what was found and ends the program. Nothing to check is a failure as well."""
    for breach in breaches:
        print(breach)
    print(f"{checked} {what} checked, {len(breaches)} breaches")
    sys.exit(1 if breaches or not checked else 0)
