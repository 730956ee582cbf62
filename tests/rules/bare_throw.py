#!/usr/bin/env python3
"""Failures are raised by the throw functions only: a `throw` with an operand stands in a file of throw functions, or in the
one operation by which an exception object throws itself. Passing on (`throw;`) is free."""

import re

from sourcetree import code_only, files, finish, read

# Sources whose purpose is to throw.
THROWERS = {
    "src/std/cSTDExceptions.cpp": "throw functions of std",
    "src/ucs/cUCSExceptions.cpp": "throw functions of ucs",
    "src/rmi/cRMIExceptions.cpp": "throw functions of rmi",
    "src/pi/cPIExceptions.cpp": "throw functions of pi",
    "src/std/tBounds.cpp": "index failures of the array templates",
}

breaches = []
names = files("src", ".h", ".cpp")
for name in names:
    if name in THROWERS:
        continue
    for match in re.finditer(r"\bthrow\b\s*(?!;)", text := code_only(read(name))):
        number = text.count("\n", 0, match.start()) + 1
        line = text.split("\n")[number - 1].strip()
        if line.startswith("#") or re.match(r"throw\s*\(", text[match.start():]) and "noexcept" in line:
            continue
        breaches.append(f"{name}:{number}: {line}")
finish(breaches, len(names), "files")
