#!/usr/bin/env python3
"""Runs `mortise tr` as a user would, and looks at what belongs to it: man page and completion.

usage: trTest.py TEST PROGRAM [ARGUMENT...]     (the program may stand behind an emulator)
"""

import os
import re
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.join(HERE, "..", "..")
PROGRAM = sys.argv[2:]
LIMIT = 250  # seconds; nothing here takes that long

ENTRY = re.compile(r'^"((?:\\.|[^"\\])*)" =\n  ("(?:\\.|[^"\\])*"|fromFile\("[^"]*"\));$', re.M | re.S)
MISSING = re.compile(r'^//\? "((?:\\.|[^"\\])*)" =\n//\?   "";$', re.M | re.S)


def plain(text):
    """What stands between quotes, with the escapes resolved."""
    return re.sub(r"\\(.)", r"\1", text, flags=re.S)


def missing(text):
    """The keys of the comments that ask for a translation."""
    return [plain(re.sub(r"(?<=\n)//\? |(?<=\r)(?!\n)//\? ", "", key)) for key in MISSING.findall(text)]


class Tr(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = os.path.realpath(folder.name)

    def write(self, name, text):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(text if isinstance(text, bytes) else text.encode())
        return path

    def read(self, name):
        with open(os.path.join(self.folder, name), "rb") as file:
            return file.read().decode()

    def run_tr(self, *arguments):
        done = subprocess.run(PROGRAM + ["tr", *arguments], cwd=self.folder, capture_output=True, timeout=LIMIT, check=False)
        done.stdout, done.stderr = done.stdout.decode(), done.stderr.decode()
        return done

    def tr(self, *arguments, code=0, errors=""):
        done = self.run_tr(*arguments)
        self.assertEqual((done.returncode, done.stderr), (code, errors), done)
        return done.stdout

    def keys_of(self, source, errors=""):
        """The keys found in a source text."""
        self.write("keys.cpp", source)
        return missing(self.tr("keys.cpp", errors=errors))

    def update(self, source, former=None, *arguments, errors=""):
        """The translation file after it was brought up to date."""
        self.write("one.cpp", source)
        if former is not None:
            self.write("de.tr", former)
        self.tr("-f", "de.tr", *arguments, "one.cpp", errors=errors)
        return self.read("de.tr")

    # What counts as a key.

    def test_TakesMarkedLiteralsInTheirOrder(self):
        self.assertEqual(self.keys_of('f("$MTR$One!"); g("two"); h("$MNTR$three");\nmsg << "$MTR$A %x% b" << "$MTR$One!";'),
                         ["One!", "A %x% b"])
        self.assertEqual(self.keys_of('f(" $MTR$a", "$MTR", "MTR$b", "x$MTR$c", "$mtr$d")'), [])

    def test_TheMarkerAloneIsNoKey(self):
        self.assertEqual(self.keys_of('char const s[] = "$MTR$"; f("$MTR$" "", "$MTR$a");'), ["a"])

    def test_AdjacentLiteralsAreOne(self):
        self.assertEqual(self.keys_of('f("$MTR$one "\n  "two" /* and */ " three" // and\n" four", "$M" "TR$five"\n\n\n"!");'),
                         ["one two three four", "five!"])
        self.assertEqual(self.keys_of('f("$MTR$a", "b"); g("$MTR$c") "d"; h(x ? "$MTR$e" : "$MTR$f");'), ["a", "c", "e", "f"])
        self.assertEqual(self.keys_of('f("$MTR$a" u8"b" R"(c)" "d");'), ["abcd"])

    def test_EscapesAreResolved(self):
        self.assertEqual(self.keys_of(r'f("$MTR$\"a\" \'b\' \\%\t\n\101\x42 \u0043?\?");'), ['"a" \'b\' \\%\t\nAB C??'])
        self.assertEqual(self.keys_of(r'f("$MTR$\1011");'), ["A1"])
        self.assertEqual(self.keys_of('f("\\x24MTR$a");'), ["a"])
        self.assertEqual(self.keys_of('f("$MTR$a\\0b");'), ["a"])

    def test_RawStringsAreTakenAsTheyStand(self):
        self.assertEqual(self.keys_of('f(R"($MTR$a\\n"b" // c)");'), ['a\\n"b" // c'])
        self.assertEqual(self.keys_of('f(R"x($MTR$a)" )y" b)x", "$MTR$c");'), ['a)" )y" b', "c"])
        self.assertEqual(self.keys_of('f(R"($MTR$a\nb\\\nc)");'), ["a\nb\\\nc"])
        self.assertEqual(self.keys_of('f(u8R"($MTR$a)", LR"($MTR$b)", uR"($MTR$c)", UR"($MTR$d)", XR"($MTR$e)");'), ["a"])

    def test_LiteralsOfWideCharactersAreNoKeys(self):
        self.assertEqual(self.keys_of('f(L"$MTR$a", u"$MTR$b", U"$MTR$c", u8"$MTR$d");'), ["d"])

    def test_CommentsAreLeftOut(self):
        self.assertEqual(self.keys_of('// "$MTR$a"\n/* "$MTR$b"\n"$MTR$c" */ f("$MTR$d"); // " \n/* " */ f("$MTR$e /* // f");'),
                         ["d", "e /* // f"])
        self.assertEqual(self.keys_of('// a \\\n "$MTR$a"\nf("$MTR$b");'), ["b"])
        self.assertEqual(self.keys_of('/\\\n/ "$MTR$a"\nf("$MTR$b"); /* open "$MTR$c"'), ["b"])

    def test_SplicedLinesAreOne(self):
        self.assertEqual(self.keys_of('f("$MTR$one \\\ntwo \\\r\nthree");'), ["one two three"])

    def test_CharactersAndNumbersDoNotConfuse(self):
        self.assertEqual(self.keys_of("f('\"', '\\'', u8'\"', L'\"', 1'000, 0xA'B, 1e+5, .5'0, '\\\\'); g(\"$MTR$a\");"), ["a"])

    def test_DirectivesDoNotConfuse(self):
        source = ('#include "$MTR$a"\n#include <it\'s>\n#error don\'t "\n#  pragma it\'s\n#define X(y) y "$MTR$b"\n"$MTR$c";\n'
                  '#if A\nf("$MTR$d");\n#else\nf("$MTR$e");\n#endif\n#define Y "$MTR$f" \\\n "g"\n')
        self.assertEqual(self.keys_of(source), ["b", "c", "d", "e", "fg"])

    def test_WhatIsNeverCompiledIsLeftOut(self):
        source = ('#if 0\nf("$MTR$a"); it\'s "\n#if X\nf("$MTR$b");\n#else\nf("$MTR$c");\n#endif\nf("$MTR$d");\n#else\n'
                  'f("$MTR$e");\n#endif\n# if 0 // why\nf("$MTR$f");\n#elif Y\nf("$MTR$g");\n#endif\nf("$MTR$h");\n'
                  '#if 0 || Z\nf("$MTR$i");\n#endif\n')
        self.assertEqual(self.keys_of(source), ["e", "g", "h", "i"])

    def test_StringsWithoutAnEndStopAtTheLine(self):
        self.assertEqual(self.keys_of('f("$MTR$a\nf("$MTR$b");\nf(R"x($MTR$c)");'), ["b"])

    def test_SaysWhatCanNotBeTranslated(self):
        self.assertEqual(self.keys_of('\nf("$MTR$a" MACRO "b");', 'mortise tr: keys.cpp:2: a macro may go on with the text: "a"\n'), ["a"])
        self.assertEqual(self.keys_of('f("$MTR$a" and x, "$MTR$b"_s, "$MTR$c");'), ["a", "b", "c"])
        self.assertEqual(self.keys_of('f("$MTR$\u00e4");', 'mortise tr: keys.cpp:1: a key has no characters beyond ASCII: "\u00e4"\n'), [])
        self.assertEqual(self.keys_of('f("$MTR$\\u00e4");', 'mortise tr: keys.cpp:1: a key has no characters beyond ASCII: "\u00e4"\n'), [])
        self.assertEqual(self.keys_of('f("$MTR$a\\\\");', 'mortise tr: keys.cpp:1: a key can\'t end in a backslash: "a\\"\n'), [])
        self.write("keys.cpp", 'f("$MTR$a\\\\");')
        self.tr("--check", "keys.cpp", code=1, errors='mortise tr: keys.cpp:1: a key can\'t end in a backslash: "a\\"\n')

    def test_WalksFoldersInAnOrderOfItsOwn(self):
        for name in ("b.cpp", "a.h", "sub/c.cc", "sub/d.hpp", "e.txt", ".git/f.cpp", "sub/.g.cpp", "out/h.cpp", "i.c++"):
            self.write("tree/" + name, f'f("$MTR$in {name}");')
        os.symlink(".", os.path.join(self.folder, "tree", "loop"))
        found = missing(self.tr("tree", "--exclude", "tree/out"))
        self.assertEqual(found, ["in a.h", "in b.cpp", "in i.c++", "in sub/c.cc", "in sub/d.hpp"])
        self.assertEqual(missing(self.tr("tree/sub", "tree/e.txt", "tree/sub/c.cc")), ["in sub/c.cc", "in sub/d.hpp", "in e.txt"])

    def test_PathsOfSourcesAreRelative(self):
        self.write("a/b/c.cpp", 'f("$MTR$x");')
        whole = os.path.join(self.folder, "a", "b", "c.cpp")
        self.assertIn("//: a/b/c.cpp\n", self.tr(whole))
        self.assertIn("//: b/c.cpp\n", self.tr("a/../a/b", "--base", "a"))
        self.assertIn("//: ../a/b/c.cpp\n", self.tr(whole, "--base", os.path.join(self.folder, "d")))

    # What becomes of translation files.

    def test_ANewFileAsksForAllTranslations(self):
        text = self.update('f("$MTR$One \\"x\\"!");\n\nf("$MTR$Two");')
        self.assertEqual(text, '//: one.cpp\n//? "One \\"x\\"!" =\n//?   "";\n\n//? "Two" =\n//?   "";\n')

    def test_TranslationsAreKept(self):
        text = self.update('f("$MTR$b", "$MTR$new", "$MTR$a %x%");', '"a %x%" = "\u00e4 \\"%x%\\" \\\\\\\\ !";"b"="B" ; ')
        self.assertEqual(text, '//: one.cpp\n"b" =\n  "B";\n\n//? "new" =\n//?   "";\n\n"a %x%" =\n  "\u00e4 \\"%x%\\" \\\\\\\\ !";\n')
        self.assertEqual(self.update('f("$MTR$b", "$MTR$new", "$MTR$a %x%");'), text)

    def test_AFilledInCommentBecomesAnEntry(self):
        text = self.update('f("$MTR$a", "$MTR$b");', '//? "a" =\n//?   "A";\n\n//? "b" =\n//?   "";\n')
        self.assertEqual(text, '//: one.cpp\n"a" =\n  "A";\n\n//? "b" =\n//?   "";\n')

    def test_AnEmptyTranslationIsNone(self):
        self.assertEqual(self.update('f("$MTR$a");', '"a" = "";'), '//: one.cpp\n//? "a" =\n//?   "";\n')

    def test_ObsoleteTranslationsWaitInComments(self):
        former = '// note\n"gone\nby" = "weg\n\nja";\n"stays" = "bleibt";'
        text = self.update('f("$MTR$stays");', former)
        kept = '\n//~ // note\n//~ "gone\n//~ by" =\n//~   "weg\n//~ \n//~ ja";\n'
        self.assertEqual(text, '//: one.cpp\n"stays" =\n  "bleibt";\n' + kept)
        self.assertEqual(self.update('f("$MTR$stays");'), text)
        back = self.update('f("$MTR$stays", "$MTR$gone\\nby");')
        self.assertEqual(back, '//: one.cpp\n"stays" =\n  "bleibt";\n\n// note\n"gone\nby" =\n  "weg\n\nja";\n')
        self.assertEqual(self.update('f("$MTR$stays");', text, "--drop"), '//: one.cpp\n"stays" =\n  "bleibt";\n')

    def test_CommentsStayWithTheirEntry(self):
        former = ('// of the file\n// as a whole\n\n//: old.cpp\n// first\n// second\n"b" = "B"; // behind\n"a" // in\n = // side\n"A";\n'
                  '// for c\n//? "c" =\n//?   "";\n// last\n')
        text = self.update('f("$MTR$a", "$MTR$b", "$MTR$c");', former)
        self.assertEqual(text, '// of the file\n// as a whole\n\n//: one.cpp\n// in\n// side\n"a" =\n  "A";\n\n'
                               '// first\n// second\n// behind\n"b" =\n  "B";\n\n// for c\n//? "c" =\n//?   "";\n\n// last\n')
        self.assertEqual(self.update('f("$MTR$a", "$MTR$b", "$MTR$c");'), text)

    def test_EntriesAreGroupedByTheirSources(self):
        self.write("a.cpp", 'f("$MTR$1", "$MTR$2");')
        self.write("b.cpp", 'f("$MTR$2", "$MTR$3", "$MTR$3", "$MTR$4");')
        text = self.tr("a.cpp", "b.cpp")
        self.assertEqual(re.findall(r'^//: .*|^//\? .*=$', text, re.M),
                         ["//: a.cpp", '//? "1" =', "//: a.cpp", "//: b.cpp", '//? "2" =', "//: b.cpp", '//? "3" =', '//? "4" ='])

    def test_TheFirstOfTwoTranslationsCounts(self):
        text = self.update('f("$MTR$a");', '"a" = "A";\n"a" = "A";\n"a" = "B";',
                           errors='mortise tr: de.tr:3: translated before, which counts: "a"\n')
        self.assertEqual(text, '//: one.cpp\n"a" =\n  "A";\n\n//~ "a" =\n//~   "B";\n')
        self.assertEqual(self.update('f("$MTR$a");'), text)

    def test_StatementsOfALocaleStay(self):
        former = '// L\n\n"a" = fromFile("long.txt");Flag="de.png";\n// n\nName = "Deutsch"; include "more.tr";'
        self.write("more.tr", '"b %y%" = "B %y%"; "c" = "C"; include "deep/most.tr";')
        self.write("deep/most.tr", '"d" = "D"; include "empty.tr"')
        self.write("deep/empty.tr", "")
        self.write("long.txt", 'long "text" of %x%\n')
        source = 'f("$MTR$a", "$MTR$b %y%", "$MTR$d", "$MTR$e");'
        errors = 'mortise tr: de.tr: "a": its translation adds %x%\n'
        text = self.update(source, former, errors=errors)
        self.assertEqual(text, '// L\n\nFlag = "de.png";\n// n\nName = "Deutsch";\ninclude "more.tr";\n\n//: one.cpp\n"a" =\n'
                               '  fromFile("long.txt");\n\n//? "e" =\n//?   "";\n')
        self.assertEqual(self.update(source, errors=errors), text)
        self.assertIn("de.tr (Deutsch): 2 of 4 translated (50 %), 1 missing, 1 wrong, 0 obsolete\n",
                      self.tr("-f", "de.tr", "one.cpp", errors=errors))
        os.remove(os.path.join(self.folder, "long.txt"))
        self.tr("-f", "de.tr", "one.cpp", errors='mortise tr: de.tr: "a": can\'t read the file with its translation, "long.txt"\n')

    def test_ANameMakesALocale(self):
        self.write("one.cpp", 'f("$MTR$a");')
        self.tr("one.cpp", "-f", "fr.locale", "--name", 'le "fran\u00e7ais"')
        self.assertTrue(self.read("fr.locale").startswith('Name = "le \\"fran\u00e7ais\\"";\n\n//: one.cpp\n'))
        self.tr("one.cpp", "-f", "fr.locale", "--name", "Gaulois")
        self.assertTrue(self.read("fr.locale").startswith('Name = "Gaulois";\n\n//: one.cpp\n'))
        self.tr("one.cpp", "-f", "fr.locale", "--plain", errors="mortise tr: fr.locale: has more than a plain translation file may have\n")
        for arguments in [("--plain", "-f", "a"), ("-f", "a", "-f", "b"), ()]:
            done = self.run_tr("one.cpp", "--name", "N", *arguments)
            self.assertEqual((done.returncode, done.stderr), (2, "mortise tr: --name goes with one file, and not with --plain\n"))

    def test_LongLineEndsStay(self):
        text = self.update('f("$MTR$a", "$MTR$b\\nc");', '// h\r\n\r\n"a" = "A";\r\n"x" = "X";\r\n')
        self.assertEqual(text, '// h\r\n\r\n//: one.cpp\r\n"a" =\r\n  "A";\r\n\r\n//? "b\n//? c" =\r\n//?   "";\r\n\r\n//~ "x" =\r\n//~   "X";\r\n')
        self.assertEqual(self.update('f("$MTR$a", "$MTR$b\\nc");'), text)

    def test_KeysWithAnyCharacterComeBack(self):
        keys = ["a\\%b", 'q"', "\\\"", "c\rd", "e\r\nf", "\n", " g ", "//", "h;", "=", "Name", "\t\x01\x7f", "\\\\x", "?"]
        source = "".join('f("$MTR$' + "".join(f"\\{ord(c):03o}" for c in key) + '");\n' for key in keys)
        self.assertEqual(self.keys_of(source), keys)
        first = self.update(source)
        filled = re.sub(r"(^|(?<=\r))//\? ", "", first, flags=re.M).replace('"";', '"X";')
        self.assertEqual(self.update(source, filled), filled)
        self.assertEqual([plain(key) for key, _ in ENTRY.findall(filled)], keys)
        gone = self.update("", filled)
        self.assertEqual(self.update(source, gone), filled)

    def test_WordsWithoutMeaningAreReported(self):
        errors = "".join(f'mortise tr: de.tr:{line}: this has no meaning: "{word}"\n' for line, word in [(1, "stray"), (1, "="), (2, ")")])
        text = self.update('f("$MTR$a");', 'stray = "a" = "A";\n)', errors=errors)
        self.assertEqual(text, 'stray;\n=;\n);\n\n//: one.cpp\n"a" =\n  "A";\n')

    def test_CommentsThatOnlyLookMarkedStay(self):
        errors = ('mortise tr: de.tr:1: a comment that looks like entries but has none: the string that begins here has no end\n'
                  'mortise tr: de.tr:3: a comment that looks like entries but has none: only entries may stand here\n')
        text = self.update('f("$MTR$a");', '//? why "this\n"a" = "A";\n//~ Name = "x"\n', errors=errors)
        self.assertEqual(text, '//: one.cpp\n// ? why "this\n"a" =\n  "A";\n\n// ~ Name = "x"\n')
        self.assertEqual(self.update('f("$MTR$a");'), text)
        odd = '"a" = // ? in\n//? here\n"A"; //? "c\n\n//? "b" =\n//?   "";\n'
        text = self.update('f("$MTR$a", "$MTR$b");', odd, errors="mortise tr: de.tr:3: a comment that looks like entries but has none: "
                           "the string that begins here has no end\n")
        self.assertEqual(text, '//: one.cpp\n// ? in\n// ? here\n"a" =\n  "A";\n\n// ? "c\n//? "b" =\n//?   "";\n')

    def test_DamagedFilesStayAsTheyAre(self):
        self.write("one.cpp", 'f("$MTR$a");')
        for text, error in [('\n"a" = "A', "2: the string that begins here has no end"), ('"a"\n"A"', '2: "=" expected'),
                            ('"a" = A', '1: """ expected'), ('"a" = fromFile "x"', '1: "(" expected'), ('Name "x"', '1: "=" expected'),
                            ('"a" = fromFile("x"', '1: ")" expected'), ('"a" = fromFile("")', "1: a filename expected"), ('\r\n\r"a" = b', '3: """ expected'),
                            (b'"a" = "\xff"', "1: not UTF-8"), (b'\n"a\0" = "b"', "2: a text has no NUL bytes"), (b'"a" = "A"; // \xc3', "1: not UTF-8"), ('include "a', "1: the string that begins here has no end")]:
            path = self.write("de.tr", text)
            before = os.stat(path)
            for arguments in [("-f", "de.tr"), ("-c", "-f", "de.tr")]:
                self.assertEqual(self.tr(*arguments, "one.cpp", code=1, errors=f"mortise tr: de.tr:{error}\n"), "")
            after = os.stat(path)
            self.assertEqual((after.st_ino, after.st_mtime_ns), (before.st_ino, before.st_mtime_ns))
        self.write("in.tr", 'include "de.tr"')
        self.write("de.tr", 'include "in.tr"')
        self.tr("-f", "de.tr", "one.cpp", code=1, errors="mortise tr: in.tr: includes go too deep\n")
        self.write("de.tr", 'include "none.tr"')
        self.tr("-f", "de.tr", "one.cpp", code=2, errors="mortise tr: none.tr: No such file or directory\n")

    def test_AFileIsWrittenInOneStepAndOnlyIfItChanges(self):
        self.update('f("$MTR$a");', '"a" = "A";')
        path = os.path.join(self.folder, "de.tr")
        os.utime(path, (1, 1))
        os.chmod(path, 0o640)
        self.update('f("$MTR$a");')
        self.assertEqual(os.stat(path).st_mtime, 1)
        link = os.path.join(self.folder, "link.tr")
        os.symlink("de.tr", link)
        inode = os.stat(path).st_ino
        self.write("keys.cpp", 'f("$MTR$b");')
        self.tr("-f", "link.tr", "one.cpp", "keys.cpp")
        self.assertTrue(os.path.islink(link))
        self.assertNotEqual(os.stat(path).st_ino, inode)
        self.assertEqual(os.stat(path).st_mode & 0o777, 0o640)
        self.assertIn('//? "b"', self.read("de.tr"))
        self.assertEqual(sorted(os.listdir(self.folder)), ["de.tr", "keys.cpp", "link.tr", "one.cpp"])

    # What is said about them.

    def test_SaysHowMuchOfEachLanguageIsDone(self):
        self.write("one.cpp", 'f("$MTR$a", "$MTR$b");\nf("$MTR$c\\n");')
        self.write("de.locale", 'Name = "Deutsch"; "a" = "A"; "x" = "X";')
        self.write("fr.tr", '"a" = "1"; "b" = "2"; "c\n" = "3";')
        expected = ('de.locale: no translation of "b" (one.cpp:1)\nde.locale: no translation of "c\\n" (one.cpp:2)\n'
                    "de.locale (Deutsch): 1 of 3 translated (33 %), 2 missing, 0 wrong, 1 obsolete\n"
                    "fr.tr: 3 of 3 translated (100 %), 0 missing, 0 wrong, 0 obsolete\n")
        before = self.read("de.locale")
        self.assertEqual(self.tr("--check", "-f", "de.locale", "-f", "fr.tr", "one.cpp", code=1), expected)
        self.assertEqual(self.read("de.locale"), before)
        self.assertEqual(self.tr("-f", "de.locale", "-f", "fr.tr", "one.cpp"), expected)
        self.tr("--check", "-f", "fr.tr", "one.cpp")
        self.assertEqual(self.tr("-f", "new.tr", "fr.tr"), "new.tr: 0 of 0 translated (100 %), 0 missing, 0 wrong, 0 obsolete\n")

    def test_PlaceholdersHaveToAgree(self):
        cases = [("%a% b %c%", "%c% B %a%", ""), ("%a b", "B %a%", ""), ("100\\% of %x%", "%x% zu 100\\%", ""),
                 ("%a%", "x", "lacks %a%"), ("x", "%a%", "adds %a%"), ("%a% %b%", "%a% %B%", "lacks %b%, adds %B%"),
                 ("x", "100 % von", "adds %%"), ("%a%", "%a% %a%", ""), ("end %a", "Ende %a%", ""), ("%a\\% b%", "%a\\x b%", "")]
        source = "".join('f("$MTR$' + key.replace("\\", "\\\\") + '");\n' for key, _, _ in cases)
        self.write("one.cpp", source)
        for key, translation, difference in cases:
            self.write("de.tr", '"{}" = "{}";'.format(*(text.replace("\\", "\\\\") for text in (key, translation))))
            shown = f'mortise tr: de.tr: "{key}": its translation {difference}\n' if difference else ""
            done = self.run_tr("-c", "-f", "de.tr", "one.cpp")
            self.assertEqual((done.returncode, done.stderr), (1, shown), key)
            self.assertIn("0 of 8" if difference else "1 of 8", done.stdout)
        self.write("two.cpp", 'f("$MTR$%a%");')
        self.write("de.tr", '"%a%" = "A";')
        self.tr("-c", "-f", "de.tr", "two.cpp", code=1, errors='mortise tr: de.tr: "%a%": its translation lacks %a%\n')
        self.tr("-f", "de.tr", "two.cpp", errors='mortise tr: de.tr: "%a%": its translation lacks %a%\n')
        self.assertIn('"%a%" =\n  "A";', self.read("de.tr"))

    def test_ThePseudoLanguageIsCompleteAndKeepsPlaceholders(self):
        self.write("one.cpp", 'f("$MTR$Say \\"%text%\\" to %n all", "$MTR$100\\\\% of %x", "$MTR$z");')
        self.assertEqual(self.tr("one.cpp", "--pseudo", "x.locale"), "")
        text = self.read("x.locale")
        self.assertIn('\nName = "Pseudo";\n', text)
        entries = dict((plain(key), plain(value[1:-1])) for key, value in ENTRY.findall(text))
        self.assertEqual(entries, {'Say "%text%" to %n all': '[S\u00e1\u00fd "%text%" \u0163\u00f6 %n \u00e1ll ~~~~~~~~]'.replace("[S", "[\u0160"),
                                   "100\\% of %x": "[100\\% \u00f6f %x% ~~~~]", "z": "[\u017e ~]"})
        self.tr("--check", "-f", "x.locale", "one.cpp")
        self.tr("--pseudo", "plain.tr", "--plain", "one.cpp")
        self.tr("--check", "--plain", "-f", "plain.tr", "one.cpp")
        self.tr("--pseudo", "named.tr", "--name", "P", "one.cpp")
        self.assertIn('\nName = "P";\n', self.read("named.tr"))

    # The rest.

    def test_TheCheckAsksTheLoaderOfTheLibrary(self):
        self.write("one.cpp", 'f("$MTR$a");')
        self.write("de.tr", 'Name = "Deutsch"; "a" = "A";')
        self.tr("--check", "-f", "de.tr", "one.cpp")
        done = self.run_tr("--check", "--plain", "-f", "de.tr", "one.cpp")
        self.assertEqual(done.returncode, 1)
        self.assertIn("mortise tr: de.tr: the loader refuses it: ", done.stderr)

    def test_UnusableFilesEndWithTwo(self):
        for arguments in [(), ("-f", "de.tr"), ("none.cpp", "--wrong")]:
            done = self.run_tr(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, ""), arguments)
            self.assertNotEqual(done.stderr, "")
        self.write("one.cpp", "")
        self.tr("none.cpp", code=2, errors="mortise tr: none.cpp: No such file or directory\n")
        self.tr("one.cpp", "-f", "none/de.tr", code=2, errors="mortise tr: none/de.tr: No such file or directory\n")
        self.tr("one.cpp", "--pseudo", "none/x", code=2, errors="mortise tr: none/x: No such file or directory\n")
        self.tr("one.cpp", "-f", ".", code=2, errors="mortise tr: .: Is a directory\n")
        self.write("one.cpp", 'f("$MTR$a");')
        with open("/dev/full", "wb") as full:
            done = subprocess.run(PROGRAM + ["tr", "one.cpp"], cwd=self.folder, stdout=full, stderr=subprocess.PIPE, timeout=LIMIT, check=False)
        self.assertEqual((done.returncode, done.stderr), (2, b"mortise tr: standard output: No space left on device\n"))

    def test_PipesAndDevicesStayWhatTheyAre(self):
        self.write("one.cpp", 'f("$MTR$a");')
        os.mkfifo(os.path.join(self.folder, "pipe"))
        reader = subprocess.Popen(["cat", "pipe"], cwd=self.folder, stdout=subprocess.PIPE)
        self.tr("one.cpp", "--pseudo", "pipe")
        self.assertIn(b'"a" =\n  "[', reader.communicate(timeout=LIMIT)[0])
        self.assertEqual(sorted(os.listdir(self.folder)), ["one.cpp", "pipe"])
        self.assertTrue(stat.S_ISFIFO(os.stat(os.path.join(self.folder, "pipe")).st_mode))
        self.assertIn('"a" =\n  "[', self.tr("one.cpp", "--pseudo", "/dev/stdout"))
        self.tr("one.cpp", "--pseudo", "/dev/full", code=2, errors="mortise tr: /dev/full: No space left on device\n")

    def test_WhatNeverEndsIsRefused(self):
        self.write("one.cpp", 'f("$MTR$a");')
        self.tr("/dev/zero", code=2, errors="mortise tr: /dev/zero: File too large\n")
        self.tr("one.cpp", "-f", "/dev/zero", code=2, errors="mortise tr: /dev/zero: File too large\n")

    def test_AnEmptyTranslationOfAnIncludedFileIsWrong(self):
        self.write("one.cpp", 'f("$MTR$a"); f("$MTR$b");')
        self.write("more.tr", '"a" = "";\n"b" = "1";\n')
        self.write("de.locale", 'include "more.tr";\n')
        errors = 'mortise tr: more.tr:1: translated by nothing, which counts: "a"\n'
        self.tr("--check", "-f", "de.locale", "one.cpp", code=1, errors=errors)

    def test_OwnSourcesAndFilesGoTogether(self):
        done = self.run_tr(os.path.join(ROOT, "src"), "--base", ROOT)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        keys = missing(done.stdout)
        self.assertGreater(len(keys), 100)
        # A search without any knowledge of the language finds the beginnings of the same keys.
        begins = set()
        for directory, _, names in os.walk(os.path.join(ROOT, "src")):
            for name in names:
                with open(os.path.join(directory, name), encoding="utf-8") as file:
                    code = re.sub(r"^\s*//.*$", "", file.read(), flags=re.M)
                begins |= {plain(text) for text in re.findall(r'"\$MTR\$((?:\\.|[^"\\])+)"', code)}
        self.assertEqual({text for text in begins if not any(key.startswith(text) for key in keys)}, set())
        self.assertEqual({key for key in keys if not any(key.startswith(text) for text in begins)}, set())

    def test_TheManPageTellsEveryOption(self):
        page = os.path.join(ROOT, "share", "man", "mortise.1")
        done = subprocess.run(["groff", "-man", "-ww", "-z", page], capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        with open(page, encoding="ascii") as file:
            source = file.read().replace("\\-", "-")
        words = set(re.findall(r"--[a-z]+", self.tr("--help"))) | {"mortise tr"}
        self.assertGreater(len(words), 8)
        for name in words:
            self.assertIn(name, source)

    def test_TheShellCompletesOptionsAndFiles(self):
        script = os.path.join(ROOT, "share", "bash-completion", "completions", "mortise")
        path = self.write("one.cpp", "")

        def complete(*words):
            quoted = " ".join(f"'{one}'" for one in ("mortise",) + words)
            code = f"source '{script}'; COMP_WORDS=({quoted}); COMP_CWORD={len(words)}; _mortise; printf '%s\\n' \"${{COMPREPLY[@]}}\""
            done = subprocess.run([shutil.which("bash"), "-c", code], capture_output=True, text=True, check=True)
            return done.stdout.split()

        self.assertEqual(complete("t"), ["tr"])
        self.assertEqual(complete("tr", "--p"), ["--pseudo", "--plain"])
        self.assertEqual(set(complete("tr", "--")), set(re.findall(r"--[a-z]+", self.tr("--help").split("Options:")[1])))
        self.assertEqual(complete("tr", "--file", path[:-2]), [path])
        self.assertEqual(complete("tr", "--name", ""), [])


if __name__ == "__main__":
    result = unittest.TextTestRunner(verbosity=2).run(unittest.TestSuite([Tr("test_" + sys.argv[1])]))
    sys.exit(0 if result.wasSuccessful() and result.testsRun == 1 else 1)
