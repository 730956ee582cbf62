#!/usr/bin/env python3
"""Model of the binary stream format: an encoder and a decoder written from the description of the format (docs/formats.md),
which share nothing with the library.

    stream_model.py > streams.golden
    stream_model.py --check streams.golden
    stream_model.py --decode FILE            lists the values of a stream

A stream is listed one item a line: a type name and a value. Texts and blocks are written in base 16 of their bytes ("-" if
empty), strings of code points as numbers in base 16 with commas between them, doubles as the 16 digits of their image.

    context TEXT | context (unnamed)    ... end     label TEXT
    rawBytes HEX     cAsciiString HEX     cString32 POINTS     cString8 POINTS
    piUChar N  piChar N  piUInt16 N  piInt16 N  piUInt32 N  piInt32 N  piUInt64 N  piInt64 N
    piBool 0|1       piDouble IMAGE

streams.golden holds named cases: "case NAME", the listing, and "bytes HEX".
"""

import random
import struct
import sys

NUMBERS = {  # name: (id, struct format)
    "piUChar": (2, "<B"), "piChar": (3, "<b"), "piUInt32": (4, "<I"), "piInt32": (5, "<i"), "piUInt64": (6, "<Q"),
    "piInt64": (7, "<q"), "piUInt16": (17, "<H"), "piInt16": (18, "<h"),
}
NUMBER_OF_ID = {number: (name, form) for name, (number, form) in NUMBERS.items()}


def word(value):
    return struct.pack("<I", value)


def counted_text(text):
    return word(10) + word(len(text)) + text


def utf8(points):
    """The encoding has a limit of its own for four bytes, and a longer form from there on."""
    result = bytearray()
    for c in points:
        if c <= 0x7F:
            result.append(c)
            continue
        if c < 0x800:
            more, lead = 1, 0xC0
        elif c < 0x10000:
            more, lead = 2, 0xE0
        elif c <= 200000 - 1:
            more, lead = 3, 0xF0
        else:
            more, lead = 4, 0xF8
        result.append((lead | c >> 6 * more) & 0xFF)
        result.extend(0x80 | c >> 6 * i & 0x3F for i in reversed(range(more)))
    return bytes(result)


def points_of_utf8(data):
    points, pos = [], 0
    while pos < len(data):
        lead = data[pos]
        more = 0 if lead < 0xC0 else 1 if lead < 0xE0 else 2 if lead < 0xF0 else 3
        c = 0
        for byte in data[pos:pos + more]:
            c = (c + byte) << 6
        points.append(c + data[pos + more] - (0, 0x3080, 0xE2080, 0x3C82080)[more])
        pos += more + 1
    return points


def encode(items):
    """Bytes of a list of items: (kind, value); a context is ("context", name or None, [items])."""
    result = b""
    for item in items:
        kind, value = item[0], item[1]
        if kind in NUMBERS:
            number, form = NUMBERS[kind]
            result += word(number) + struct.pack(form, value)
        elif kind == "piBool":
            result += word(8) + word(value)
        elif kind == "piDouble":
            result += word(9) + struct.pack("<Q", value)
        elif kind == "rawBytes":
            result += word(1) + word(len(value)) + value
        elif kind == "cAsciiString":
            result += counted_text(value)
        elif kind == "cString32":
            result += word(11) + word(len(value)) + b"".join(map(word, value))
        elif kind == "cString8":
            text = utf8(value)
            result += word(16) + word(len(text)) + text
        elif kind == "label":
            result += word(13) + counted_text(value)
        elif kind == "context":
            head = word(8) + (word(0) if value is None else word(1) + counted_text(value))
            rest = head + encode(item[2])
            result += word(12) + word(4) + word(8 + len(rest)) + rest  # the length counts itself and its id
        else:
            raise ValueError(kind)
    return result


class Reader:
    def __init__(self, data):
        self.data, self.pos = data, 0

    def take(self, count):
        if self.pos + count > len(self.data):
            raise ValueError(f"cut off at byte {self.pos}")
        self.pos += count
        return self.data[self.pos - count:self.pos]

    def word(self):
        return struct.unpack("<I", self.take(4))[0]

    def expect(self, number):
        found = self.word()
        if found != number:
            raise ValueError(f"id {found} at byte {self.pos - 4} where {number} is expected")

    def text(self):
        self.expect(10)
        return self.take(self.word())

    def items(self, end):
        result = []
        while self.pos < end:
            number = self.word()
            if number in NUMBER_OF_ID:
                name, form = NUMBER_OF_ID[number]
                result.append((name, struct.unpack(form, self.take(struct.calcsize(form)))[0]))
            elif number == 8:
                result.append(("piBool", 1 if self.word() else 0))
            elif number == 9:
                result.append(("piDouble", struct.unpack("<Q", self.take(8))[0]))
            elif number == 1:
                result.append(("rawBytes", self.take(self.word())))
            elif number == 10:
                result.append(("cAsciiString", self.take(self.word())))
            elif number == 11:
                result.append(("cString32", [self.word() for _ in range(self.word())]))
            elif number == 16:
                result.append(("cString8", points_of_utf8(self.take(self.word()))))
            elif number == 13:
                result.append(("label", self.text()))
            elif number == 12:
                start = self.pos
                self.expect(4)
                length = self.word()
                self.expect(8)
                name = self.text() if self.word() else None
                result.append(("context", name, self.items(start + length)))
                self.pos = start + length
            else:
                raise ValueError(f"unknown id {number} at byte {self.pos - 4}")
        return result


def decode(data):
    return Reader(data).items(len(data))


def hexed(data):
    return data.hex() or "-"


def listing(items):
    lines = []
    for item in items:
        kind, value = item[0], item[1]
        if kind == "context":
            lines.append("context (unnamed)" if value is None else f"context {hexed(value)}")
            lines += listing(item[2])
            lines.append("end")
        elif kind in ("label", "rawBytes", "cAsciiString"):
            lines.append(f"{kind} {hexed(value)}")
        elif kind in ("cString32", "cString8"):
            lines.append(f"{kind} {','.join(f'{c:x}' for c in value) or '-'}")
        elif kind == "piDouble":
            lines.append(f"piDouble {value:016x}")
        else:
            lines.append(f"{kind} {value}")
    return lines


def image(value):
    return struct.unpack("<Q", struct.pack("<d", value))[0]


def examples():
    yield "record", [("context", b"rec", [("label", b"val"), ("piInt32", 5)])]
    yield "letter", [("cString32", [0x41]), ("cString8", [0x41])]
    yield "true", [("piBool", 1), ("piBool", 0)]
    yield "one", [("piDouble", image(1.0)), ("piDouble", image(-0.0)), ("piDouble", image(1e300))]
    yield "emptyBlock", [("rawBytes", b"")]
    yield "emptyTexts", [("cAsciiString", b""), ("cString32", []), ("cString8", []), ("label", b"")]
    yield "emptyContexts", [("context", None, []), ("context", b"", []), ("context", b"unknown", [])]
    yield "limits", [(name, limit) for name, (_, form) in NUMBERS.items()
                     for limit in ((0, (1 << 8 * struct.calcsize(form)) - 1) if form[1].isupper() else
                                   (-(1 << 8 * struct.calcsize(form) - 1), (1 << 8 * struct.calcsize(form) - 1) - 1))]
    yield "trailingLabel", [("context", b"c", [("piInt32", 1), ("label", b"a"), ("label", b"b")])]
    yield "utf8", [("cString8", [0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x30D3F]), ("cString32", [0xFFFFFFFF, 0x30D40])]
    deep = [("piUChar", 7)]
    for level in range(100):
        deep = [("context", None if level % 2 else b"level", deep)]
    yield "deep", deep


def random_items(rng, depth):
    items = []
    for _ in range(rng.randrange(0, 7)):
        kind = rng.choice(list(NUMBERS) + ["piBool", "piDouble", "rawBytes", "cAsciiString", "cString32", "cString8", "label",
                                           "context", "context"])
        if kind in NUMBERS:
            form = NUMBERS[kind][1]
            bits = 8 * struct.calcsize(form)
            value = rng.getrandbits(rng.randrange(1, bits + 1))
            items.append((kind, value if form[1].isupper() or value < 1 << bits - 1 else value - (1 << bits)))
        elif kind == "piBool":
            items.append((kind, rng.randrange(2)))
        elif kind == "piDouble":
            items.append((kind, rng.getrandbits(64) & ~(1 << 62)))  # no value that is not a number: its image may change
        elif kind in ("rawBytes", "cAsciiString", "label"):
            items.append((kind, bytes(rng.randrange(256) for _ in range(rng.randrange(0, 20)))))
        elif kind == "cString32":
            items.append((kind, [rng.getrandbits(rng.randrange(1, 33)) for _ in range(rng.randrange(0, 10))]))
        elif kind == "cString8":
            items.append((kind, [rng.randrange(1, 0x30D40) for _ in range(rng.randrange(0, 10))]))
        elif depth > 0:
            items.append((kind, rng.choice([None, b"", b"unknown", b"cPoint"]), random_items(rng, depth - 1)))
    return items


def golden():
    cases = list(examples())
    rng = random.Random(5)
    cases += [(f"random{i}", random_items(rng, 4)) for i in range(300)]
    lines = []
    for name, items in cases:
        data = encode(items)
        if listing(decode(data)) != listing(items):
            sys.exit(f"{name}: the decoder does not read what the encoder wrote")
        lines += [f"case {name}", *listing(items), f"bytes {hexed(data)}"]
    return "\n".join(lines) + "\n"


def main(arguments):
    if not arguments:
        sys.stdout.write(golden())
    elif arguments[0] == "--check" and len(arguments) == 2:
        with open(arguments[1]) as file:
            if file.read() != golden():
                sys.exit(f"{arguments[1]} is not what the model writes")
    elif arguments[0] == "--decode" and len(arguments) == 2:
        with open(arguments[1], "rb") as file:
            print("\n".join(listing(decode(file.read()))))
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])
