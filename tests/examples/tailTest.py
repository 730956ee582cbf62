#!/usr/bin/env python3
"""Runs the example program tail as a user would.

usage: tailTest.py TEST PROGRAM [ARGUMENT...]     (the program may stand behind an emulator)
"""

import os
import pathlib
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = [shutil.which(sys.argv[2]) or sys.argv[2], *sys.argv[3:]]
GERMAN = pathlib.Path(__file__).resolve().parents[2] / "examples" / "tail" / "de.locale"
LIMIT = 60  # seconds; nothing here takes that long


class Child:
    """The program while it runs, with what it has written so far."""

    def __init__(self, test, *arguments):
        self.test = test
        self.process = subprocess.Popen(PROGRAM + ["-i", "10", *arguments], stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.seen = {self.process.stdout.fileno(): b"", self.process.stderr.fileno(): b""}
        test.addCleanup(self.process.stdout.close)
        test.addCleanup(self.process.stderr.close)
        test.addCleanup(self.process.wait)
        test.addCleanup(self.process.kill)

    def out(self):
        return self.seen[self.process.stdout.fileno()].decode()

    def err(self):
        return self.seen[self.process.stderr.fileno()].decode()

    def wait_until(self, condition):
        """Reads until the condition holds. The end of both streams, or of patience, is a failure."""
        end = time.monotonic() + LIMIT
        open_ends = set(self.seen)
        while not condition():
            self.test.assertLess(time.monotonic(), end, self.seen)
            self.test.assertTrue(open_ends, self.seen)
            for descriptor in select.select(list(open_ends), [], [], 1)[0]:
                piece = os.read(descriptor, 65536)
                if not piece:
                    open_ends.discard(descriptor)
                self.seen[descriptor] += piece

    def wait_for_output(self, text):
        self.wait_until(lambda: text in self.out())

    def wait_for_message(self, text):
        self.wait_until(lambda: text in self.err())

    def stop(self, number=signal.SIGTERM):
        """Ends the program and returns its exit code."""
        self.process.send_signal(number)
        return self.process.wait(LIMIT)


class Tail(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.path = os.path.join(folder.name, "log")

    def write(self, text, mode="a", path=None):
        with open(path or self.path, mode, encoding="utf-8") as file:
            file.write(text)

    def start(self, *arguments):
        return Child(self, *arguments, self.path)

    def run_program(self, *arguments):
        return subprocess.run(PROGRAM + list(arguments), stdin=subprocess.DEVNULL, capture_output=True, timeout=LIMIT,
                              check=False, text=True)

    def test_ShowsTheLastLinesAndWhatIsAppended(self):
        self.write("".join(f"line {i}\n" for i in range(20)))
        child = self.start()
        child.wait_for_output("line 19\n")
        self.write("line 20\n")
        child.wait_for_output("line 20\n")
        self.write("half of a li")
        child.wait_for_output("half of a li")
        self.write("ne\n")
        child.wait_for_output("half of a line\n")
        self.assertEqual(child.out(), "".join(f"line {i}\n" for i in range(10, 21)) + "half of a line\n")
        self.assertEqual(child.err(), "")

    def test_FindsAllThatIsAppendedWithinASecond(self):
        self.write("start\n")
        child = self.start()
        child.wait_for_output("start\n")
        for i in range(30):
            self.write(f"{i}\n")
            child.wait_for_output(f"\n{i}\n")

    def test_ShowsAsManyLinesAsAskedFor(self):
        self.write("one\ntwo\nthree")
        for lines, text in (("2", "two\nthree"), ("1", "three"), ("3", "one\ntwo\nthree"), ("99", "one\ntwo\nthree")):
            child = self.start("-n", lines)
            child.wait_for_output(text)
            self.assertEqual(child.out(), text)
            child.stop()

    def test_ShowsNoLinesIfNoneIsAskedFor(self):
        self.write("one\ntwo\n")
        child = Child(self, "-n", "0", self.path, self.path + ".missing")
        child.wait_for_message("is not there")  # which is told when the first file stands at its end
        self.write("three\n")
        child.wait_for_output("three\n")
        self.assertEqual(child.out(), f"==> {self.path} <==\nthree\n")

    def test_FindsTheLastLinesInALongFile(self):
        self.write("".join(f"{i:09}\n" for i in range(30000)))
        child = self.start("-n", "10000")
        child.wait_for_output("000029999\n")
        self.assertEqual(child.out(), "".join(f"{i:09}\n" for i in range(20000, 30000)))

    def test_FollowsThePathWhenTheFileIsRotated(self):
        self.write("old 1\n")
        child = self.start()
        child.wait_for_output("old 1\n")
        self.write("old 2\n")
        os.rename(self.path, self.path + ".1")
        self.write("old 3\n", path=self.path + ".1")
        self.write("new 1\n")
        child.wait_for_output("new 1\n")
        self.write("new 2\n")
        child.wait_for_output("new 2\n")
        self.assertEqual(child.out(), "old 1\nold 2\nold 3\nnew 1\nnew 2\n")

    def test_TellsOfARotation(self):
        self.write("old\n")
        other = self.path + ".new"
        self.write("new\n", path=other)
        child = self.start()
        child.wait_for_output("old\n")
        os.rename(other, self.path)
        child.wait_for_output("new\n")
        child.wait_for_message(f'tail: "{self.path}" is another file now; following the new one.\n')

    def test_ReadsATruncatedFileFromItsStart(self):
        self.write("a long line that goes\n")
        child = self.start()
        child.wait_for_output("goes\n")
        self.write("short\n", "w")
        child.wait_for_output("short\n")
        child.wait_for_message(f'tail: "{self.path}" has become shorter; reading it from its start.\n')
        self.write("more\n")
        child.wait_for_output("short\nmore\n")

    def test_WaitsForARemovedFile(self):
        self.write("one\n")
        child = self.start()
        child.wait_for_output("one\n")
        os.remove(self.path)
        child.wait_for_message(f'tail: "{self.path}" is gone; waiting for it.\n')
        self.write("two\n")
        child.wait_for_message(f'tail: "{self.path}" is there; following it.\n')
        child.wait_for_output("one\ntwo\n")

    def test_WaitsForAFileThatIsNotThereYet(self):
        child = self.start()
        child.wait_for_message(f'tail: "{self.path}" is not there; waiting for it.\n')
        self.write("one\n")
        child.wait_for_output("one\n")

    def test_NamesTheFilesThatItMixes(self):
        self.write("one\n")
        other = self.path + ".2"
        self.write("two\n", path=other)
        child = self.start(other)
        child.wait_for_output("one\n")
        self.write("three\n")
        child.wait_for_output("three\n")
        self.write("four\n", path=other)
        child.wait_for_output("four\n")
        self.assertEqual(child.out(), f"==> {other} <==\ntwo\n\n==> {self.path} <==\none\nthree\n\n==> {other} <==\nfour\n")

    def test_SpeaksTheLanguageOfALocaleFile(self):
        child = self.start("-l", str(GERMAN))
        child.wait_until(lambda: "\n" in child.err())
        self.assertIn(self.path, child.err())
        self.assertIn("warte", child.err())
        self.assertNotIn("waiting", child.err())

    def test_TellsErrorsInTheLanguageToo(self):
        done = self.run_program("-l", str(GERMAN), os.path.dirname(self.path))
        self.assertEqual(done.returncode, 1)
        self.assertIn("keine Datei", done.stderr)

    def test_EndsIfNothingIsLeftToFollow(self):
        done = self.run_program(os.path.dirname(self.path))
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, f'tail: "{os.path.dirname(self.path)}" is not a file!\n')

    def test_OneBadFileDoesNotEndTheOthers(self):
        self.write("one\n")
        child = self.start(os.path.dirname(self.path))
        child.wait_for_output("one\n")
        child.wait_for_message("is not a file!\n")
        self.write("two\n")
        child.wait_for_output("two\n")

    def test_EndsOrderlyWhenInterrupted(self):
        self.write("one\n")
        for number in (signal.SIGINT, signal.SIGTERM):
            child = self.start()
            child.wait_for_output("one\n")
            self.assertEqual(child.stop(number), 128 + number)

    def test_EndsWhenNobodyReadsItsOutput(self):
        self.write("one\n")
        child = self.start()
        child.wait_for_output("one\n")
        child.process.stdout.close()
        self.write("two\n")
        self.assertEqual(child.process.wait(LIMIT), 1)
        self.assertIn(b"standard output", child.process.stderr.read())

    def test_AMissingLocaleFileIsAnError(self):
        done = self.run_program("-l", self.path + ".locale", self.path)
        self.assertEqual(done.returncode, 1)
        self.assertIn(self.path + ".locale", done.stderr)

    def test_WrongArgumentsAreTold(self):
        for arguments, text in ((["-x", "file"], "unknown option '-x'"), ([], "no file is named"),
                                (["-n"], "missing value after '-n'"), (["-n", "many", "file"], "'many'"),
                                (["-i", "0", "file"], "'0'"), (["-i", "9999999999", "file"], "'9999999999'")):
            done = self.run_program(*arguments)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertIn(text, done.stderr)

    def test_HelpIsShown(self):
        done = self.run_program("--help")
        self.assertEqual(done.returncode, 0)
        self.assertTrue(done.stdout.startswith("usage: tail"))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "Tail.test_" + sys.argv[1]])
