#!/usr/bin/env python3
"""Failures are raised by throw functions only: a `throw` with an operand stands in a function whose name begins with
"throw", and no such function returns. Passing on (`throw;`) is free."""

import re

from sourcetree import code_only, files, finish, read

breaches = []
names = files("src", ".h", ".cpp")
for name in names:
    text = code_only(read(name))
    # The text in front of each brace that is open at a place, outermost first.
    heads, start = [], 0
    for match in re.finditer(r"[{};]|\bthrow\b\s*(?!;)", text):
        token = match.group(0)
        if token == "{":
            heads.append(text[start:match.start()])
        elif token == "}":
            if heads:
                heads.pop()
        elif token != ";":
            number = text.count("\n", 0, match.start()) + 1
            if not any(re.search(r"\bthrow(?!If)[A-Z]\w*\s*\(", head) for head in heads):
                breaches.append(f"{name}:{number}: {text.split(chr(10))[number - 1].strip()}")
            continue
        start = match.end()

    for match in re.finditer(r"^([^;{}()]*?)\bvoid\s+(throw(?!If)[A-Z]\w*)\s*\(", text, re.M):
        declared = name.endswith(".h") or "static" in match.group(1)
        if declared and "[[noreturn]]" not in text[max(0, match.start() - 40):match.end()]:
            number = text.count("\n", 0, match.end()) + 1
            breaches.append(f"{name}:{number}: {match.group(2)} is not declared [[noreturn]]")
finish(breaches, len(names), "files")
