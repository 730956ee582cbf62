#!/usr/bin/env python3
"""Runs the example program linewatch as a user would.

usage: linewatchTest.py TEST PROGRAM [ARGUMENT...]     (the program may stand behind an emulator)
"""

import os
import random
import resource
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = [shutil.which(sys.argv[2]) or sys.argv[2], *sys.argv[3:]]
HERE = os.path.dirname(os.path.abspath(__file__))
LIMIT = 100  # seconds; nothing here takes that long


class Linewatch(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name, data=None):
        path = os.path.join(self.folder, name)
        if data is not None:
            with open(path, "wb") as file:
                file.write(data)
        return path

    def run_program(self, *arguments, data=b"", **options):
        done = subprocess.run(PROGRAM + list(arguments), input=data, capture_output=True, timeout=LIMIT, check=False, **options)
        done.stdout = done.stdout.decode("utf-8", "surrogateescape")
        done.stderr = done.stderr.decode("utf-8", "surrogateescape")
        return done

    def start(self, *arguments, **options):
        child = subprocess.Popen(PROGRAM + list(arguments), stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                 stderr=subprocess.PIPE, **options)
        self.addCleanup(child.stdin.close)
        self.addCleanup(child.stdout.close)
        self.addCleanup(child.stderr.close)
        self.addCleanup(child.kill)
        return child

    def wait_for_line(self, child, text):
        """Reads the child's output up to a line that contains the text, and returns all of it."""
        seen = b""
        end = time.monotonic() + LIMIT
        while text not in seen:
            self.assertLess(time.monotonic(), end, seen)
            if select.select([child.stdout], [], [], 1)[0]:
                piece = os.read(child.stdout.fileno(), 65536)
                self.assertNotEqual(piece, b"", seen)
                seen += piece
        return seen.decode()

    def test_CountsLinesAndBytesOfStandardInput(self):
        done = self.run_program(data=b"one\ntwo\nthree\n")
        self.assertEqual(done.returncode, 0)
        self.assertIn("-: 3 lines, 14 bytes, longest line 5 bytes, end of input\n", done.stdout)
        self.assertIn("total: 3 lines, 14 bytes\n", done.stdout)

    def test_EmptyInputHasNoLines(self):
        done = self.run_program("-")
        self.assertEqual(done.returncode, 0)
        self.assertIn("-: 0 lines, 0 bytes, longest line 0 bytes, end of input\n", done.stdout)

    def test_ALastLineWithoutBreakCounts(self):
        done = self.run_program("-m", "end", data=b"one\nthe end")
        self.assertIn("-: 2 lines, 11 bytes, longest line 7 bytes", done.stdout)
        self.assertIn("lines with 'end': 1\n", done.stdout)

    def test_WatchesSeveralSourcesAtOnce(self):
        first = self.path("first", b"a\nb\n")
        second = self.path("second", b"ccc\n")
        done = self.run_program(first, "-", second, data=b"x\n")
        self.assertEqual(done.returncode, 0)
        self.assertIn(f"{first}: 2 lines, 4 bytes", done.stdout)
        self.assertIn(f"{second}: 1 lines, 4 bytes", done.stdout)
        self.assertIn("total: 4 lines, 10 bytes\n", done.stdout)

    def test_ReadsFifosWhoseWritersComeLater(self):
        fifo = self.path("fifo")
        os.mkfifo(fifo)
        child = self.start("-i", "20", "-m", "late", fifo, self.path("file", b"at once\n"))
        self.wait_for_line(child, b"1 open")
        with open(fifo, "wb") as file:
            file.write(b"late\nlater\n")
        output, _ = child.communicate(timeout=LIMIT)
        self.assertEqual(child.returncode, 0)
        self.assertIn(f"{fifo}: 2 lines, 11 bytes".encode(), output)
        self.assertIn(b"lines with 'late': 2\n", output)

    def test_CountsALineOnceForEachText(self):
        done = self.run_program("-m", "a", "-m", "b", data=b"aaa\nab\nb\nc\n")
        self.assertIn("lines with 'a': 2\nlines with 'b': 2\n", done.stdout)

    def test_PrintsMatchingLinesWithTheirPlace(self):
        path = self.path("file", b"no\nyes 1\nno\nyes 2\n")
        done = self.run_program("-p", "-m", "yes", path)
        self.assertIn(f"{path}:2: yes 1\n{path}:4: yes 2\n", done.stdout)

    def test_FindsTextsAcrossThePiecesInWhichTheyArrive(self):
        child = self.start("-i", "20", "-m", "needle", "-m", "n")
        for piece in (b"hay nee", b"d", b"le hay\nnee", b"\n", b"dle\n"):
            child.stdin.write(piece)
            child.stdin.flush()
            time.sleep(0.05)  # lets the piece arrive alone; the result is the same if it does not
        output, _ = child.communicate(timeout=LIMIT)
        self.assertIn(b"lines with 'needle': 1\nlines with 'n': 2\n", output)

    def test_CountsAgreeWithAPlainModelOnRandomBytes(self):
        seed = random.randrange(1 << 32)
        print("seed", seed)
        source = random.Random(seed)
        data = bytes(source.choice(b"ab\n\0\xff") for _ in range(300000))
        patterns = [bytes(source.choice(b"ab\xff") for _ in range(n)) for n in (1, 3, 7, 9)]
        path = self.path("random", data)
        arguments = [item for pattern in patterns for item in (b"-m", pattern)]
        done = subprocess.run([*PROGRAM, *arguments, path], stdin=subprocess.DEVNULL, capture_output=True, timeout=LIMIT,
                              check=False)
        lines = data.split(b"\n")
        if not lines[-1]:
            lines.pop()
        self.assertIn(b": %d lines, %d bytes, longest line %d bytes" % (len(lines), len(data), max(map(len, lines))),
                      done.stdout)
        for pattern in patterns:
            count = sum(pattern in line for line in lines)
            self.assertIn(b"lines with '%s': %d\n" % (pattern, count), done.stdout)

    def test_BinaryGarbageIsCountedAndShownHarmlessly(self):
        data = b"\x1b[31mred\0\xff\xc2\x9b\tgr\xc3\xbcn\r\n" + bytes(range(256)) * 64 + b"\n"
        done = self.run_program("-p", "-m", "red", "-", data=data)
        self.assertEqual(done.returncode, 0)
        self.assertIn("-:1: \\x1b[31mred\\x00\\xff\\xc2\\x9b\tgrün\\x0d\n", done.stdout)
        self.assertIn(f"total: 66 lines, {len(data)} bytes\n", done.stdout)
        self.assertNotIn("\x1b", done.stdout)

    def test_ALineOf100MBIsCountedInBoundedMemory(self):
        # The data come through a pipe; the address space leaves no room to hold the line.
        instrumented = os.environ.get("LINEWATCH_UNLIMITED") == "1"

        def limit():
            if not instrumented:
                resource.setrlimit(resource.RLIMIT_DATA, (64 << 20, 64 << 20))

        child = self.start("-m", "xyz", "-p", preexec_fn=limit)
        piece = b"x" * (1 << 20)
        for _ in range(100):
            child.stdin.write(piece)
        child.stdin.write(b"yz")
        output, errors = child.communicate(timeout=LIMIT)
        self.assertEqual(child.returncode, 0, errors)
        length = (100 << 20) + 2
        self.assertIn(b"-: 1 lines, %d bytes, longest line %d bytes" % (length, length), output)
        self.assertIn(b"lines with 'xyz': 1\n", output)
        self.assertIn(b"-:1: " + b"x" * 4096 + b" ... (%d bytes)\n" % length, output)

    def test_ProgressShowsWhileItRuns(self):
        child = self.start("-i", "20")
        child.stdin.write(b"a\nb\n")
        child.stdin.flush()
        self.wait_for_line(child, b"s: 2 lines, 4 B;")
        child.stdin.write(b"c\n")
        child.stdin.flush()
        self.wait_for_line(child, b"s: 3 lines, 6 B;")
        output, _ = child.communicate(timeout=LIMIT)
        self.assertIn(b"total: 3 lines, 6 bytes\n", output)

    def stop_with(self, number, word):
        child = self.start("-i", "20")
        child.stdin.write(b"a\nb")
        child.stdin.flush()
        self.wait_for_line(child, b"s: 1 lines, 3 B;")
        child.send_signal(number)
        output, errors = child.communicate(timeout=LIMIT)
        self.assertIn(word, output)
        self.assertIn(b"-: 2 lines, 3 bytes, longest line 1 bytes, stopped\n", output)
        self.assertIn(b"WorkQueue status:", errors)
        return child.returncode

    def test_AnInterruptEndsInOrder(self):
        self.assertEqual(self.stop_with(signal.SIGINT, b"interrupted\n"), 128 + signal.SIGINT)

    def test_ATerminationEndsInOrder(self):
        self.assertEqual(self.stop_with(signal.SIGTERM, b"terminated\n"), 128 + signal.SIGTERM)

    def test_AnUnreadableFileDoesNotStopTheOthers(self):
        good = self.path("good", b"a\n")
        missing = self.path("missing")
        done = self.run_program(missing, good)
        self.assertEqual(done.returncode, 1)
        self.assertIn(f'linewatch: OS-Error while trying operation "open" on file "{missing}"!', done.stderr)
        self.assertIn("No such file or directory", done.stderr)
        self.assertIn(f"{missing}: 0 lines, 0 bytes, longest line 0 bytes, failed\n", done.stdout)
        self.assertIn(f"{good}: 1 lines, 2 bytes, longest line 1 bytes, end of input\n", done.stdout)

    def test_ASourceThatFailsWhileItIsReadDoesNotStopTheOthers(self):
        done = self.run_program(self.folder, "-", data=b"a\n" * 1000)
        self.assertEqual(done.returncode, 1)
        self.assertIn(f'linewatch: OS-Error while trying operation "read" on file "{self.folder}"!', done.stderr)
        self.assertIn("Is a directory", done.stderr)
        self.assertIn(f"{self.folder}: 0 lines, 0 bytes, longest line 0 bytes, failed\n", done.stdout)
        self.assertIn("-: 1000 lines, 2000 bytes, longest line 1 bytes, end of input\n", done.stdout)

    def test_OnlyUnreadableSourcesEndAtOnce(self):
        done = self.run_program(self.path("missing"), self.path("gone"))
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr.count("OS-Error"), 2)
        self.assertIn("total: 0 lines, 0 bytes\n", done.stdout)

    def test_TheStatusOfTheQueueIsPrintedAtTheEnd(self):
        done = self.run_program(data=b"a\n")
        for text in ("WorkQueue status:", "Have event object (synchronous event processor)", "* Work (sources)",
                     "* Work (rates)", "* Work (signals)", "* Work (-)"):
            self.assertIn(text, done.stderr)

    def test_TheGraphIsWrittenAsDotAndSvg(self):
        path = self.path('a "quoted" name', b"a\n")
        graph = self.path("work.dot")
        done = self.run_program("-g", graph, path)
        self.assertEqual(done.returncode, 0, done.stderr)
        with open(graph, encoding="utf-8") as file:
            dot = file.read()
        self.assertTrue(dot.startswith("digraph G {\n"))
        self.assertIn("sources", dot)
        self.assertIn("a _quoted_ name", dot)
        self.assertIn(" -> ", dot)
        with open(self.path("work.svg"), encoding="utf-8") as file:
            self.assertIn("</svg>", file.read())

    def test_WithoutGraphvizThereIsTheDotAlone(self):
        graph = self.path("work.dot")
        done = self.run_program("-g", graph, env=dict(os.environ, PATH=self.folder))
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("no SVG of the graph: Graphviz is not there\n", done.stdout)
        self.assertTrue(os.path.exists(graph))
        self.assertFalse(os.path.exists(self.path("work.svg")))

    def test_AGraphThatCannotBeWrittenIsReported(self):
        done = self.run_program("-g", self.path("missing/work.dot"))
        self.assertEqual(done.returncode, 1)
        self.assertIn('OS-Error while trying operation "write"', done.stderr)

    def test_AReaderThatGoesAwayEndsTheProgramInOrder(self):
        child = self.start("-i", "20")
        child.stdout.close()
        child.stdin.write(b"a\n")
        child.stdin.flush()
        child.wait(LIMIT)
        errors = child.stderr.read()
        self.assertEqual(child.returncode, 1)
        self.assertIn(b"Broken pipe", errors)
        self.assertIn(b"WorkQueue status:", errors)

    def test_AClosedStandardInputIsAnEmptyOne(self):
        done = subprocess.run(["sh", "-c", 'exec "$@" <&-', "sh", *PROGRAM], capture_output=True, timeout=LIMIT, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(b"-: 0 lines", done.stdout)

    def test_WrongArgumentsAreTold(self):
        for arguments, text in ((["--wrong"], "unknown option '--wrong'"),
                                (["-m"], "missing value after '-m'"),
                                (["-m", ""], "empty value after '-m'"),
                                (["-m", "a\nb"], "no line contains a line break"),
                                (["-i", "0"], "an interval is a number from 1 to 4294967295, not '0'"),
                                (["-i", "4294967296"], "an interval is a number from 1 to 4294967295, not '4294967296'"),
                                (["-i", "soon"], "an interval is a number of milliseconds, not 'soon'"),
                                (["-p"], "nothing to print without '--match'")):
            with self.subTest(arguments):
                done = self.run_program(*arguments)
                self.assertEqual(done.returncode, 2)
                self.assertIn(f"linewatch: {text}", done.stderr)
                self.assertEqual(done.stdout, "")

    def test_SpeaksGermanWithoutAMissingWord(self):
        locale = os.path.join(HERE, "..", "..", "share", "mortise", "locale", "de.locale")
        missing = self.path("nicht da")
        done = self.run_program("--locale", locale, missing, self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertIn(f"linewatch: Fehler des Betriebssystems bei der Operation \u201eopen\u201c mit der Datei \u201e{missing}\u201c! "
                      "Fehler: \u201eNo such file or directory\u201c!\n", done.stderr)
        self.assertIn(f"bei der Operation \u201eread\u201c mit der Datei \u201e{self.folder}\u201c!", done.stderr)
        self.assertNotIn("no translation", done.stderr)
        done = self.run_program("-l", missing, "-")
        self.assertEqual(done.returncode, 1)
        self.assertIn("No such file or directory", done.stderr)

    def test_TellsWhatALanguageLacks(self):
        locale = self.path("klingon.locale")
        with open(locale, "w", encoding="utf-8") as file:
            file.write('Name = "tlhIngan Hol"; "Error: \\"%error%\\"!" = "Qagh: %error%";')
        done = self.run_program("--locale", locale, self.path("missing"))
        self.assertIn('no translation of "OS-Error while trying operation "%operation%" on file "%file%"!"', done.stderr)
        self.assertIn("Qagh: No such file or directory", done.stderr)

    def test_HelpIsShown(self):
        done = self.run_program("--help")
        self.assertEqual(done.returncode, 0)
        self.assertIn("usage: linewatch", done.stdout)

    def test_WhatLooksLikeAnOptionCanBeASource(self):
        done = self.run_program("--", "-m")
        self.assertEqual(done.returncode, 1)
        self.assertIn('on file "-m"', done.stderr)


if __name__ == "__main__":
    result = unittest.TextTestRunner(verbosity=2).run(
        unittest.TestSuite([Linewatch("test_" + sys.argv[1])]))
    sys.exit(0 if result.wasSuccessful() and result.testsRun == 1 else 1)
