#!/usr/bin/env python3
"""Every tests/**/*Test.cpp is compiled into a program, every suite in it is an entry of ctest, no test is disabled.

usage: tests_registered.py BUILD_DIRECTORY
"""

import json
import os
import re
import subprocess
import sys

from sourcetree import ROOT, code_only, files, finish, read

build = sys.argv[1]
with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
    compiled = {os.path.realpath(os.path.join(entry["directory"], entry["file"])) for entry in json.load(file)}
listing = subprocess.run(["ctest", "-N"], cwd=build, capture_output=True, text=True, check=True).stdout

breaches = []
names = [name for name in files("tests", "Test.cpp") if not name.startswith("tests/consumers/")]
for name in names:
    if os.path.realpath(os.path.join(ROOT, name)) not in compiled:
        breaches.append(f"{name} is in no test program")
    folder = name.split("/")[1]
    text = code_only(read(name))
    suites = set(re.findall(r"^\s*(?:TEST|TEST_F|TEST_P|TYPED_TEST|TYPED_TEST_P)\(\s*(\w+)\s*,", text, re.M))
    if not suites:
        breaches.append(f"{name} has no test")
    for suite in sorted(suites):
        if not re.search(r": " + folder + r"/(?:\w+/)?" + suite + r"(?:[./\s]|$)", listing):
            breaches.append(f"{name}: ctest does not know the suite {suite}")
    for match in re.finditer(r"\bDISABLED_\w+", text):
        breaches.append(f"{name}: {match.group(0)} never runs")
finish(breaches, len(names), "test files")
