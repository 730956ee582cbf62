#!/usr/bin/env python3
"""Carries the bytes of random values from one program to another and back, and compares them at each end.

usage: carryTest.py same|other NEAR [ARGUMENT...] -- FAR [ARGUMENT...]

Both are mortise-carrier, built for one processor or for two, as the first word says; each may stand behind an emulator.
"""

import os
import subprocess
import sys
import tempfile

SEED = 4711
COUNT = 300
LIMIT = 200  # seconds for one run


def machine(program):
    """Word size and number of the processor that a program is for, from its header."""
    with open(program, "rb") as file:
        header = file.read(20)
    assert header[:4] == b"\x7fELF", program
    return header[4], int.from_bytes(header[18:20], "little")


def run(program, *arguments):
    subprocess.run(program + [str(argument) for argument in arguments], check=True, timeout=LIMIT)


def content(name):
    with open(name, "rb") as file:
        return file.read()


def journey(writer, reader, directory):
    """From the writer to the reader and back; returns the bytes."""
    first, second, third = (os.path.join(directory, name) for name in ("first", "second", "third"))
    run(writer, "write", SEED, COUNT, first)
    run(reader, "again", SEED, COUNT, first, second)
    run(writer, "again", SEED, COUNT, second, third)
    assert len(content(first)) > COUNT * 1000, "hardly anything was written"
    assert content(first) == content(second), "the reader wrote something else"
    assert content(first) == content(third), "something else came back"
    return content(first)


def refuses(reader, directory, bytes_):
    """A reader that takes anything would show nothing: one changed byte must be noticed."""
    name = os.path.join(directory, "changed")
    for position in (len(bytes_) // 3, len(bytes_) // 2, len(bytes_) - 5):
        changed = bytearray(bytes_)
        changed[position] ^= 0x10
        with open(name, "wb") as file:
            file.write(changed)
        result = subprocess.run(reader + ["again", str(SEED), str(COUNT), name, os.devnull], timeout=LIMIT,
                                stderr=subprocess.DEVNULL, check=False)
        assert result.returncode == 1, f"a change at {position} went by with {result.returncode}"


def main():
    split = sys.argv.index("--")
    near, far = sys.argv[2:split], sys.argv[split + 1:]
    print("from", machine(near[-1]), "to", machine(far[-1]))
    assert (machine(near[-1]) == machine(far[-1])) == (sys.argv[1] == "same"), "not the processors that were meant"
    with tempfile.TemporaryDirectory() as directory:
        there = journey(near, far, directory)
        back = journey(far, near, directory)
        assert there == back, "the two programs write different bytes"
        refuses(near, directory, there)
        refuses(far, directory, there)
    print(f"{COUNT} streams, {len(there)} bytes, carried both ways")


main()
