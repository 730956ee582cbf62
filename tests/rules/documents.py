#!/usr/bin/env python3
"""The documents keep what they promise.

samples   every ```cpp block of README.md, docs/*.md and the headers' pages compiles without warnings; a block with a main()
          also runs and ends with 0, and prints what the ```text block behind it shows, if there is one
links     every relative link leads to a file
drawings  every drawing has the nodes of the .dot file that it is made from

usage: documents.py WORK_DIRECTORY LIBRARY COMPILER
"""

import concurrent.futures
import glob
import os
import re
import shutil
import subprocess
import sys

from sourcetree import ROOT, finish, read

work, library, compiler = sys.argv[1:4]
shutil.rmtree(work, ignore_errors=True)
os.makedirs(work)

FLAGS = ["-std=c++17", "-Wall", "-Wextra", "-Werror", "-I" + os.path.join(ROOT, "src")]


def check(sample):
    name, line, code, output = sample
    stem = os.path.join(work, re.sub(r"\W", "_", name) + f"_{line}")
    with open(stem + ".cpp", "w", encoding="utf-8") as file:
        file.write(code)
    program = "int main()" in code
    command = [compiler, *FLAGS, stem + ".cpp", "-o", stem]
    if program:
        command += [library, "-Wl,-rpath," + os.path.dirname(library)]
    else:
        command += ["-c"]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        return f"{name}:{line}: sample does not compile:\n{done.stderr}"
    if program:
        done = subprocess.run([stem], capture_output=True, text=True, check=False, timeout=60)
        if done.returncode != 0:
            return f"{name}:{line}: sample ends with {done.returncode}:\n{done.stderr}"
        if output is not None and done.stdout != output:
            return f"{name}:{line}: sample prints\n{done.stdout}instead of\n{output}"
    return None


pages = ["README.md", "CONTRIBUTING.md", "CHANGELOG.md"]
pages += sorted(os.path.relpath(page, ROOT) for page in glob.glob(os.path.join(ROOT, "docs", "*.md")))
pages += sorted(os.path.relpath(page, ROOT) for page in glob.glob(os.path.join(ROOT, "src", "*", "README.md")))

breaches, samples, links = [], [], 0
for page in pages:
    text = read(page)
    for match in re.finditer(r"^```cpp\n(.*?)^```\n(?:\s*```text\n(.*?)^```)?", text, re.M | re.S):
        samples.append((page, text.count("\n", 0, match.start()) + 1, match.group(1), match.group(2)))
    for match in re.finditer(r"\]\(([^)#:]+)\)", text):
        links += 1
        if not os.path.exists(os.path.join(ROOT, os.path.dirname(page), match.group(1))):
            breaches.append(f"{page}: {match.group(1)} is not there")

drawings = glob.glob(os.path.join(ROOT, "docs", "drawings", "*.dot"))
for source in drawings:
    plain = subprocess.run(["dot", "-Tplain", source], capture_output=True, text=True, check=True).stdout
    nodes = set(re.findall(r"^node (\S+)", plain, re.M))
    with open(source[:-4] + ".svg", encoding="utf-8") as file:
        shown = set(re.findall(r'class="node">\s*<title>([^<]+)</title>', file.read()))
    if nodes != shown:
        breaches.append(f"{os.path.relpath(source, ROOT)}: draw it again, it differs in {sorted(nodes ^ shown)}")

with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    breaches += [result for result in pool.map(check, samples) if result]
if not samples or not links or not drawings:
    breaches.append("nothing found to check")
finish(breaches, len(samples) + links + len(drawings), "samples, links and drawings")
