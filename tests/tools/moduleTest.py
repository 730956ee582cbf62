#!/usr/bin/env python3
"""Runs `mortise module` as a user would, and looks at what belongs to it: man page and completion.

usage: moduleTest.py TEST PROGRAM [ARGUMENT...]     (the program may stand behind an emulator)

MORTISE_TEST_MODULES names the folders with the libraries that it is shown.
"""

import json
import os
import pty
import random
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.join(HERE, "..", "..")
PROGRAM = sys.argv[2:]
SAMPLES = len(PROGRAM) > 1 or "MORTISE_TEST_SAMPLES" in os.environ  # an emulator and sanitizers are slow
LIMIT = 250  # seconds; nothing here takes that long


def library(name):
    for folder in os.environ["MORTISE_TEST_MODULES"].split(":"):
        path = os.path.join(folder, f"libmortise-test-{name}.so")
        if os.path.exists(path):
            return path
    return None


class Module(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = os.path.realpath(folder.name)

    def write(self, name, data):
        path = os.path.join(self.folder, name)
        with open(path, "wb") as file:
            file.write(data)
        return path

    def module(self, *arguments, odd="", **options):
        environment = dict(os.environ, MORTISE_TEST_ODD=odd)
        options = {"stdout": subprocess.PIPE, "cwd": self.folder} | options
        done = subprocess.run(PROGRAM + ["module", *arguments], stderr=subprocess.PIPE, timeout=LIMIT, check=False, env=environment, **options)
        done.stdout = (done.stdout or b"").decode()
        done.stderr = done.stderr.decode()
        return done

    def shown(self, path, *arguments, code=0, **options):
        """What --json tells of one file."""
        done = self.module("--json", *arguments, path, **options)
        self.assertEqual((done.returncode, done.stderr), (code, ""), done)
        self.assertEqual(done.stdout.count("\n"), 1)
        told = json.loads(done.stdout)
        self.assertEqual(told["usable"], code == 0)
        self.assertEqual(told["file"], path)
        return told

    def problem(self, path, *arguments, code=1, **options):
        """Kind and text of the first thing that is wrong; people are told the same."""
        told = self.shown(path, *arguments, code=code, **options)
        text = self.module(*arguments, path, **options)
        self.assertEqual(text.returncode, code)
        first = told["problems"][0]
        self.assertTrue(text.stdout.startswith(f"{path}: unusable: it {first['text']}\n"), (first, text.stdout))
        return first["kind"], first["text"]

    # A module that is as it should be.

    def test_ShowsAllThatAModuleTells(self):
        told = self.shown(library("shown"))
        self.assertEqual((told["problems"], told["notes"]), ([], []))
        self.assertEqual(told["entryPoints"], ["moduleVersion", "kroVersion", "moduleInitComponent", "moduleInitPlugIn"])
        self.assertEqual(told["version"], "7.8")
        self.assertRegex(told["frameworkVersion"], r"^\d+\.\d+$")
        self.assertEqual(told["unloading"], {"can": "yes", "seen": True, "holders": []})
        self.assertIn("libmortise.so.0", [one["name"] for one in told["libraries"] if os.path.exists(one["path"])])
        component, plug_in = told["objects"]
        self.assertEqual((component["kind"], component["name"], component["author"], component["description"]),
                         ("component", 'shown "one"', "J\u00f6\ufffd\x1b[31m", "has\neverything"))
        self.assertEqual(component["build"], {"compiler": "gcc", "compilerVersion": "12.2", "system": "linux",
                                              "host": "anvil", "date": "2001-02-03", "count": "77"})
        (interface,) = component["interfaces"]
        self.assertEqual((interface["side"], interface["name"], interface["author"], interface["version"], interface["description"]),
                         ("provides", "gauge", "Jo", "3", "Measures the heat"))
        (slot,) = interface["slots"]
        self.assertEqual(slot, {"name": "sltRead", "result": "piInt32", "parameters": "piInt32 place, cAsciiString& unit",
                                "description": "reads one place"})
        self.assertEqual(interface["signals"], [{"name": "sigChanged", "result": "piVoid", "parameters": "int",
                                                 "description": "tells the new heat"}])
        self.assertEqual([(one["side"], one["name"], one["version"]) for one in component["searches"]], [("requires", "clock", "2")])
        self.assertEqual((plug_in["kind"], plug_in["name"], plug_in["type"], plug_in["interfaces"]), ("plug-in", "the other", "filter", []))

    def test_TellsPeopleTheSame(self):
        path = library("shown")
        text = self.module(path).stdout
        lines = text.split("\n")
        self.assertTrue(lines[0].startswith(f"{path}: a module, version 7.8, for version "), text)
        for line in ["  entry points  moduleVersion, kroVersion, moduleInitComponent, moduleInitPlugIn",
                     "  unloads       yes",
                     '  component     shown "one"',
                     "    author        J\u00f6??[31m",
                     "    description   has?everything",
                     "    build         gcc 12.2, for linux, on anvil, 2001-02-03, number 77",
                     "    provides      gauge 3, by Jo: Measures the heat",
                     "      slot          piInt32 sltRead(piInt32 place, cAsciiString& unit): reads one place",
                     "      signal        piVoid sigChanged(int): tells the new heat",
                     "    searches      clock 2, by Al: Tells the time",
                     "  plug-in       the other",
                     "    type          filter"]:
            self.assertIn(line, lines)
        self.assertNotRegex(text, r"[\x00-\x09\x0b-\x1f\x7f]")

    def test_WithoutLoadingOnlyTheFileIsLookedAt(self):
        told = self.shown(library("odd"), "--no-load", odd="load crash")
        self.assertEqual(told["unloading"], {"can": "yes", "seen": None, "holders": []})
        self.assertNotIn("objects", told)
        self.assertIn("  entry points  moduleVersion, kroVersion, moduleInitPlugIn\n", self.module("--no-load", library("odd")).stdout)

    def test_ANameWithoutFolderIsAFileHere(self):
        shutil.copy(library("shown"), os.path.join(self.folder, "plain.so"))
        self.assertEqual(self.shown("plain.so")["version"], "7.8")

    def test_SeveralFilesHaveALineEach(self):
        done = self.module("--json", library("shown"), self.folder, library("odd"))
        self.assertEqual(done.returncode, 1)
        self.assertEqual([json.loads(line)["usable"] for line in done.stdout.splitlines()], [True, False, True])
        done = self.module(library("shown"), "missing.so", self.folder)
        self.assertEqual(done.returncode, 2)

    # Files that are no library.

    def test_SaysWhatAFileIsThatIsNoLibrary(self):
        cases = [(b"", "not-elf", "is empty"), (b"text", "not-elf", "is not an ELF file"), (b"#!/bin/sh\n", "not-elf", "is not an ELF file, but a script"),
                 (b"!<arch>\nx", "not-elf", "is not an ELF file, but a static library"),
                 (b"/* GNU ld script */", "not-elf", "is not an ELF file, but a script for the linker"),
                 (b"MZ\0\0", "not-elf", "is not an ELF file, but a library or program for Windows"),
                 (b"\x7fE", "truncated", "is truncated: it has 2 bytes"), (b"\x7fELF\x02\x01\x01", "truncated", "is truncated: its header is not whole"),
                 (b"\x7fELF\x07\x01\x01" + bytes(60), "damaged", "is damaged: its header has numbers that mean nothing")]
        for data, kind, text in cases:
            self.assertEqual(self.problem(self.write("file.so", data)), (kind, text))
        self.assertEqual(self.problem(self.folder), ("directory", "is a directory"))
        self.assertEqual(self.problem("/dev/null"), ("not-regular", "is not a regular file"))
        pipe = os.path.join(self.folder, "pipe")
        os.mkfifo(pipe)
        self.assertEqual(self.problem(pipe), ("not-regular", "is not a regular file"))
        self.assertEqual(self.problem(PROGRAM[-1]), ("no-library", "is a program, not a shared library"))

    def test_WhatCannotBeReadEndsWithTwo(self):
        self.assertEqual(self.problem("missing.so", code=2), ("unreadable", "cannot be read: No such file or directory"))
        for arguments in [(), ("--wrong", "x"), ("--timeout", "0", "x"), ("--timeout", "x", "x")]:
            done = self.module(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertNotEqual(done.stderr, "")
        with open("/dev/full", "wb") as full:
            done = self.module(library("shown"), stdout=full)
        self.assertEqual((done.returncode, done.stderr), (2, "mortise module: standard output: No space left on device\n"))

    def test_SaysForWhichProcessorALibraryIs(self):
        with open(library("shown"), "rb") as file:
            data = bytearray(file.read())
        data[18:20] = struct.pack("<H", 183)
        kind, text = self.problem(self.write("other.so", data))
        self.assertEqual(kind, "other-processor")
        self.assertRegex(text, r"^is for another processor: ARM64, (64|32) bits; this is .*, (64|32) bits$")
        data[18:20] = struct.pack("<H", 243)
        self.assertIn("RISC-V", self.problem(self.write("other.so", data))[1])

    def test_ATruncatedLibraryIsNotLoaded(self):
        data = self.source()
        for size in [1, 3, 4, 19, 40, 63, 70, len(data) // 3, len(data) // 2, len(data) - 1]:
            self.assertIn(self.problem(self.write("short.so", data[:size]))[0], ("truncated", "damaged"), size)

    # Libraries that are no module, or of no use as one.

    def test_NamesTheEntryPointsThatAreMissing(self):
        self.assertEqual(self.problem(library("noInit")), ("missing-entry", "is no module: it exports neither moduleInitComponent nor moduleInitPlugIn"))
        self.assertEqual(self.problem(library("noVersion")), ("missing-entry", "is no module: it does not export moduleVersion"))
        self.assertEqual(self.problem(library("noKroVersion")), ("missing-entry", "is no module: it does not export kroVersion"))
        none = ("no-module", "is no module: it exports no entry point of one, as MORTISE_MODULE makes them")
        self.assertEqual(self.problem(library("helper")), none)
        # It needs a library that has them all.
        self.assertEqual(self.problem(library("entriesOfAnother")), none)

    def test_SeesEntryPointsWithDecoratedNames(self):
        told = self.shown(library("decorated"), code=1)
        self.assertEqual(told["problems"][0]["kind"], "no-module")
        self.assertEqual([note["text"] for note in told["notes"]],
                         [f"it exports {name}(unsigned int&, unsigned int&) under a decorated name: extern \"C\" is missing, which MORTISE_MODULE adds"
                          for name in ("moduleVersion", "kroVersion")])

    def test_NamesAMissingLibraryAndWhoNeedsIt(self):
        expected = ("missing-library", "lacks the library libmortise-test-helper.so, which it needs: it is not found")
        self.assertEqual(self.problem(library("needingLibrary")), expected)
        self.assertEqual(self.problem(library("needingLibrary"), "--no-load"), expected)
        told = self.shown(library("needingLibrary"), code=1)
        self.assertIn("libmortise-test-helper.so: cannot open shared object file", told["notes"][0]["text"])
        self.assertIn({"name": "libmortise-test-helper.so", "neededBy": library("needingLibrary"), "path": None}, told["libraries"])

    def test_AMissingLibraryOfALibraryIsToldOfThatOne(self):
        with open(library("plugIn"), "rb") as file:
            data = file.read()
        absent = b"libabsent123.so"
        self.assertEqual(len(absent), len(b"libmortise.so.0"))
        path = self.write("libmortise-test-helper.so", data.replace(b"\0libmortise.so.0\0", b"\0" + absent + b"\0"))
        os.environ["LD_LIBRARY_PATH"] = ":".join([self.folder] + os.environ.get("LD_LIBRARY_PATH", "").split(":")).rstrip(":")
        self.assertEqual(self.problem(library("needingLibrary")), ("missing-library", f"lacks the library {absent.decode()}, which {path} needs: it is not found"))

    def test_NamesAMissingSymbolAndWhoNeedsIt(self):
        expected = ("missing-symbol", "lacks the symbol mortiseTestHelp, which it needs: no library has it")
        self.assertEqual(self.problem(library("needingSymbol")), expected)
        self.assertEqual(self.problem(library("needingSymbol"), "--no-load"), expected)

    def test_TellsWhatAnEntryPointRaises(self):
        told = self.shown(library("null"), code=1)
        self.assertEqual(told["problems"][0]["text"], "fails when it is to make its component: cClassLoader: No instance!")
        self.assertIn({"kind": "other-framework", "text": told["notes"][0]["text"]}, told["notes"])
        self.assertIn("version 0.0 of the framework", told["notes"][0]["text"])
        kind, text = self.problem(library("odd"), odd="make raise")
        self.assertEqual((kind, text), ("broken", "fails when it is to make its plug-in: an exception of a class that is not known here"))

    # Modules that take everything along, if they can.

    def test_ACrashAtAnyMomentIsReported(self):
        for when, moment in [("load", "when it is loaded"), ("make", "when it is to make its plug-in"), ("ask", "when it is to ask its plug-in"),
                             ("destroy", "when it is to destroy its plug-in"), ("unload", "when it is to unload")]:
            self.assertEqual(self.problem(library("odd"), odd=when + " crash"), ("broken", f"crashes (Segmentation fault) {moment}"))
            self.assertEqual(self.problem(library("odd"), odd=when + " exit"), ("broken", f"ends the process (exit code 0) {moment}"))
        self.assertEqual(self.problem(library("odd"), odd="make abort")[1], "crashes (Aborted) when it is to make its plug-in")
        # Whether an exception gets through the loader is a matter of the system.
        self.assertIn(self.problem(library("odd"), odd="load raise")[1],
                      ("cannot be loaded: an exception of a class that is not known here", "crashes (Aborted) when it is loaded"))
        self.assertEqual(self.problem(library("odd"), odd="destroy raise")[1], "crashes (Aborted) when it is to destroy its plug-in")

    def test_WhatItToldBeforeACrashIsShown(self):
        told = self.shown(library("odd"), code=1, odd="destroy crash")
        self.assertEqual((told["version"], [one["name"] for one in told["objects"]]), ("1.0", ["odd"]))

    def test_AModuleThatHangsIsEnded(self):
        start = time.monotonic()
        self.assertEqual(self.problem(library("odd"), "--timeout", "1", odd="make hang"), ("broken", "is not done after 1 s when it is to make its plug-in"))
        self.assertLess(time.monotonic() - start, 60)

    def test_AFloodOfWordsIsBounded(self):
        done = self.module("--timeout", "1", library("odd"), odd="make flood")
        self.assertEqual(done.returncode, 1)
        self.assertLess(len(done.stdout), 10000)
        self.assertTrue(done.stdout.endswith("    flood\n    and more\n"), done.stdout)

    def test_ForgedReportsAreTakenAsTheyAre(self):
        done = self.module("--json", library("odd"), odd="make tell")
        self.assertIn(done.returncode, (0, 1))
        json.loads(done.stdout)
        told = self.shown(library("odd"), "--timeout", "20", code=1, odd="make deluge")
        self.assertIn("tells more than 16 MiB", told["problems"][0]["text"])

    def test_WhatItPrintsIsKeptApart(self):
        self.assertEqual(self.shown(library("odd"), odd="make print")["printed"].replace("\r", ""), "to standard \x1b errorto standard output\n")
        self.assertIn("  it printed:\n    to standard ? errorto standard output\n", self.module(library("odd"), odd="make print").stdout)

    def test_AProcessThatItLeavesBehindIsEndedToo(self):
        start = time.monotonic()
        self.assertEqual(self.shown(library("odd"), "--timeout", "60", odd="make fork")["problems"], [])
        self.assertLess(time.monotonic() - start, 50)

    def test_ThreadsThatStillRunAreTold(self):
        # What becomes of the thread when its code goes is a matter of chance.
        told = json.loads(self.module("--json", library("odd"), odd="make thread").stdout)
        self.assertEqual([note["kind"] for note in told["notes"]], ["threads"])
        self.assertTrue(told["notes"][0]["text"].startswith("1 thread"), told["notes"])

    # Whether it goes again.

    def holders(self, path, can, **options):
        told = self.shown(path, **options)
        self.assertEqual(told["unloading"]["can"], can, told)
        text = self.module(path, **options).stdout
        self.assertIn(f"  unloads       {can}\n", text)
        for holder in told["unloading"]["holders"]:
            self.assertIn("                " + holder["text"] + "\n", text)
        return [(holder["kind"], holder["text"]) for holder in told["unloading"]["holders"]]

    def test_SaysWhyALibraryStaysForEver(self):
        self.assertEqual(self.holders(library("noDelete"), "no"), [("nodelete", "it is linked with -z nodelete")])
        self.assertEqual(self.holders(library("threadLocal"), "no"),
                         [("thread-local", "it has thread_local variables with a destructor, which hold it as long as a thread lives that has used them")])
        if library("unique") is not None:
            (holder,) = self.holders(library("unique"), "no")
            self.assertEqual(holder, ("unique-symbol", "it has the unique symbol tCounter<int>::count()::iCount, which stays for ever: compile with -fno-gnu-unique"))

    def test_SaysWhoHoldsALibrary(self):
        holder = library("holder")
        self.assertEqual(self.holders(library("odd"), "no", odd="make held"), [("library", f"it is held by {holder}, which needs it and stays")])
        self.assertEqual(self.holders(library("odd"), "no", odd="make open"),
                         [("handle", "it stayed when it was unloaded: something has opened it and does not close it")])

    # Forged files.

    def tried(self, mutants, *arguments):
        """Shows them all to one process, which has to live through them; the kinds of problems."""
        paths = [self.write(f"{i}.so", data) for i, data in enumerate(mutants)]
        done = self.module("--json", "--timeout", "5", *arguments, *paths)
        self.assertIn(done.returncode, (0, 1), done.stderr[-2000:])
        self.assertEqual(done.stderr, "")
        lines = [json.loads(line) for line in done.stdout.splitlines()]
        self.assertEqual([line["file"] for line in lines], paths)
        for line in lines:
            self.assertEqual(line["usable"], line["problems"] == [])
        return {line["problems"][0]["kind"] if line["problems"] else "usable" for line in lines}

    def tables(self, data):
        """Where the numbers are that everything else is found by."""
        wide = data[4] == 2
        start, size, count = (struct.unpack_from("<Q", data, 32)[0], 56, struct.unpack_from("<H", data, 56)[0]) if wide else (
            struct.unpack_from("<I", data, 28)[0], 32, struct.unpack_from("<H", data, 44)[0])
        places = list(range(0, 64)) + list(range(start, start + size * count))
        for i in range(count):
            at = start + i * size
            if struct.unpack_from("<I", data, at)[0] == 2:
                offset, length = struct.unpack_from("<Q", data, at + 8)[0], struct.unpack_from("<Q", data, at + 32)[0]
                if not wide:
                    offset, length = struct.unpack_from("<I", data, at + 4)[0], struct.unpack_from("<I", data, at + 16)[0]
                places += range(offset, offset + length)
        return places

    def mutant(self, choice, data, places):
        changed = bytearray(data)
        for _ in range(choice.choice((1, 1, 1, 2, 5))):
            at = choice.choice(places) if places else choice.randrange(len(data))
            kind = choice.randrange(4)
            if kind == 0:
                changed[at] ^= 1 << choice.randrange(8)
            elif kind == 1:
                changed[at] = choice.randrange(256)
            else:
                value = choice.choice((0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, len(data), len(data) - 1, choice.randrange(1 << 32)))
                at = min(at & ~3, len(data) - 4)
                changed[at:at + 4] = struct.pack("<I", value)
        return bytes(changed)

    def source(self):
        """A library as it is, and without what the loader does not need."""
        with open(library("plugIn"), "rb") as file:
            data = file.read()
        wide = data[4] == 2
        at, size, count = (struct.unpack_from("<Q", data, 32)[0], 56, struct.unpack_from("<H", data, 56)[0]) if wide else (
            struct.unpack_from("<I", data, 28)[0], 32, struct.unpack_from("<H", data, 44)[0])
        end = 0
        for i in range(count):
            if wide:
                offset, length = struct.unpack_from("<Q", data, at + i * size + 8)[0], struct.unpack_from("<Q", data, at + i * size + 32)[0]
            else:
                offset, length = struct.unpack_from("<I", data, at + i * size + 4)[0], struct.unpack_from("<I", data, at + i * size + 16)[0]
            end = max(end, offset + length)
        return data[:end]

    def test_ThousandsOfForgedFilesAreToldAndSurvived(self):
        seed = int(os.environ.get("MORTISE_TEST_SEED", time.time_ns() % 1000000))
        print("seed", seed)
        choice = random.Random(seed)
        data, kinds = self.source(), set()
        places = self.tables(data)
        for part in range(1 if SAMPLES else 8):
            kinds |= self.tried([self.mutant(choice, data, places if part % 3 else None) for _ in range(250)], "--no-load")
        # A few hundred by chance need not have them all.
        self.assertIn("damaged", kinds)
        if not SAMPLES:
            self.assertIn("truncated", kinds)
            self.assertIn("usable", kinds)

    def test_ThousandsOfTruncatedFilesAreToldAndSurvived(self):
        data = self.source()
        sizes = list(range(0, 1000)) + list(range(1000, len(data), max(1, len(data) // 1000)))
        sizes = sizes[::20] if SAMPLES else sizes
        for start in range(0, len(sizes), 500):
            kinds = self.tried([data[:size] for size in sizes[start:start + 500]], "--no-load")
            self.assertLessEqual(kinds, {"not-elf", "truncated", "damaged"})

    def test_ForgedFilesThatAreLoadedHarmNobody(self):
        seed = int(os.environ.get("MORTISE_TEST_SEED", time.time_ns() % 1000000))
        print("seed", seed)
        choice = random.Random(seed)
        data = self.source()
        places = self.tables(data)
        kinds = set()
        for _ in range(1 if SAMPLES else 2):
            kinds |= self.tried([self.mutant(choice, data, places) for _ in range(50 if SAMPLES else 150)])
        self.assertIn("damaged", kinds)

    # What belongs to it.

    def test_ATerminalIsNotSteered(self):
        main, side = pty.openpty()
        done = self.module(library("shown"), stdout=side)
        os.close(side)
        shown = b""
        try:
            while piece := os.read(main, 4096):
                shown += piece
        except OSError:
            pass
        os.close(main)
        self.assertEqual(done.returncode, 0)
        self.assertIn("J\u00f6??[31m", shown.decode())
        self.assertNotIn(b"\x1b", shown)

    def test_TheManPageTellsEveryOption(self):
        page = os.path.join(ROOT, "share", "man", "mortise.1")
        done = subprocess.run(["groff", "-man", "-ww", "-z", page], capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        with open(page, encoding="ascii") as file:
            source = file.read().replace("\\-", "-")
        words = set(re.findall(r"--[a-z]+(?:-[a-z]+)*", self.module("--help").stdout)) | {"mortise module"}
        self.assertGreater(len(words), 4)
        for name in words:
            self.assertIn(name, source)

    def test_TheShellCompletesOptionsAndFiles(self):
        script = os.path.join(ROOT, "share", "bash-completion", "completions", "mortise")
        path = self.write("one.so", b"")

        def complete(*words):
            quoted = " ".join(f"'{one}'" for one in ("mortise",) + words)
            code = f"source '{script}'; COMP_WORDS=({quoted}); COMP_CWORD={len(words)}; _mortise; printf '%s\\n' \"${{COMPREPLY[@]}}\""
            done = subprocess.run([shutil.which("bash"), "-c", code], capture_output=True, text=True, check=True)
            return done.stdout.split()

        self.assertEqual(complete("m"), ["module"])
        options = set(re.findall(r"--[a-z]+(?:-[a-z]+)*", self.module("--help").stdout.split("Options:")[1].split("Ends with")[0]))
        self.assertEqual(set(complete("module", "--")), options)
        self.assertEqual(complete("module", "--json", path[:-3]), [path])
        self.assertEqual(complete("module", "--timeout", ""), [])


if __name__ == "__main__":
    result = unittest.TextTestRunner(verbosity=2).run(unittest.TestSuite([Module("test_" + sys.argv[1])]))
    sys.exit(0 if result.wasSuccessful() and result.testsRun == 1 else 1)
