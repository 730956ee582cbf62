#!/usr/bin/env python3
"""Model of the placeholders of messages: what binds to them, and what the text reads.

The model works as slowly and plainly as it can, a character and a rule at a time, and shares nothing with the
library. It writes placeholders.golden, which the test of the library compares itself with:

    placeholder_model.py > placeholders.golden
    placeholder_model.py --check placeholders.golden
    placeholder_model.py --show 'KEY'...                    the records of single keys

The keys are all strings of up to seven letters of ALPHABET. The record of a key tells, for a message with that key:
  - the scan position after each of five parameters,
  - the names that they were bound to,
  - the text with all five, the text with the first one only, and the reversed key, filled with all five.

A line of the golden file is for the keys of one length that share all but their last three letters: length, the
shared letters ("_" for a blank, "." in front), the CRC-32 of their records, and for each key a letter made of the
lowest six bits of the CRC-32 of its record.
"""

import itertools
import sys
import zlib

ALPHABET = "%\\ ab"
LONGEST = 7
VALUES = ["1", "%a%", "\\", "x y", "\\%b"]
LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"


def scan(text, position):
    """Returns whether a placeholder was found, its name, its start, and the position behind it."""
    name = ""
    inside = False
    escaped = False
    start = None
    while position < len(text):
        c = text[position]
        position += 1
        if escaped:
            escaped = False
            continue
        if inside and (c == " " or c == "%"):
            if c == " ":
                position -= 1
            break
        if inside:
            name += c
        if c == "\\":
            escaped = True
            continue
        if c == "%":
            name += c
            start = position - 1
            inside = True
    return inside, name, start, position


class Message:
    def __init__(self, key):
        self.key = key
        self.position = 0
        self.items = []

    def add(self, value):
        found, name, _, self.position = scan(self.key, self.position)
        if found:
            self.items.append((name, value))

    def fill(self, text):
        out = text
        position = 0
        while True:
            found, name, start, position = scan(out, position)
            if not found:
                break
            out = out[:start] + out[position:]
            values = [value for item, value in self.items if item == name]
            value = values[0].replace("\\", "\\\\") if values else "???"
            out = out[:start] + value + out[start:]
            position = start + len(value)
        result = ""
        position = 0
        while position < len(out):
            if out[position] == "\\":
                position += 1
            if position < len(out):
                result += out[position]
            position += 1
        return result


def record(key):
    full = Message(key)
    positions = []
    for value in VALUES:
        full.add(value)
        positions.append(str(full.position))
    single = Message(key)
    single.add(VALUES[0])
    return "|".join(
        [
            ",".join(positions),
            ";".join(name for name, _ in full.items),
            full.fill(key),
            single.fill(key),
            full.fill(key[::-1]),
        ]
    )


def golden():
    for length in range(LONGEST + 1):
        tail = min(3, length)
        for head in itertools.product(ALPHABET, repeat=length - tail):
            whole = 0
            letters = ""
            for rest in itertools.product(ALPHABET, repeat=tail):
                text = record("".join(head + rest)).encode("ascii")
                letters += LETTERS[zlib.crc32(text) & 63]
                whole = zlib.crc32(text + b"\n", whole)
            yield "%d .%s %08x %s" % (length, "".join(head).replace(" ", "_"), whole, letters)


def main(arguments):
    if arguments[:1] == ["--show"]:
        for key in arguments[1:]:
            print("%r: %s" % (key, record(key)))
        return 0
    if arguments[:1] == ["--check"] and len(arguments) == 2:
        with open(arguments[1], encoding="ascii") as file:
            expected = file.read().splitlines()
        actual = list(golden())
        if expected != actual:
            print("%s is not what the model says" % arguments[1], file=sys.stderr)
            return 1
        return 0
    if arguments:
        print(__doc__, file=sys.stderr)
        return 2
    for line in golden():
        print(line)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
