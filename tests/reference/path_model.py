#!/usr/bin/env python3
"""Model of the path dialect, written from the description of the operations; shares nothing with the library.

    path_model.py > paths.golden             a line for each block of paths: set, number of the block, CRC-32 of its lines
    path_model.py --lines SET BLOCK          the lines of one block, to be compared with what the test writes if
                                             MORTISE_PATH_LINES names a file
    path_model.py --path TEXT OTHER          the line of one path beside another

The set "tokens" holds every path of up to six of the tokens / \\ . .. a b C: in the order of counting, shorter ones
first; "random" holds longer ones of more tokens.
"""

import itertools
import sys
import zlib

BLOCK = 1024
WORKING_DIRECTORY = "/usr/lib"  # of the test; it stands everywhere and is no link
TOKENS = ["/", "\\", ".", "..", "a", "b", "C:"]
MORE_TOKENS = TOKENS + ["../", "./", "//", "a.", "..b", "...", "/../", "name", ".ext", "d:", "/", "\u00e9", "long.name.of.a.file"]
RANDOM_COUNT = 100000
SEPARATORS = "/\\"


# --- the operations on plain strings

def tokenize(text, keys):
    """The tokens of a text with their ids, 0 for plain words: the key that begins first ends a word; of two that begin
    at one place the one named first counts."""
    at = 0
    while at < len(text):
        best = None
        for key, number in keys:
            found = text.find(key, at)
            if found >= 0 and (best is None or found < best[0]):
                best = (found, key, number)
        if best is None:
            yield text[at:], 0
            return
        if best[0] == at:
            yield best[1], best[2]
            at += len(best[1])
        else:
            yield text[at:best[0]], 0
            at = best[0]


def drive_letter(text):
    if len(text) >= 2 and text[1] == ":" and ("A" <= text[0] <= "Z" or "a" <= text[0] <= "z"):
        return text[0].upper()
    return ""


def is_relative(text):
    if text == "":
        return True
    if text[0] == "/":
        return False
    return drive_letter(text) == ""


def path_component_length(text):
    length = 0
    for index, character in enumerate(text):
        if character in SEPARATORS or (index == 1 and drive_letter(text)):
            length = index + 1
    if text[length:] in (".", ".."):
        return len(text)
    return length


def store_path_component(text):
    component = text[:path_component_length(text)]
    if component and component[-1] not in SEPARATORS:
        component += "/"
    return component


def fixup(text):
    """The normal form, and whether the path climbs above its own start."""
    escaped = False
    relative = is_relative(text)
    first = True
    result = ""
    for token, number in tokenize(text, [("../", 2), ("./", 3), ("/", 4)]):
        if number == 2:
            found = -1
            if len(result) >= 2:
                for index in range(len(result) - 2, -1, -1):
                    if result[index] in SEPARATORS:
                        found = index
                        break
            if found >= 0 and escaped and result[found + 1:] == "../":
                result += token
                continue
            if found >= 0:
                result = result[:found + 1]
                continue
            if not relative:
                break
            if result == "./":
                result = token
                continue
            if result not in ("", "../"):
                result = ""
                continue
            escaped = True
        if number == 3 and not first:
            continue
        first = False
        if number == 4 and result.endswith("/"):
            continue
        result += token
    return result or "./", escaped


def set_path(text, do_fixup):
    """Text and drive letter."""
    text = text or "."
    text = text.replace("\\", "/")
    if not text.endswith("/"):
        text += "/"
    letter = drive_letter(text)
    if letter:
        text = text[2:]
    if do_fixup:
        text, escaped = fixup(text)
        if escaped:
            letter = ""
    return text, letter


# --- paths

class Path:
    def __init__(self, text, do_fixup):
        self.text, self.letter = set_path(text, do_fixup)

    def copy(self):
        other = Path("", False)
        other.text, other.letter = self.text, self.letter
        return other

    def fixup(self):
        self.text, escaped = fixup(self.text)
        if escaped:
            self.letter = ""
        return self

    def is_relative(self):
        return self.letter == "" and is_relative(self.text)

    def path(self):
        return self.letter + ":" + self.text if self.letter else self.text

    def parts(self, index):
        pieces = self.path().split("/")
        return "/".join(pieces[:index + 1]) + "/" if index + 1 < len(pieces) else ""

    def part(self, index):
        pieces = [piece for piece in self.path().split("/") if piece]
        return pieces[index] if index < len(pieces) else ""

    def cd(self, argument):
        if argument == "":
            return self
        if is_relative(argument):
            self.text += argument
            if argument[-1] not in SEPARATORS:
                self.text += "/"
        else:
            self.text, self.letter = set_path(argument, True)
        return self

    def make_absolute(self, base):
        if self.is_relative():
            self.text = base.text + self.text
            self.letter = base.letter
            self.fixup()
        return self

    def make_relative(self, base):
        if self.is_relative() or base.is_relative():
            return self
        own = [piece for piece in self.text.replace("\\", "/").split("/") if piece]
        other = [piece for piece in base.text.replace("\\", "/").split("/") if piece]
        while own and other and own[0] == other[0]:
            del own[0], other[0]
        self.text = "".join("../" for piece in other if piece != ".") + "".join(piece + "/" for piece in own) or "./"
        return self

    def relative_to(self, file, working_directory):
        directory = store_path_component(file)
        if not is_relative(directory):
            return file
        place = self.copy().cd(directory).fixup()
        if place.is_relative():
            place.make_absolute(working_directory)
        return place.path() + file[path_component_length(file):]

    def __eq__(self, other):
        return self.letter == other.letter and fixup(self.text)[0] == fixup(other.text)[0]


# --- names

def name_start(path):
    return path_component_length(path)


def extension_start(path):
    found = path.find(".", name_start(path))
    return len(path) if found < 0 else found


def joined(directory, name):
    if directory and directory[-1] not in SEPARATORS:
        directory += "/"
    return directory + name


def set_file_name(path, name, keep_path):
    return joined(path if keep_path else path[:name_start(path)], name)


def set_file_path(path, directory):
    return joined(directory, path[name_start(path):])


def set_extension(path, extension):
    return path[:extension_start(path)] + extension


def set_suffix(path, suffix):
    end = extension_start(path)
    return path if path[:end].endswith(suffix) else path[:end] + suffix + path[end:]


def set_prefix(path, prefix):
    start = name_start(path)
    return path if path[start:].startswith(prefix) else path[:start] + prefix + path[start:]


# --- what is compared

def line(path, other):
    """All operations on one path, with another path as the second operand."""
    def flag(value):
        return "1" if value else "0"

    def whole(a_path):
        return a_path.letter + "|" + a_path.text

    fields = [path, other]
    text, escaped = fixup(path)
    fields += [text, flag(escaped), drive_letter(path), flag(is_relative(path)), str(path_component_length(path)),
               store_path_component(path)]
    raw, normal = Path(path, False), Path(path, True)
    for each in (raw, normal):
        fields += [whole(each), flag(each.is_relative()), each.path()]
        fields += [each.parts(index) for index in range(4)]
        fields += [each.part(index) for index in range(4)]
    raw_other, normal_other = Path(other, False), Path(other, True)
    for each in (raw, normal):
        fields += [whole(each.copy().cd(other)), whole(each.copy().cd(other).fixup()),
                   whole(each.copy().cd(raw_other.path())), whole(each.copy().make_absolute(raw_other)),
                   whole(each.copy().make_relative(raw_other)), whole(each.copy().make_relative(normal_other)),
                   whole(each.copy().cd("..").make_relative(Path("/a/./b", False).cd("a\\b"))),
                   flag(each == raw_other), flag(each == normal_other)]
    fields.append(flag(raw == normal))
    base = Path("/base/of", True).cd(other)
    fields.append(base.relative_to(path, Path(WORKING_DIRECTORY, True)))
    fields.append(raw.relative_to(other, Path(WORKING_DIRECTORY, True)))
    start, dot = name_start(path), extension_start(path)
    fields += [path[dot:], path[start:dot], path[start:], whole(Path(store_path_component(path), True)),
               set_file_name(path, "n.x", False), set_file_name(path, other, True), set_file_path(path, other),
               set_extension(path, ".z"), set_suffix(path, "_v"), set_suffix(path, other),
               set_suffix(set_suffix(path, "_v"), "_v"), set_prefix(path, "p"), set_prefix(path, other),
               set_prefix(path, "a")]
    return "\t".join(fields) + "\n"


def token_paths():
    for count in range(7):
        for tokens in itertools.product(TOKENS, repeat=count):
            yield "".join(tokens)


class Random:
    """A plain generator that the test has, too."""

    def __init__(self, seed):
        self.state = seed

    def below(self, limit):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) & 0xFFFFFFFFFFFFFFFF
        return (self.state >> 33) % limit


def random_paths():
    random = Random(2026)
    for _ in range(RANDOM_COUNT):
        yield "".join(MORE_TOKENS[random.below(len(MORE_TOKENS))] for _ in range(7 + random.below(12)))


def lines(paths):
    paths = list(paths)
    for index, path in enumerate(paths):
        yield line(path, paths[(index * 7919 + 13) % len(paths)])


def blocks(name):
    everything = lines(token_paths() if name == "tokens" else random_paths())
    while True:
        block = "".join(itertools.islice(everything, BLOCK))
        if not block:
            return
        yield block


def main(arguments):
    if arguments[:1] == ["--lines"]:
        sys.stdout.write(next(itertools.islice(blocks(arguments[1]), int(arguments[2]), None)))
    elif arguments[:1] == ["--path"]:
        sys.stdout.write(line(arguments[1], arguments[2]))
    else:
        for name in ("tokens", "random"):
            for number, block in enumerate(blocks(name)):
                print(name, number, "%08x" % zlib.crc32(block.encode("utf-8")))


if __name__ == "__main__":
    main(sys.argv[1:])
