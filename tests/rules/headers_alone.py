#!/usr/bin/env python3
"""Every public header compiles as the only one included, and included twice.

usage: headers_alone.py COMPILER [FLAG...]
"""

import concurrent.futures
import os
import subprocess
import sys

from sourcetree import ROOT, finish, public_headers


def check(header):
    text = f'#include "{header}"\n#include "{header}"\n'
    command = sys.argv[1:] + ["-std=c++17", "-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Wnon-virtual-dtor",
                              "-Woverloaded-virtual", "-Werror", "-fsyntax-only", "-Isrc", "-x", "c++", "-"]
    done = subprocess.run(command, cwd=ROOT, input=text, capture_output=True, text=True, check=False)
    return None if done.returncode == 0 else f"{header} does not compile alone:\n{done.stderr}"


headers = public_headers()
with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
    results = list(pool.map(check, headers))
finish([result for result in results if result], len(headers), "headers")
