#!/usr/bin/env python3
"""Runs `mortise new-module` as a user would, and goes on as a new user would.

usage: newModuleTest.py TEST PROGRAM [ARGUMENT...]     (the program may stand behind an emulator)

MORTISE_TEST_BUILD is the folder of the build, MORTISE_TEST_CMAKE the program.
"""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.join(HERE, "..", "..")
TEMPLATE = os.path.join(ROOT, "share", "mortise", "template-module")
PROGRAM = sys.argv[2:]
LIMIT = 250  # seconds; nothing here takes that long


class NewModule(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = os.path.realpath(folder.name)

    def new(self, *arguments, **options):
        done = subprocess.run(PROGRAM + ["new-module", *arguments], **({"stdout": subprocess.PIPE, "cwd": self.folder} | options),
                              stderr=subprocess.PIPE, timeout=LIMIT, check=False)
        done.stdout, done.stderr = (done.stdout or b"").decode(), done.stderr.decode()
        return done

    def refused(self, error, *arguments):
        done = self.new(*arguments)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (2, "", f"mortise new-module: {error}\n"))

    def files(self, folder):
        found = {}
        for directory, _, names in os.walk(folder):
            for name in names:
                path = os.path.join(directory, name)
                with open(path, "rb") as file:
                    found[os.path.relpath(path, folder)] = file.read()
        return found

    def test_WritesTheTemplateUnderAnotherName(self):
        done = self.new("speedometer")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertTrue(done.stdout.startswith("speedometer holds the new module."), done.stdout)

        def renamed(text):
            for old, new in [("greeter", "speedometer"), ("Greeter", "Speedometer"), ("GREETER", "SPEEDOMETER")]:
                text = text.replace(old, new)
            return text

        expected = {renamed(name): renamed(data.decode()).encode() for name, data in self.files(TEMPLATE).items()}
        self.assertGreater(len(expected), 3)
        written = self.files(os.path.join(self.folder, "speedometer"))
        self.assertEqual(written, expected)
        self.assertIn("cSpeedometer.cpp", written)
        self.assertNotIn(b"greeter", b"".join(written.values()).lower())

    def test_TakesAnotherFolderAndAnotherTemplate(self):
        template = os.path.join(self.folder, "mine")
        os.makedirs(os.path.join(template, "greeters"))
        for name, data in [("CMakeLists.txt", b"greeter\0\xff Greeter_GREETER greete"), ("greeters/run.sh", b"")]:
            with open(os.path.join(template, name), "wb") as file:
                file.write(data)
        os.chmod(os.path.join(template, "greeters", "run.sh"), 0o755)
        os.mkdir(os.path.join(self.folder, "there"))
        done = self.new("--dir", "there", "a_B2", "--template", template)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        made = os.path.join(self.folder, "there", "a_B2")
        self.assertEqual(self.files(made), {"CMakeLists.txt": b"a_B2\0\xff A_B2_A_B2 greete", "a_B2s/run.sh": b""})
        self.assertTrue(os.access(os.path.join(made, "a_B2s", "run.sh"), os.X_OK))

    def test_RefusesWhatIsNoName(self):
        for name in ["", "1a", "a-b", "a b", "a.b", "../a", "a/b", "_a", "a__b", "\u00e4", "a;b", "$(id)"]:
            shown = name
            self.refused(f"{shown} is no name of a module: it is made of letters, digits and '_', and begins with a letter; no two '_' follow each other", name)
        for name in ["test", "all", "install", "clean", "help", "mortise"]:
            self.refused(f"{name} is no name of a module: it has another meaning in the build", name)
        self.assertEqual(os.listdir(self.folder), [])

    def test_LeavesAloneWhatIsThere(self):
        for make in (os.mkdir, lambda path: open(path, "wb").close(), lambda path: os.symlink("nowhere", path)):
            path = os.path.join(self.folder, "gauge")
            make(path)
            self.refused("gauge: File exists", "gauge")
            self.assertEqual(os.listdir(self.folder), ["gauge"])
            os.rmdir(path) if os.path.isdir(path) else os.remove(path)

    def test_SaysWhatCannotBeReadOrWritten(self):
        self.refused("none/gauge: No such file or directory", "gauge", "--dir", "none")
        self.refused(f"{self.folder}: no template of a module", "gauge", "--template", self.folder)
        self.refused("missing: no template of a module", "gauge", "--template", "missing")
        done = self.new("n" * 300)
        self.assertEqual(done.returncode, 2)
        self.assertIn("File name too long", done.stderr)
        for arguments in [(), ("a", "b"), ("--wrong", "a")]:
            done = self.new(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertNotEqual(done.stderr, "")
        self.assertEqual(os.listdir(self.folder), [])

    def test_LeavesNothingHalfDone(self):
        template = os.path.join(self.folder, "mine")
        os.mkdir(template)
        shutil.copy(os.path.join(TEMPLATE, "CMakeLists.txt"), template)
        os.symlink("nowhere", os.path.join(template, "link"))
        self.refused(f"{template}/link: No such file or directory", "gauge", "--template", template)
        self.assertEqual(os.listdir(self.folder), ["mine"])
        with open("/dev/full", "wb") as full:
            done = self.new("gauge", stdout=full)
        self.assertEqual((done.returncode, done.stderr), (2, "mortise new-module: standard output: No space left on device\n"))

    def test_NewUserHasAModuleAfterTenCommands(self):
        prefix = os.path.join(self.folder, "package")
        cmake = os.environ["MORTISE_TEST_CMAKE"]
        build = os.environ["MORTISE_TEST_BUILD"]
        subprocess.run([cmake, "--install", build, "--prefix", prefix], check=True, capture_output=True, timeout=LIMIT)
        with open(os.path.join(build, "CMakeCache.txt"), encoding="utf-8") as file:
            cache = dict(re.findall(r"^([A-Z_]+):[A-Z]+=(.*)$", file.read(), flags=re.M))
        home = os.path.join(self.folder, "home")
        os.mkdir(home)
        environment = {"PATH": ":".join([os.path.join(prefix, "bin"), os.path.dirname(cmake), os.environ["PATH"]]), "HOME": home,
                       "CXX": cache["CMAKE_CXX_COMPILER"], "CMAKE_GENERATOR": cache["CMAKE_GENERATOR"], "LC_ALL": "C"}
        commands = 0

        def run(command):
            nonlocal commands
            commands += 1
            done = subprocess.run(["sh", "-c", command], cwd=home, env=environment, capture_output=True, text=True, timeout=LIMIT, check=False)
            self.assertEqual(done.returncode, 0, command + "\n" + done.stdout + done.stderr)
            return done.stdout

        told = run("mortise new-module thermometer")
        run(f"export CMAKE_PREFIX_PATH='{prefix}'; " + re.search(r"cmake -S .*", told).group())
        run(re.search(r"cmake --build .*", told).group())
        tested = run(re.search(r"ctest .*", told).group())
        self.assertRegex(tested, r"100% tests passed, 0 tests failed out of [1-9]")
        shown = json.loads(run("mortise module --json thermometer/build/libthermometer.so"))
        self.assertTrue(shown["usable"])
        self.assertEqual(shown["unloading"], {"can": "yes", "seen": True, "holders": []})
        (component,) = shown["objects"]
        self.assertEqual((component["kind"], component["name"]), ("component", "thermometer"))
        self.assertNotEqual(component["interfaces"][0]["slots"], [])
        self.assertLessEqual(commands, 10)

    def test_TheManPageTellsEveryOption(self):
        page = os.path.join(ROOT, "share", "man", "mortise.1")
        with open(page, encoding="ascii") as file:
            source = file.read().replace("\\-", "-")
        words = set(re.findall(r"--[a-z]+", self.new("--help").stdout)) | {"mortise new-module"}
        self.assertGreater(len(words), 3)
        for name in words:
            self.assertIn(name, source)

    def test_TheShellCompletesOptionsAndFolders(self):
        script = os.path.join(ROOT, "share", "bash-completion", "completions", "mortise")
        path = os.path.join(self.folder, "folder")
        os.mkdir(path)

        def complete(*words):
            quoted = " ".join(f"'{one}'" for one in ("mortise",) + words)
            code = f"source '{script}'; COMP_WORDS=({quoted}); COMP_CWORD={len(words)}; _mortise; printf '%s\\n' \"${{COMPREPLY[@]}}\""
            done = subprocess.run([shutil.which("bash"), "-c", code], capture_output=True, text=True, check=True)
            return done.stdout.split()

        self.assertEqual(complete("n"), ["new-module"])
        self.assertEqual(set(complete("new-module", "--")), set(re.findall(r"--[a-z]+", self.new("--help").stdout.split("Options:")[1])))
        self.assertEqual(complete("new-module", "name", "--dir", path[:-3]), [path])


if __name__ == "__main__":
    result = unittest.TextTestRunner(verbosity=2).run(unittest.TestSuite([NewModule("test_" + sys.argv[1])]))
    sys.exit(0 if result.wasSuccessful() and result.testsRun == 1 else 1)
