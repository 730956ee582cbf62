#!/usr/bin/env python3
"""Drives gdb over a small program and compares what the printers show. gdb itself must find them beside the library.

usage: printersTest.py PROGRAM LIBRARY
"""

import os
import subprocess
import sys

program, library = sys.argv[1:3]
EXPECTED = {
    "bytes": r'"say \"hello\""',
    "noBytes": '""',
    "text": '"grüß dich"',
    "numbers": "tArray of 2, capacity 32 = {3, 1}",
    "words": 'tVector of 2 = {"one", "two"}',
    "*points.mppPool[0][0]": "{x = 5, y = 6}",
    "list": "tList of 2, 1 to be erased = {10, 20}",
    "hash": 'tHash of 1 = {["key"] = "value"}',
    "owner": "tAutoPtr, object = {get() = {x = 1, y = 2}}",
    "nobody": "tAutoPtr, empty",
    "shared": "tSharedObject, 2 strong, 1 watching = {get() = {x = 3, y = 4}}",
    "watch": "tSharedObjectWatch, 2 strong, 1 watching = {get() = {x = 3, y = 4}}",
    "gone": "tSharedObject, empty",
    "widow": "tSharedObjectWatch, its object is gone",
    "time": "2009-02-13 23:31:30.000001 UTC",
    "message": 'cLIMessage "Cannot open door!"',
    "noMessage": "cLIMessage, empty",
}
STARTS = {"points": "tPtrVector of 1 = {0x", "pointList": "tPtrList of 1 = {0x"}

commands = ["set breakpoint pending on", "break show", "run", "up"]
names = list(EXPECTED) + list(STARTS)
for name in names:
    commands += [f"echo @@{name}=", f"output {name}", "echo \\n"]
arguments = ["gdb", "-q", "-nx", "-batch", "-iex", "set auto-load safe-path " + os.path.dirname(library),
             "-iex", "set disable-randomization off", "-iex", "set debuginfod enabled off"]
for command in commands:
    arguments += ["-ex", command]
environment = dict(os.environ, LC_ALL="C.UTF-8")
done = subprocess.run(arguments + [program], capture_output=True, text=True, env=environment, check=False)
shown = {}
for line in done.stdout.split("\n"):
    if line.startswith("@@"):
        name, _, value = line[2:].partition("=")
        shown[name] = value

failures = 0
for name in names:
    value = shown.get(name)
    good = value == EXPECTED[name] if name in EXPECTED else (value or "").startswith(STARTS[name])
    if not good:
        failures += 1
        print(f"{name}: gdb shows {value!r}, expected {EXPECTED.get(name, STARTS.get(name))!r}")
if failures:
    print(done.stdout)
    print(done.stderr)
print(f"{len(names)} values shown, {failures} wrong")
sys.exit(1 if failures else 0)
