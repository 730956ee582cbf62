#!/usr/bin/env python3
"""Runs the example program plant, with its modules, as a user would.

usage: plantTest.py TEST PROGRAM [ARGUMENT...]     (the program may stand behind an emulator)
"""

import os
import pathlib
import re
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = [shutil.which(sys.argv[2]) or sys.argv[2], *sys.argv[3:]]
MODULES = pathlib.Path(PROGRAM[-1] + "-modules").resolve()
GERMAN = pathlib.Path(__file__).resolve().parents[2] / "examples" / "plant" / "de.locale"
LIMIT = 60  # seconds; nothing here takes that long

NET_HEADINGS = "Inter-|   Receive  |  Transmit\n face |bytes    packets|bytes    packets\n"


class Child:
    """The program while it runs, with what it has written so far."""

    def __init__(self, test, *arguments):
        self.test = test
        self.process = subprocess.Popen(PROGRAM + list(arguments), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE)
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

    def wait_for(self, text, count=1):
        self.wait_until(lambda: self.out().count(text) >= count)

    def stop(self, number=signal.SIGTERM):
        """Ends the program, reads the rest, and returns its exit code."""
        self.process.send_signal(number)
        return self.end()

    def end(self):
        self.wait_until(lambda: "end: " in self.out() and " in order\n" in self.out())
        return self.process.wait(LIMIT)


class Plant(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.proc = self.folder / "proc"
        (self.proc / "net").mkdir(parents=True)

    def write(self, name, text):
        """Makes a file of the kernel's folder; a reader sees the old or the new one."""
        new = self.folder / "new"
        new.write_text(text, encoding="ascii")
        new.rename(self.proc / name)

    def write_cpu(self, busy, idle):
        self.write("stat", f"cpu  {busy} 0 0 {idle} 0 0 0 0 0 0\ncpu0 1 2 3 4 5 6 7 8 9 10\n")

    def write_memory(self, available):
        self.write("meminfo", f"MemTotal:  1000 kB\nMemFree: 1 kB\nMemAvailable: {available} kB\nBuffers: 3 kB\n")

    def write_net(self, received, sent):
        self.write("net/dev", NET_HEADINGS + "    lo: 999999 1 0 0 0 0 0 0 888888 1 0 0 0 0 0 0\n"
                   f"  eth0: {received} 1 0 0 0 0 0 0 {sent} 1 0 0 0 0 0 0\n wlan0:7 1 0 0 0 0 0 0 7 1 0 0 0 0 0 0\n")

    def write_all(self):
        self.write_cpu(200, 800)
        self.write_memory(250)
        self.write_net(1000, 2000)

    def start(self, *arguments):
        return Child(self, "-i", "20", "--proc", str(self.proc), "--disk", str(self.folder), *arguments)

    def run_program(self, *arguments):
        return subprocess.run(PROGRAM + list(arguments), stdin=subprocess.DEVNULL, capture_output=True, timeout=LIMIT,
                              check=False, text=True)

    def run_briefly(self, *arguments):
        self.write_all()
        return self.run_program("-s", "1", "-i", "50", "--proc", str(self.proc), *arguments)

    def copy_modules(self):
        copy = self.folder / "modules"
        shutil.copytree(MODULES, copy)
        return copy

    def events(self, text):
        """The lines that tell what happens to modules."""
        return re.findall(r"^((?:start|match|loss|removal|end): .*)$", text, re.M)

    def assert_order(self, text, *lines):
        events = self.events(text)
        position = 0
        for line in lines:
            self.assertIn(line, events[position:], text)
            position = events.index(line, position) + 1

    def processor(self, library):
        header = pathlib.Path(library).read_bytes()[:20]
        return header[4], header[18:20]

    def is_mapped(self, child, module):
        maps = pathlib.Path(f"/proc/{child.process.pid}/maps").read_text(encoding="utf-8")
        return f"/lib{module}.so\n" in maps

    def test_TellsEveryStartMatchAndRemoval(self):
        done = self.run_briefly()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertEqual(self.events(done.stdout), [
            f"start: meter 1.0 is component 1:2, from {MODULES}/libmeter.so",
            f"start: history 1.0 is component 1:3, from {MODULES}/libhistory.so",
            f"start: alarm 1.0 is component 1:4, from {MODULES}/libalarm.so",
            f"start: printer 1.0 is component 1:5, from {MODULES}/libprinter.so",
            "match: history uses plant.meter of meter (1:2)",
            "match: printer uses plant.meter of meter (1:2)",
            "match: alarm uses plant.history of history (1:3)",
            "match: printer uses plant.history of history (1:3)",
            "match: printer uses plant.alarm of alarm (1:4)",
            "end: the time is up",
            "removal: printer (1:5) is gone",
            "removal: alarm (1:4) is gone",
            "removal: history (1:3) is gone",
            "removal: meter (1:2) is gone",
            "end: 4 modules started, 4 removed, in order"])

    def test_ShowsTheFiguresOfItsFiles(self):
        self.write_all()
        child = self.start("-s", "0")
        child.wait_for("cpu 0.0 %, memory 75.0 %, received 0.0 B/s, sent 0.0 B/s, disk ")
        self.write_cpu(230, 870)
        child.wait_for("cpu 30.0 %")
        self.write_memory(500)
        child.wait_for("memory 50.0 %")
        self.write_net(1001000, 2001)
        child.wait_until(lambda: re.search(r"received [0-9.]+ [kM]B/s, sent [0-9.]+ B/s", child.out()))
        child.wait_for("received 0.0 B/s", 2)
        self.assertEqual(child.stop(), 128 + signal.SIGTERM)

    def test_AFigureThatGoesBackwardsIsZero(self):
        self.write_all()
        child = self.start("-s", "0")
        child.wait_for("cpu 0.0 %")
        self.write_cpu(1, 1)
        self.write_net(1, 1)
        count = child.out().count("\n")
        child.wait_until(lambda: child.out().count("\n") > count + 5)
        child.stop()
        for text in re.findall(r"^cpu ([0-9.]+) %,.* received ([0-9.]+) B/s, sent ([0-9.]+) B/s", child.out(), re.M):
            self.assertEqual(text, ("0.0", "0.0", "0.0"))

    def test_ShowsTheFiguresOfThisMachine(self):
        done = self.run_program("-s", "1", "-i", "100")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        lines = re.findall(r"^cpu ([0-9.]+) %, memory ([0-9.]+) %, received [0-9.]+ \w*B/s, sent [0-9.]+ \w*B/s, "
                           r"disk ([0-9.]+) %$", done.stdout, re.M)
        self.assertTrue(lines, done.stdout)
        for cpu, memory, disk in lines:
            self.assertLessEqual(float(cpu), 100)
            self.assertTrue(0 < float(memory) <= 100)
            info = os.statvfs("/")
            used = info.f_blocks - info.f_bfree
            self.assertAlmostEqual(float(disk), 100 * used / (used + info.f_bavail), delta=5)

    def test_ShowsTheRangeOfEachFigureAtTheEnd(self):
        self.write_all()
        child = self.start("-s", "0")
        child.wait_for("memory 75.0 %")
        self.write_memory(500)
        child.wait_for("memory 50.0 %")
        child.stop()
        self.assertRegex(child.out(), r"\nmemory: 50\.0 % to 75\.0 %, mean [5-7][0-9]\.[0-9] %, of [0-9]+ values\n")
        # Nothing is measured behind it.
        self.assertNotIn("received 0.0 B/s, sent", child.out().split("mean")[-1])

    def test_ARemovedModuleIsLostAndMatchedAgain(self):
        done = self.run_briefly("-r", "meter")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assert_order(done.stdout, "removal: meter is to go", "removal: meter (1:2) is gone",
                          "loss: history has no plant.meter any more", "loss: printer has no plant.meter any more",
                          f"start: meter 1.0 is component 1:6, from {MODULES}/libmeter.so",
                          "match: history uses plant.meter of meter (1:6)",
                          "match: printer uses plant.meter of meter (1:6)", "end: the time is up",
                          "removal: history (1:3) is gone", "removal: meter (1:6) is gone",
                          "end: 5 modules started, 5 removed, in order")
        before, without = done.stdout.split("removal: meter (1:2) is gone")
        without, after = without.split("start: meter")
        self.assertIn("memory 75.0 %", before)
        self.assertNotIn("memory", without)
        self.assertIn("memory 75.0 %", after)

    def test_AModuleGoesBeforeTheOneThatItRequires(self):
        done = self.run_briefly("-r", "history")
        self.assert_order(done.stdout, "removal: history is to go", "removal: alarm (1:4) is gone",
                          "removal: history (1:3) is gone",
                          f"start: history 1.0 is component 1:6, from {MODULES}/libhistory.so",
                          f"start: alarm 1.0 is component 1:7, from {MODULES}/libalarm.so",
                          "match: alarm uses plant.history of history (1:6)",
                          "match: printer uses plant.alarm of alarm (1:7)",
                          "removal: printer (1:5) is gone", "removal: alarm (1:7) is gone",
                          "removal: history (1:6) is gone", "end: 6 modules started, 6 removed, in order")
        self.assertIn("loss: printer has no plant.history any more", done.stdout)

    def test_AllModulesMayGoAndComeBack(self):
        done = self.run_briefly("-r", "printer", "-r", "alarm", "-r", "history", "-r", "meter")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn("end: 8 modules started, 8 removed, in order\n", done.stdout)
        self.assertIn("memory 75.0 %", done.stdout.split("start: printer")[2])

    def test_TheLibraryOfARemovedModuleIsUnloaded(self):
        self.write_all()
        child = self.start("-s", "4", "-r", "meter")
        child.wait_for("match: printer uses plant.alarm")
        self.assertTrue(self.is_mapped(child, "meter"))
        child.wait_for("removal: meter (1:2) is gone")
        child.wait_for("loss: printer has no plant.meter")
        end = time.monotonic() + 1
        while self.is_mapped(child, "meter"):
            self.assertLess(time.monotonic(), end)
            time.sleep(0.01)
        self.assertTrue(self.is_mapped(child, "history"))
        child.wait_for("start: meter", 2)
        self.assertTrue(self.is_mapped(child, "meter"))
        self.assertEqual(child.end(), 0)

    def test_AnAlarmIsRaisedAndCleared(self):
        self.write_all()
        child = self.start("-s", "0", "-L", "memory=60.5", "-L", "disk=100")
        child.wait_for("ALARM: memory is at 75.0 %, above its limit of 60.5 %.\n")
        self.write_memory(900)
        child.wait_until(lambda: re.search(r"memory is back at [0-9.]+ %, not above its limit of 60.5 %\.\n", child.out()))
        self.write_memory(100)
        child.wait_for("ALARM: memory", 2)
        child.stop()
        self.assertEqual(child.out().count("ALARM"), 2)

    def test_LimitsAreSetForAnAlarmThatComesBack(self):
        done = self.run_briefly("-r", "alarm", "-L", "memory=1")
        self.assertEqual(done.stdout.count("ALARM: memory is at 75.0 %, above its limit of 1.0 %.\n"), 2)

    def test_ALimitOfWhatNobodyMeasuresIsTold(self):
        done = self.run_briefly("-L", "weather=7")
        self.assertEqual(done.stdout.count('There is a limit of "weather", which nobody measures.\n'), 1)

    def test_AFailureIsToldWithItsCause(self):
        self.write_all()
        (self.proc / "meminfo").unlink()
        child = self.start("-s", "0")
        child.wait_for("sent 0.0 B/s")
        self.assertNotIn("memory ", child.out())
        self.assertRegex(child.out(), r'"memory" could not be measured! .*meminfo.*No such file or directory')
        self.write("meminfo", "nothing\n")
        child.wait_for(f'"memory" could not be measured! "{self.proc}/meminfo" does not hold what it should!\n')
        self.write_memory(100)
        child.wait_for('"memory" is measured again.\n')
        child.wait_for("memory 90.0 %")
        child.stop()
        self.assertEqual(child.out().count("could not be measured"), 2)
        self.assertEqual(child.err(), "")

    def test_FilesThatMakeNoSenseAreTold(self):
        self.write("stat", "cpu 1 2\n")
        self.write("meminfo", "MemTotal: 5 kB\nMemAvailable: 6 kB\n")
        self.write("net/dev", NET_HEADINGS + "eth0: many\n")
        child = self.start("-s", "0", "--disk", str(self.folder / "nowhere"))
        for name, path in (("cpu", "stat"), ("memory", "meminfo"), ("received", "net/dev"), ("sent", "net/dev")):
            child.wait_for(f'"{name}" could not be measured! "{self.proc}/{path}" does not hold what it should!\n')
        child.wait_until(lambda: re.search(r'"disk" could not be measured! .*nowhere.*No such file', child.out()))
        self.write("net/dev", "")
        self.write_cpu(1, 1)
        child.wait_for('"cpu" is measured again.\n')
        self.assertEqual(child.stop(signal.SIGINT), 128 + signal.SIGINT)

    def test_AWrongSearchPathIsTold(self):
        empty = self.folder / "empty"
        empty.mkdir()
        done = self.run_program("-p", str(empty), "-p", str(self.folder / "nowhere"))
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, f'plant: There is no file "libmeter.so" of the module "meter" in: {empty}, '
                                      f"{self.folder}/nowhere\n")
        self.assertEqual(done.stdout, "end: 0 modules started, 0 removed, in order\n")

    def test_ModulesAreFoundInTheFirstFolderThatHasThem(self):
        copy = self.copy_modules()
        (copy / "libalarm.so").unlink()
        done = self.run_briefly("-p", str(copy), "-p", str(MODULES))
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertIn(f"from {copy}/libmeter.so\n", done.stdout)
        self.assertIn(f"from {MODULES}/libalarm.so\n", done.stdout)

    def test_ABrokenModuleEndsTheStartInOrder(self):
        copy = self.copy_modules()
        (copy / "libalarm.so").write_text("no module", encoding="ascii")
        done = self.run_briefly("-p", str(copy))
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr, r"\Aplant: Unable to load plugin\. OS returned .*libalarm\.so.*!\n\Z")
        self.assert_order(done.stdout, "removal: history (1:3) is gone", "removal: meter (1:2) is gone",
                          "end: 2 modules started, 2 removed, in order")

    def test_ALibraryThatIsNoModuleEndsTheStartInOrder(self):
        copy = self.copy_modules()
        child = self.start("-s", "0")  # which has some
        child.wait_for("start: printer")
        maps = pathlib.Path(f"/proc/{child.process.pid}/maps").read_text(encoding="utf-8")
        child.stop()
        libraries = re.findall(r" (/\S*/lib(?:m|gcc_s)\.so\.\S+)\n", maps)
        # An emulator has libraries of its own.
        shutil.copy(next(name for name in libraries
                         if self.processor(name) == self.processor(copy / "libmeter.so")),
                    copy / "libprinter.so")
        done = self.run_briefly("-p", str(copy))
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, "plant: Invalid module. Missing moduleInit section!\n")
        self.assertIn("end: 3 modules started, 3 removed, in order\n", done.stdout)

    def test_AModuleThatVanishesDoesNotHoldUpTheOthers(self):
        copy = self.copy_modules()
        self.write_all()
        child = self.start("-s", "3", "-r", "history", "-r", "printer", "-p", str(copy))
        child.wait_for("removal: history (1:3) is gone\n")
        (copy / "libhistory.so").unlink()
        self.assertEqual(child.end(), 1)
        self.assertEqual(child.err(), f'plant: There is no file "libhistory.so" of the module "history" in: {copy}\n')
        self.assert_order(child.out(), f"start: alarm 1.0 is component 1:6, from {copy}/libalarm.so",
                          "match: printer uses plant.meter of meter (1:2)", "end: the time is up",
                          "removal: printer (1:7) is gone", "removal: alarm (1:6) is gone", "removal: meter (1:2) is gone",
                          "end: 6 modules started, 6 removed, in order")

    def test_EndsOrderlyWhenInterrupted(self):
        self.write_all()
        for number, text in ((signal.SIGINT, "interrupted"), (signal.SIGTERM, "terminated")):
            child = self.start("-s", "0")
            child.wait_for("memory 75.0 %")
            self.assertEqual(child.stop(number), 128 + number)
            self.assert_order(child.out(), f"end: {text}", "removal: printer (1:5) is gone",
                              "removal: alarm (1:4) is gone", "removal: history (1:3) is gone",
                              "removal: meter (1:2) is gone", "end: 4 modules started, 4 removed, in order")
            self.assertEqual(child.err(), "")

    def test_EndsWhenNobodyReadsItsOutput(self):
        self.write_all()
        child = self.start("-s", "0")
        child.wait_for("memory 75.0 %")
        child.process.stdout.close()
        self.assertEqual(child.process.wait(LIMIT), 1)
        self.assertIn(b"standard output", child.process.stderr.read())

    def test_SpeaksTheLanguageOfALocaleFile(self):
        done = self.run_briefly("-l", str(GERMAN), "-L", "memory=1", "-L", "Wetter=1", "-r", "meter")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        for text in ("Start: meter 1.0 ist Komponente 1:2, aus ", "Verbindung: history benutzt plant.meter von meter (1:2)",
                     "Verlust: history hat kein plant.meter mehr", "Abbau: meter (1:2) ist fort", "ALARM: memory liegt bei 75.0 %",
                     "Ende: 5 Module gestartet, 5 abgebaut, der Reihe nach"):
            self.assertIn(text, done.stdout)
        done = self.run_program("-l", str(GERMAN), "-p", str(self.folder))
        self.assertEqual(done.stderr, f'plant: Es gibt keine Datei „libmeter.so“ des Moduls „meter“ in: {self.folder}\n')

    def test_WritesTheGraphsOfWorkAndComponents(self):
        done = self.run_briefly("-g", str(self.folder / "plant.dot"))
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        text = (self.folder / "plant.dot").read_text(encoding="utf-8")
        self.assertTrue(text.startswith("digraph"), text)
        self.assertIn("plant: measure", text)
        self.assertIn("ComponentManagement", text)
        text = (self.folder / "plant-components.dot").read_text(encoding="utf-8")
        self.assertTrue(text.startswith("digraph"), text)
        for name in ("plant.meter", "plant.history", "plant.alarm", "plant.printer"):
            self.assertIn(name, text)
        for name in ("plant.svg", "plant-components.svg"):
            if shutil.which("dot"):
                self.assertIn("<svg", (self.folder / name).read_text(encoding="utf-8"))
            else:
                self.assertIn("There is no SVG of the graphs", done.stdout)

    def test_AGraphThatCannotBeWrittenIsTold(self):
        done = self.run_briefly("-g", str(self.folder / "nowhere" / "work.dot"))
        self.assertEqual(done.returncode, 1)
        self.assertIn("nowhere/work.dot", done.stderr)
        self.assertIn("end: 4 modules started, 4 removed, in order\n", done.stdout)

    def test_ShowsWhatTheLibraryTellsIfAsked(self):
        done = self.run_briefly("-v", "-r", "history")
        self.assertIn("cAbstractComponent::addInterfaceDep...", done.stderr)
        self.assertIn("cModuleMgr: Mark referencing component for removal...", done.stderr)

    def test_WrongArgumentsAreTold(self):
        for arguments, text in ((["-x"], "unknown option '-x'"), (["meter"], "there is nothing to do with 'meter'"),
                                (["-s"], "missing value after '-s'"), (["-s", ""], "missing value after '-s'"),
                                (["-s", "-1"], "'-1'"), (["-s", "9999999"], "'9999999'"), (["-i", "0"], "'0'"),
                                (["-i", "soon"], "'soon'"), (["-r", "mixer"], "there is no module 'mixer'"),
                                (["-L", "cpu"], "a limit is NAME=VALUE, not 'cpu'"), (["-L", "=3"], "'=3'"),
                                (["-L", "cpu="], "'cpu='"), (["-L", "cpu=3x"], "'cpu=3x'"), (["-L", "cpu=nan"], "'cpu=nan'"),
                                (["-s", "0", "-r", "meter"], "without an end")):
            done = self.run_program(*arguments)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertIn(text, done.stderr)
            self.assertIn("Try plant --help.", done.stderr)

    def test_HelpIsShown(self):
        done = self.run_program("--help")
        self.assertEqual(done.returncode, 0)
        self.assertTrue(done.stdout.startswith("usage: plant"))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "Plant.test_" + sys.argv[1]])
