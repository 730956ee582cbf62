#!/usr/bin/env python3
"""Runs `mortise dump` as a user would, and looks at what belongs to the tool: man page and completion.

usage: dumpTest.py TEST PROGRAM [ARGUMENT...]     (the program may stand behind an emulator)
"""

import os
import pty
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.join(HERE, "..", "..")
GOLDEN = os.path.join(HERE, "..", "reference", "streams.golden")
PROGRAM = sys.argv[2:]
LIMIT = 250  # seconds; nothing here takes that long
MAX_INDENT = 64


def word(value):
    return struct.pack("<I", value)


def text(value):
    return word(10) + word(len(value)) + value


def label(value):
    return word(13) + text(value)


def context(content, name=None, length=None):
    head = word(8) + (word(0) if name is None else word(1) + text(name))
    return word(12) + word(4) + word(8 + len(head) + len(content) if length is None else length) + head + content


INT_5 = word(5) + word(5)
RECORD = context(label(b"val") + INT_5, b"rec")


def hexed(value):
    return b"" if value == "-" else bytes.fromhex(value)


def golden_cases():
    """Name, listing of the items, bytes."""
    name, items = None, []
    with open(GOLDEN, encoding="ascii") as file:
        for line in file:
            kind, _, value = line.rstrip("\n").partition(" ")
            if kind == "case":
                name, items = value, []
            elif kind == "bytes":
                yield name, items, hexed(value)
            else:
                items.append((kind, value))


def debug_listing(items):
    """What the debug listing of the items is to be, made from their own listing."""
    lines, depth, pending = [], 0, b""

    def line(content):
        nonlocal pending
        shown = b"<label " + pending + b"> " if pending else b""
        lines.append(b"    " * min(depth, MAX_INDENT) + shown + content + b"\n")
        pending = b""

    for kind, value in items:
        if kind == "context":
            line(b"<context (unnamed)>" if value == "(unnamed)" else b'<context "' + hexed(value) + b'">')
            line(b"  {")
            depth += 1
        elif kind == "end":
            depth -= 1
            line(b"  }")
        elif kind == "label":
            pending = hexed(value)
        elif kind == "rawBytes":
            line(b"<raw bytes of size %d>;" % len(hexed(value)))
        elif kind == "cAsciiString":
            line(b'cAsciiString = "' + hexed(value) + b'";')
        elif kind in ("cString32", "cString8"):
            points = [] if value == "-" else [int(c, 16) for c in value.split(",")]
            line(b'cString = "' + bytes(c if c < 0x80 else 63 for c in points) + b'";')
        elif kind == "piDouble":
            line(b"piDoubleID = x.y;")
        elif kind == "piBool":
            line(b"piBool = true;" if value == "1" else b"piBool = false;")
        else:
            line(f"{kind} = {value};".encode())
    return b"".join(lines)


class Dump(unittest.TestCase):
    def run_program(self, *arguments, data=b"", **options):
        return subprocess.run(PROGRAM + list(arguments), input=data, capture_output=True, timeout=LIMIT, check=False, **options)

    def dump(self, data, *arguments):
        return self.run_program("dump", *arguments, data=data)

    def path(self, data):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        path = os.path.join(folder.name, "stream")
        with open(path, "wb") as file:
            file.write(data)
        return path

    def broken(self, data, pos, reason):
        done = self.dump(data)
        self.assertEqual(done.returncode, 1, done)
        start = f"mortise dump: standard input: damaged at byte {pos} of {len(data)}: "
        self.assertEqual(done.stderr.decode(), start + reason + "\n")
        return done.stdout

    def test_PrintsEveryGoldenStream(self):
        count = 0
        for name, items, data in golden_cases():
            done = self.run_program("dump", self.path(data))
            self.assertEqual((done.returncode, done.stderr), (0, b""), name)
            self.assertEqual(done.stdout, debug_listing(items), name)
            count += 1
        self.assertGreater(count, 10)

    def test_OffsetsAreThoseOfTheValues(self):
        done = self.dump(RECORD, "--offsets")
        self.assertEqual(len(RECORD), 54)
        self.assertEqual(done.stdout.decode(), '         0  <context "rec">\n'
                                               "        31    {\n"
                                               "        46      <label val> piInt32 = 5;\n"
                                               "        54    }\n")
        self.assertEqual(done.returncode, 0)

    def test_ReadsStandardInputWithoutAName(self):
        for arguments in [(), ("-",)]:
            done = self.dump(INT_5, *arguments)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, b"piInt32 = 5;\n", b""))

    def test_AnEmptyStreamHasNoLines(self):
        done = self.dump(b"")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, b"", b""))

    def test_TheLastOfSeveralLabelsCounts(self):
        done = self.dump(context(label(b"a") + label(b"b")) + label(b"c"))
        self.assertEqual(done.stdout, b"<context (unnamed)>\n  {\n<label b>   }\n")

    def test_TellsAnEmptyNameFromNone(self):
        self.assertEqual(self.dump(context(b"", b"")).stdout, b'<context "">\n  {\n  }\n')

    def test_PrintsWideBlocksAndWideContexts(self):
        wide = word(15) + word(6) + struct.pack("<Q", 20 + len(INT_5)) + word(8) + word(0) + INT_5
        done = self.dump(word(14) + struct.pack("<Q", 3) + b"abc" + INT_5)
        self.assertEqual((done.returncode, done.stdout), (0, b"<raw bytes of size 3>;\npiInt32 = 5;\n"))
        done = self.dump(wide)
        self.assertEqual((done.returncode, done.stdout), (0, b"<context (unnamed)>\n  {\n    piInt32 = 5;\n  }\n"))

    def test_LineFeedsOfTextsStayAsTheyAre(self):
        done = self.dump(text(b"one\r\ntwo\nthree"))
        self.assertEqual(done.stdout, b'cAsciiString = "one\r\ntwo\nthree";\n')

    def test_EveryTruncationIsDamage(self):
        name, items, whole = max(((n, i, d) for n, i, d in golden_cases() if len(d) < 3000), key=lambda case: len(case[2]))
        stream = context(whole + context(INT_5, b"inner") + label(b"last") + INT_5, name.encode())
        all_lines = self.dump(stream).stdout
        self.assertIn(debug_listing(items).split(b"\n")[0], all_lines)
        step = 1 if len(PROGRAM) == 1 else 7  # an emulator starts slowly
        for size in range(1, len(stream), step):
            done = self.dump(stream[:size])
            self.assertEqual(done.returncode, 1, size)
            self.assertTrue(all_lines.startswith(done.stdout), size)
            pos = int(re.match(rb"mortise dump: standard input: damaged at byte (\d+) of ", done.stderr).group(1))
            self.assertLessEqual(pos, size)

    def test_EveryFlippedBitEndsInAListingOrInAMessage(self):
        step = 1 if len(PROGRAM) == 1 else 5
        for bit in range(0, 8 * len(RECORD), step):
            data = bytearray(RECORD)
            data[bit // 8] ^= 1 << bit % 8
            done = self.dump(bytes(data))
            self.assertIn(done.returncode, (0, 1), bit)
            self.assertEqual(done.returncode == 0, done.stderr == b"", bit)

    def test_SaysWhereAndWhyAStreamBreaks(self):
        self.assertEqual(self.broken(INT_5 + RECORD[:52], 54, 'the data ends inside a value of the type piInt32 (behind the label "val")'),
                         b'piInt32 = 5;\n<context "rec">\n  {\n')
        self.broken(RECORD[:46], 46, 'the data ends inside the context at byte 0, which goes on to byte 54 (behind the label "val")')
        self.broken(INT_5 + b"\x05\0", 8, "the data ends inside a type id")
        self.broken(RECORD[:20], 0, "the data ends inside a value of the type context")
        self.broken(word(1) + word(0xFFFFFFFF) + b"abc", 0, "the data ends inside a value of the type rawBytes")
        self.broken(word(14) + struct.pack("<Q", 1 << 40), 0, "the data ends inside a value of the type rawBytes64")
        self.broken(word(10) + word(0xFFFFFFFF), 0, "the data ends inside a value of the type cAsciiString")
        self.broken(word(11) + word(0x40000001) + word(65), 0, "the data ends inside a value of the type cString")
        for number in (0, 19, 20, 0xFFFFFFFF):
            self.assertEqual(self.broken(INT_5 + word(number), 8, f"{number} is no type id"), b"piInt32 = 5;\n")

    def test_SaysWhatIsWrongWithAContext(self):
        for length in (0, 1, 15):
            self.broken(context(INT_5, None, length), 0, "a context that ends before its content begins")
        self.broken(context(INT_5, None, 20), 20, "a value of the type piInt32 goes on behind byte 24, where its context ends")
        inner = context(INT_5, None, 30)
        self.broken(context(inner) + INT_5 + INT_5, 20,
                    "a context that ends behind the one around it, at byte 54 and not up to byte 48")
        self.broken(context(INT_5, None, 0xFFFFFFFC), 0, "a context that ends beyond all positions")
        self.broken(context(INT_5, None, 200), 28, "the data ends inside the context at byte 0, which goes on to byte 204")
        self.broken(word(12) + word(5) + word(24), 4, "the length of a context is to be of the type piUInt32, not of the type piInt32")
        self.broken(word(12) + word(4) + word(24) + word(4), 12,
                    "the flag of a context is to be of the type piBool, not of the type piUInt32")
        self.broken(word(12) + word(4) + word(24) + word(8) + word(1) + word(8), 20,
                    "the name of a context is to be of the type cAsciiString, not of the type piBool")
        self.broken(word(13) + word(13) + word(0), 4, "the text of a label is to be of the type cAsciiString, not of the type label")

    def test_AMillionNestedContextsArePrinted(self):
        depth = 1000000
        stream = b"".join(word(12) + word(4) + word(16 + 20 * (depth - 1 - i)) + word(8) + word(0) for i in range(depth))
        path = self.path(stream)
        with subprocess.Popen(PROGRAM + ["dump", path], stdout=subprocess.PIPE) as child:
            lines, last = 0, b""
            while piece := child.stdout.read(1 << 20):
                lines += piece.count(b"\n")
                last = (last + piece)[-1000:]
        self.assertEqual((child.returncode, lines), (0, 3 * depth))
        self.assertTrue(last.endswith(b"\n          }\n      }\n  }\n"), last)
        done = self.run_program("dump", self.path(stream[:-8]))
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"damaged at byte %d of" % (20 * (depth - 1)), done.stderr)

    def test_ATerminalIsNotSteered(self):
        main, side = pty.openpty()
        data = text(b"\x1b[31mred\x9b\xc3\xa4") + context(b"", b"\x07")
        done = subprocess.run(PROGRAM + ["dump", "-"], input=data, stdout=side, stderr=subprocess.PIPE, timeout=LIMIT, check=False)
        os.close(side)
        shown = os.read(main, 4096).replace(b"\r\n", b"\n")
        os.close(main)
        self.assertEqual(done.returncode, 0)
        self.assertEqual(shown, b'cAsciiString = "?[31mred???";\n<context "?">\n  {\n  }\n')

    def test_MessagesDoNotSteerATerminal(self):
        done = self.dump(label(b"\x1b]0;") + word(5))
        self.assertEqual(done.returncode, 1)
        self.assertIn(b'(behind the label "?]0;")', done.stderr)

    def test_WrongArgumentsAndUnreadableFilesEndWithTwo(self):
        for arguments in [(), ("nothing",), ("dump", "--wrong"), ("dump", "a", "b")]:
            done = self.run_program(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, b""), arguments)
            self.assertNotEqual(done.stderr, b"", arguments)
        missing = self.path(b"") + ".missing"
        done = self.run_program("dump", missing)
        self.assertEqual((done.returncode, done.stdout), (2, b""))
        self.assertEqual(done.stderr.decode(), f"mortise dump: {missing}: No such file or directory\n")
        done = self.run_program("dump", os.path.dirname(missing))
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"Is a directory", done.stderr)

    def test_AFullDiskEndsWithTwo(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run(PROGRAM + ["dump", "-"], input=RECORD, stdout=full, stderr=subprocess.PIPE, timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"standard output: No space left on device", done.stderr)

    def test_HelpAndVersion(self):
        done = self.run_program("--version")
        self.assertEqual(done.returncode, 0)
        self.assertRegex(done.stdout, rb"^mortise \d+\.\d+\.\d+\n$")
        done = self.run_program("dump", "--help")
        self.assertEqual(done.returncode, 0)
        self.assertIn(b"--offsets", done.stdout)

    def test_TheManPageTellsEverySubCommandAndOption(self):
        page = os.path.join(ROOT, "share", "man", "mortise.1")
        done = subprocess.run(["groff", "-man", "-ww", "-z", page], capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        with open(page, encoding="ascii") as file:
            source = file.read().replace("\\-", "-")
        words = set(re.findall(r"--[a-z]+", self.run_program("dump", "--help").stdout.decode()))
        words |= set(re.findall(r"--[a-z]+", self.run_program("--help").stdout.decode())) | {"mortise dump"}
        for name in words:
            self.assertIn(name, source)

    def test_TheShellCompletesCommandsOptionsAndFiles(self):
        script = os.path.join(ROOT, "share", "bash-completion", "completions", "mortise")
        path = self.path(b"")

        def complete(*words):
            quoted = " ".join(f"'{one}'" for one in ("mortise",) + words)
            code = f"source '{script}'; COMP_WORDS=({quoted}); COMP_CWORD={len(words)}; _mortise; printf '%s\\n' \"${{COMPREPLY[@]}}\""
            done = subprocess.run([shutil.which("bash"), "-c", code], capture_output=True, text=True, check=True)
            return done.stdout.split()

        self.assertEqual(complete("d"), ["dump"])
        self.assertEqual(complete("--v"), ["--version"])
        self.assertEqual(complete("dump", "--"), ["--offsets", "--help"])
        self.assertEqual(complete("dump", "--offsets", path[:-2]), [path])


if __name__ == "__main__":
    result = unittest.TextTestRunner(verbosity=2).run(unittest.TestSuite([Dump("test_" + sys.argv[1])]))
    sys.exit(0 if result.wasSuccessful() and result.testsRun == 1 else 1)
