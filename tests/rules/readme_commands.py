#!/usr/bin/env python3
"""The README's commands run: each ```sh block, line by line in one shell, in a copy of the checkout with a home of its own.
`first.cpp` is the README's program. test.sh would start this test again, so of it only the help is asked for.

usage: readme_commands.py WORK_DIRECTORY
"""

import os
import re
import shutil
import subprocess
import sys

from sourcetree import ROOT, read

work = sys.argv[1]
shutil.rmtree(work, ignore_errors=True)
checkout = os.path.join(work, "checkout")
os.makedirs(os.path.join(work, "home"))
files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, capture_output=True, text=True, check=True)
for name in files.stdout.splitlines():
    source = os.path.join(ROOT, name)
    if os.path.isfile(source):
        target = os.path.join(checkout, name)
        os.makedirs(os.path.dirname(target), exist_ok=True)
        shutil.copy2(source, target)

text = read("README.md")
with open(os.path.join(checkout, "first.cpp"), "w", encoding="utf-8") as file:
    file.write(re.search(r"^```cpp\n(.*?)^```", text, re.M | re.S).group(1))

blocks = re.findall(r"^```sh\n(.*?)^```", text, re.M | re.S)
script = "set -eux\n" + "\n".join(blocks)
script, replaced = re.subn(r"^\./test\.sh\b.*$", "./test.sh --help", script, flags=re.M)
environment = dict(os.environ, HOME=os.path.join(work, "home"))
environment.setdefault("CCACHE_DIR", os.path.expanduser("~/.cache/ccache"))
# The caller's build must not steer this one.
for variable in ("DESTDIR", "PKG_CONFIG_PATH", "LD_LIBRARY_PATH"):
    environment.pop(variable, None)
done = subprocess.run(["bash", "-c", script], cwd=checkout, env=environment, stdout=subprocess.PIPE,
                      stderr=subprocess.STDOUT, text=True, check=False)
print(done.stdout)
if "Hello from a turn of the loop" not in done.stdout:
    print("the first program did not say hello")
    sys.exit(1)
sys.exit(done.returncode or (0 if blocks and replaced else 1))
