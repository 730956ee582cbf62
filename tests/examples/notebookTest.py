#!/usr/bin/env python3
"""Runs the example program notebook as a user would, also on files that older and newer versions of it would write.

usage: notebookTest.py TEST PROGRAM [ARGUMENT...]     (the program may stand behind an emulator)
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
import zlib

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "reference"))
sys.dont_write_bytecode = True
from stream_model import decode, encode  # noqa: E402

PROGRAM = sys.argv[2:]
LIMIT = 100  # seconds; nothing here takes that long
DAY = 86400000000  # microseconds


def points(text):
    return [ord(c) for c in text]


def head(number, text, created=20000 * DAY):
    return [("label", b"number"), ("piUInt32", number), ("label", b"created"), ("label", b"DateTime"), ("piUInt64", created),
            ("label", b"text"), ("cString8", points(text))]


def due(day, month, year):
    return [("label", b"due"), ("context", b"date", [("label", b"day"), ("piUInt32", day), ("label", b"month"), ("piUInt32", month),
                                                     ("label", b"year"), ("piUInt32", year)])]


def notebook(version, entries, following=99, more=()):
    return encode([("context", b"notebook", list(more) + [("label", b"version"), ("piUInt32", version), ("label", b"next"),
                                                          ("piUInt32", following), ("label", b"entries"),
                                                          ("context", b"entries", entries)])])


def summed(data):
    return data + encode([("label", b"crc32"), ("piUInt32", zlib.crc32(data))])


def version_1():
    """No check sum, no tags, no priority."""
    return notebook(1, [("context", b"note", head(1, "old")),
                        ("context", b"task", head(2, "paint") + due(1, 5, 2024) + [("label", b"done"), ("piBool", 0)])], 3)


def version_3():
    """New members in front, between and behind, in another order, of every type; a new kind of entry."""
    new = [("label", b"colour"), ("context", b"rgb", [("piUChar", 1), ("label", b"text"), ("cString8", points("decoy")), ("piUChar", 2)]),
           ("label", b"weight"), ("piDouble", 0x3FF0000000000000), ("label", b"scan"), ("rawBytes", b"\x0c\0\0\0" * 5)]
    task = [("label", b"priority"), ("piInt32", 4), ("label", b"done"), ("piBool", 1)] + new + due(31, 12, 2031) + head(2, "launch")
    entries = [("context", b"note", new + head(1, "new") + new), ("context", b"drawing", new + [("context", None, new)]),
               ("context", b"task", task + [("label", b"last"), ("piInt16", -1)]),
               ("context", b"tags", head(3, "kinds") + [("label", b"tags"), ("context", b"words", [("cString32", points("ä")), ("cString8", points("b"))])])]
    return summed(notebook(3, entries, 4, [("label", b"owner"), ("cAsciiString", b"me")]))


class Notebook(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        self.file = os.path.join(folder.name, "notes")

    def run_program(self, *arguments, **options):
        return subprocess.run(PROGRAM + list(arguments), capture_output=True, text=True, encoding="utf-8",
                              errors="surrogateescape", timeout=LIMIT, check=False, **options)

    def fine(self, *arguments):
        done = self.run_program(self.file, *arguments)
        self.assertEqual((done.returncode, done.stderr), (0, ""), arguments)
        return done.stdout

    def write(self, data):
        with open(self.file, "wb") as file:
            file.write(data)

    def read(self):
        with open(self.file, "rb") as file:
            return file.read()

    def refused(self, data, reason, *arguments):
        """The file is refused, stays as it is, and nothing is left beside it."""
        self.write(data)
        done = self.run_program(self.file, *(arguments or ("add", "note", "more")))
        self.assertEqual((done.returncode, done.stdout), (1, ""), done)
        self.assertTrue(done.stderr.startswith(f"notebook: {self.file} is damaged and stays as it is: "), done.stderr)
        self.assertEqual(done.stderr.count("\n"), 1, done.stderr)
        self.assertIn(reason, done.stderr)
        self.assertEqual(self.read(), data)
        self.assertEqual(os.listdir(self.folder), ["notes"])

    def fill(self):
        self.assertEqual(self.fine("add", "note", "buy", "bread"), "1\n")
        self.assertEqual(self.fine("add", "task", "2026-12-31", "+3", "write the report"), "2\n")
        self.assertEqual(self.fine("add", "tags", "places", "home", "work"), "3\n")

    def test_KeepsAllKindsOfEntries(self):
        self.fill()
        self.assertEqual(self.fine("list"), "   1  note  buy bread\n"
                                            "   2  task  [ ] 2026-12-31 (priority 3) write the report\n"
                                            "   3  tags  places: home, work\n")

    def test_KeepsTextsInManyScripts(self):
        texts = ["Grüße", "Καλημέρα", "Привет", "שלום", "こんにちは", "你好", "𝄞🎻", "é̂"]
        for text in texts:
            self.fine("add", "note", text)
        self.fine("add", "tags", *texts)
        listed = self.fine("list").splitlines()
        self.assertEqual([line[12:] for line in listed[:-1]], texts)
        self.assertEqual(listed[-1][12:], texts[0] + ": " + ", ".join(texts[1:]))

    def test_DoneAndRemoveChangeOneEntry(self):
        self.fill()
        self.fine("done", "2")
        self.fine("remove", "1")
        self.assertEqual(self.fine("list"), "   2  task  [x] 2026-12-31 (priority 3) write the report\n"
                                            "   3  tags  places: home, work\n")
        self.assertEqual(self.fine("add", "note", "next"), "4\n")

    def test_WhatIsNotThereCannotBeChanged(self):
        self.fill()
        before = self.read()
        for arguments, message in [(("done", "1"), "there is no task 1"), (("remove", "9"), "there is no entry 9")]:
            done = self.run_program(self.file, *arguments)
            self.assertEqual((done.returncode, done.stderr), (1, f"notebook: {message}\n"))
        self.assertEqual(self.read(), before)

    def test_ExportsMarkdown(self):
        self.write(version_1())
        self.assertEqual(self.fine("export"), "- old `note`, 2024-10-04\n- [ ] 2024-05-01 paint `task`, 2024-10-04\n")

    def test_TheFileIsAStreamWithACheckSum(self):
        self.fine("add", "note", "ä")
        (kind, name, members), label, sum_of = decode(self.read())
        self.assertEqual((kind, name, label), ("context", b"notebook", ("label", b"crc32")))
        self.assertEqual(sum_of, ("piUInt32", zlib.crc32(self.read()[:-25])))
        note = members[-1][2][0]
        self.assertEqual(note[:2], ("context", b"note"))
        self.assertEqual(note[2][-2:], [("label", b"text"), ("cString8", [0xE4])])
        self.assertEqual(members[:4], [("label", b"version"), ("piUInt32", 2), ("label", b"next"), ("piUInt32", 2)])

    def test_ReadsAndChangesAFileOfVersion1(self):
        self.write(version_1())
        self.assertEqual(self.fine("list"), "   1  note  old\n   2  task  [ ] 2024-05-01 paint\n")
        self.assertEqual(self.fine("add", "tags", "a", "b"), "3\n")
        self.assertEqual(self.fine("list"), "   1  note  old\n   2  task  [ ] 2024-05-01 paint\n   3  tags  a: b\n")

    def test_ReadsWhatItKnowsOfAFileOfVersion3(self):
        self.write(version_3())
        done = self.run_program(self.file, "list")
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stdout, "   1  note  new\n   2  task  [x] 2031-12-31 (priority 4) launch\n   3  tags  kinds: ä, b\n")
        self.assertEqual(done.stderr, "notebook: 1 entries are of kinds that this version does not know\n")

    def test_LeavesAFileOfVersion3AsItIs(self):
        for arguments in [("add", "note", "x"), ("done", "2"), ("remove", "1")]:
            self.write(version_3())
            done = self.run_program(self.file, *arguments)
            self.assertEqual((done.returncode, done.stdout), (1, ""))
            self.assertIn("is of version 3; changing it with this version, 2, would lose", done.stderr)
            self.assertEqual(self.read(), version_3())

    def test_RefusesEveryTruncation(self):
        self.fine("add", "task", "2026-12-31", "ü")
        whole = self.read()
        for size in range(0, len(whole), 1 if len(PROGRAM) == 1 else 11):
            self.refused(whole[:size], "")
        for size in range(0, len(version_1()), 5):
            self.refused(version_1()[:size], "", "list")

    def test_RefusesEveryFlippedBit(self):
        self.fine("add", "note", "ü")
        whole = self.read()
        samples = len(PROGRAM) > 1 or "MORTISE_TEST_SAMPLES" in os.environ
        for bit in range(0, 8 * len(whole), 31 if samples else 1):
            data = bytearray(whole)
            data[bit // 8] ^= 1 << bit % 8
            self.refused(bytes(data), "")

    def test_SaysWhatIsDamaged(self):
        whole = summed(notebook(2, [("context", b"note", head(1, "a"))]))
        self.write(whole)
        self.assertEqual(self.fine("list"), "   1  note  a\n")
        self.refused(whole[:-25], "its check sum is missing")
        self.refused(whole[:-1] + b"\0" if whole[-1] else whole[:-1] + b"\1", "its check sum is wrong")
        self.refused(whole + b"\0", "something foreign stands behind its end")
        self.refused(whole[:40], "its end is missing")
        self.refused(encode([("context", b"cookbook", [])]), 'got object of type "context notebook"')
        self.refused(summed(notebook(2, [("context", b"note", head(1, "a")[:-2])])), 'label ("text") not found')
        self.refused(summed(notebook(2, [("context", b"task", head(1, "a") + due(30, 2, 2024) + [("label", b"done"), ("piBool", 0)])])), "a task is due on a day that does not exist")
        self.refused(b"", "it is empty")
        self.refused(whole[:-3], "its end is missing")
        self.refused(whole[:3], "its end is missing")

    def test_AFileThatCannotBeReadOrWrittenIsNamed(self):
        done = self.run_program(self.file, "list")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn(self.file, done.stderr)
        self.assertIn("No such file or directory", done.stderr)
        done = self.run_program(os.path.join(self.folder, "none", "notes"), "add", "note", "x")
        self.assertEqual(done.returncode, 1)
        self.assertEqual(os.listdir(self.folder), [])

    def test_AWriterThatFailsLosesNothing(self):
        self.fill()
        before = self.read()
        import resource

        def limit():
            resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100))
            import signal
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)

        done = self.run_program(self.file, "add", "note", "x" * 500, preexec_fn=limit)
        self.assertEqual(done.returncode, 1)
        self.assertIn("File too large", done.stderr)
        self.assertEqual(self.read(), before)
        self.assertEqual(os.listdir(self.folder), ["notes"])

    def test_AListThatCannotBeWrittenIsToldOf(self):
        self.fill()
        for command in ("list", "export"):
            with open("/dev/full", "wb") as full:
                done = subprocess.run(PROGRAM + [self.file, command], stdout=full, stderr=subprocess.PIPE, timeout=LIMIT, check=False)
            self.assertEqual((done.returncode, done.stderr), (1, b"notebook: standard output: No space left on device\n"))

    def test_KeepsModeAndLinkOfTheFile(self):
        self.fill()
        os.chmod(self.file, 0o640)
        link = os.path.join(self.folder, "link")
        os.symlink("notes", link)
        self.assertEqual(self.run_program(link, "add", "note", "x").stdout, "4\n")
        self.assertTrue(os.path.islink(link))
        self.assertEqual(os.stat(self.file).st_mode & 0o777, 0o640)
        self.assertIn("   4  note  x\n", self.fine("list"))

    def test_WritersAtTheSameTimeLoseNothing(self):
        children = [subprocess.Popen(PROGRAM + [self.file, "add", "note", f"n{i}"], stdout=subprocess.DEVNULL) for i in range(20)]
        self.assertEqual([child.wait(LIMIT) for child in children], [0] * 20)
        texts = re.findall(r"note  (n\d+)", self.fine("list"))
        self.assertEqual(sorted(texts), sorted(f"n{i}" for i in range(20)))

    def test_ControlCharactersAreNotShown(self):
        self.fine("add", "note", "a\x1b[31mb\nc\x9b")
        self.assertEqual(self.fine("list"), "   1  note  a�[31mb�c�\n")

    def test_WrongArgumentsEndWithTwo(self):
        wrong = [(), ("add",), ("add", "note"), ("add", "thing", "x"), ("add", "task", "tomorrow", "x"), ("add", "task", "2026-02-29", "x"),
                 ("add", "task", "2026-02-28"), ("add", "task", "2026-02-28", "+x", "y"), ("add", "tags"), ("done",), ("done", "x"),
                 ("done", "1", "2"), ("list", "x"), ("fly",), ("add", "note", "\udcff")]
        for arguments in wrong:
            done = self.run_program(self.file, *arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertIn("Try notebook --help.", done.stderr)
        self.assertEqual(os.listdir(self.folder), [])
        done = self.run_program()
        self.assertEqual((done.returncode, done.stderr), (2, "notebook: missing FILE and COMMAND\nTry notebook --help.\n"))

    def test_HelpTellsTheCommands(self):
        done = self.run_program("--help")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        for command in ("add note", "add task", "add tags", "done", "remove", "list", "export"):
            self.assertIn("  " + command, done.stdout)


if __name__ == "__main__":
    result = unittest.TextTestRunner(verbosity=2).run(unittest.TestSuite([Notebook("test_" + sys.argv[1])]))
    sys.exit(0 if result.wasSuccessful() and result.testsRun == 1 else 1)
