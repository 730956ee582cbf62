#!/usr/bin/env python3
"""What the library may include: the language's support headers and the C library everywhere, the system's headers in the
host's folder only, nothing else of the standard library at all; quoted includes name a file below src/."""

import os
import re

from sourcetree import ROOT, code_only, files, finish, read

LANGUAGE = {"new", "typeinfo", "type_traits", "utility", "exception", "limits", "initializer_list", "cxxabi.h"}
C_LIBRARY = {"assert", "ctype", "errno", "fenv", "float", "inttypes", "limits", "locale", "math", "setjmp", "signal",
             "stdarg", "stdbool", "stddef", "stdint", "stdio", "stdlib", "string", "time", "wchar", "wctype"}
ALLOWED = LANGUAGE | {name + ".h" for name in C_LIBRARY} | {"c" + name for name in C_LIBRARY}
# Of C++'s own library these have no place in the host's folder either.
CPP_NAME = re.compile(r"^[a-z_]+$")

breaches = []
names = files("src", ".h", ".cpp")
for name in names:
    for number, line in enumerate(read(name).split("\n"), 1):
        match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)[>"]', line)
        if not match:
            continue
        kind, header = match.groups()
        place = f"{name}:{number}: "
        if kind == '"':
            if not os.path.exists(os.path.join(ROOT, "src", header)):
                breaches.append(place + f'"{header}" is not a path below src/')
            elif header.startswith("pi/platform/") and not name.startswith("src/pi/platform/") and name.endswith(".h"):
                breaches.append(place + f'public header includes "{header}" of the host')
        elif header in ALLOWED:
            continue
        elif CPP_NAME.match(header):
            breaches.append(place + f"<{header}> of the standard library is not used here")
        elif not name.startswith("src/pi/platform/"):
            breaches.append(place + f"<{header}> belongs under src/pi/platform/")

# No header includes itself over a detour.
graph = {}
for name in names:
    if name.endswith(".h"):
        included = re.findall(r'^\s*#\s*include\s*"([^"]+)"', read(name), re.M)
        # The bodies of a long template, name-inl.h, are one header with name.h.
        graph[name[4:]] = [other for other in included if other != name[4:].replace("-inl.h", ".h")]
state = {}


def visit(header, path):
    state[header] = "open"
    for included in graph.get(header, []):
        if state.get(included) == "open":
            cycle = path[path.index(included):] + [included] if included in path else [header, included]
            breaches.append("cycle of headers: " + " -> ".join(cycle))
        elif included not in state:
            visit(included, path + [included])
    state[header] = "done"


for header in graph:
    if header not in state:
        visit(header, [header])

# Guards are named after their header, and no two are the same.
guards = {}
for header in graph:
    match = re.search(r"^\s*#\s*ifndef\s+(\w+)\s*\n\s*#\s*define\s+(\w+)\b", code_only(read("src/" + header)), re.M)
    stem = re.sub(r"[^A-Za-z0-9]", "_", os.path.basename(header)).upper()
    if not match or match.group(1) != match.group(2) or not re.match(r"MORTISE_\w*_" + stem + "$", match.group(1)):
        breaches.append(f"src/{header}: no guard MORTISE_..._{stem}")
    elif match.group(1) in guards:
        breaches.append(f"src/{header}: has the guard of src/{guards[match.group(1)]}")
    else:
        guards[match.group(1)] = header

finish(breaches, len(names), "files")
