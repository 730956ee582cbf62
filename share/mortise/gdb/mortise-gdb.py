"""Printers that let gdb show the library's strings, containers, handles, times and messages as what they mean.

gdb loads this file by itself when it meets libmortise.so with this file beside it (safe paths permitting).
"""

import datetime

import gdb
import gdb.printing

# Longest text that is fetched from the program in one piece.
TEXT_LIMIT = 4096


def fields(value):
    """The value itself, not a reference to it."""
    if value.type.strip_typedefs().code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
        value = value.referenced_value()
    return value


def base(value, name):
    """The part of an object that belongs to its base class `name`."""
    for field in value.type.strip_typedefs().fields():
        if field.is_base_class:
            kind = field.type.strip_typedefs()
            if (kind.name or "").split("<")[0] == name:
                return value[field]
            found = base(value[field], name)
            if found is not None:
                return found
    return None


def byte_text(pointer, length):
    shown = min(int(length), TEXT_LIMIT)
    if shown == 0:
        return ""
    raw = bytes(gdb.selected_inferior().read_memory(int(pointer), shown))
    return raw.decode("utf-8", "backslashreplace") + ("..." if shown < int(length) else "")


def code_points(pointer, length):
    shown = min(int(length), TEXT_LIMIT)
    out = []
    for i in range(shown):
        code = int(pointer[i])
        out.append(chr(code) if code < 0x110000 and not 0xD800 <= code < 0xE000 else "\\x{%x}" % code)
    return "".join(out) + ("..." if shown < int(length) else "")


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n").replace("\r", "\\r") + '"'


def ascii_string(value):
    array = base(value, "mstd::tArray")
    return byte_text(array["mpPool"], array["mLength"])


def unicode_string(value):
    array = base(value, "mstd::tArray")
    return code_points(array["mpPool"], array["mLength"])


def offset_of(kind, name):
    """Bytes from the beginning of a class to its field, own or inherited; with the field's type."""
    for field in kind.strip_typedefs().fields():
        if not hasattr(field, "bitpos"):
            continue
        if field.is_base_class:
            found = offset_of(field.type, name)
            if found:
                return field.bitpos // 8 + found[0], found[1]
        elif field.name == name:
            return field.bitpos // 8, field.type
    return None


def member(address, kind, name):
    """A field of the object at an address. Going through a pointer to a class with virtual functions instead makes gdb ask
    for its run-time type, which it cannot name for some templates, and complains about each time."""
    offset, field = offset_of(kind, name)
    return gdb.Value(address + offset).cast(field.pointer()).dereference()


def list_at(address, kind):
    """The values of a list, in order, with their erase marks."""
    kind = kind.strip_typedefs()
    element = gdb.lookup_type("mstd::tListElementNodeType<%s>" % kind.template_argument(0))
    head, node_type = offset_of(kind, "mHead")
    tail = address + offset_of(kind, "mTail")[0]
    node = int(member(address + head, node_type, "mpNext"))
    while node not in (0, tail):
        yield member(node, element, "mValue"), bool(member(node, node_type, "mbEraseLater"))
        node = int(member(node, node_type, "mpNext"))


def list_values(value):
    kind = value.type.strip_typedefs()
    if kind.name.split("<")[0] != "mstd::tList":
        value = base(value, "mstd::tList")
    return list_at(int(value.address), value.type)


class Text:
    def __init__(self, value, reader):
        self.value, self.reader = fields(value), reader

    def to_string(self):
        return quoted(self.reader(self.value))


class AsciiString(Text):
    def __init__(self, value):
        super().__init__(value, ascii_string)


class UnicodeString(Text):
    def __init__(self, value):
        super().__init__(value, unicode_string)


class Sequence:
    """What has elements by index."""

    def __init__(self, value, title):
        self.value, self.title = fields(value), title

    def display_hint(self):
        return "array"


class Array(Sequence):
    def __init__(self, value):
        super().__init__(value, "tArray")

    def to_string(self):
        return "tArray of %d, capacity %d" % (self.value["mLength"], self.value["mCapacity"])

    def children(self):
        for i in range(int(self.value["mLength"])):
            yield "[%d]" % i, self.value["mpPool"][i]


class Vector(Sequence):
    def __init__(self, value):
        super().__init__(value, "tVector")
        self.pool = self.value
        if self.value.type.strip_typedefs().name.startswith("mstd::tPtrVector<"):
            self.title = "tPtrVector"
            self.pool = base(self.value, "mstd::tVector")

    def to_string(self):
        return "%s of %d" % (self.title, self.pool["miLength"])

    def children(self):
        for i in range(int(self.pool["miLength"])):
            yield "[%d]" % i, self.pool["mppPool"][i].dereference()


class List(Sequence):
    def __init__(self, value):
        name = fields(value).type.strip_typedefs().name
        super().__init__(value, "tPtrList" if name.startswith("mstd::tPtrList<") else "tList")

    def to_string(self):
        marks = [marked for _, marked in list_values(self.value)]
        return "%s of %d%s" % (self.title, len(marks), ", %d to be erased" % sum(marks) if any(marks) else "")

    def children(self):
        for i, (element, _) in enumerate(list_values(self.value)):
            yield "[%d]" % i, element


class Hash:
    def __init__(self, value):
        self.value = fields(value)

    def pairs(self):
        buckets = self.value["mBuckets"]
        for i in range(int(buckets["miLength"])):
            bucket = buckets["mppPool"][i]
            for pair, _ in list_at(int(bucket), bucket.type.target()):
                yield pair

    def to_string(self):
        return "tHash of %d" % sum(1 for _ in self.pairs())

    def children(self):
        for i, pair in enumerate(self.pairs()):
            yield "[%d].first" % i, pair["first"]
            yield "[%d].second" % i, pair["second"]

    def display_hint(self):
        return "map"


class AutoPtr:
    KINDS = {0: "object", 1: "array", 2: "not owned"}

    def __init__(self, value):
        self.value = fields(value)

    def to_string(self):
        pointer = self.value["mpPointer"]
        if not pointer:
            return "tAutoPtr, empty"
        return "tAutoPtr, %s" % self.KINDS.get(int(self.value["mType"]), "of unknown kind")

    def children(self):
        pointer = self.value["mpPointer"]
        if pointer:
            kind = pointer.type.target().strip_typedefs()
            complete = kind.code != gdb.TYPE_CODE_VOID and (kind.sizeof or 0) != 0
            single = int(self.value["mType"]) != 1
            yield "get()", pointer.dereference() if single and complete else pointer


class Shared:
    def __init__(self, value):
        self.value = fields(value)
        self.title = "tSharedObjectWatch" if "tSharedObjectWatch<" in self.value.type.strip_typedefs().name else "tSharedObject"

    def to_string(self):
        data = self.value["mpData"]
        if not data:
            return "%s, empty" % self.title
        strong, total = int(data["miStrongCount"]), int(data["miTotalCount"])
        if strong == 0:
            return "%s, its object is gone" % self.title
        return "%s, %d strong, %d watching" % (self.title, strong, total - strong)

    def children(self):
        data = self.value["mpData"]
        if data and int(data["miStrongCount"]) and self.value["mpObject"]:
            yield "get()", self.value["mpObject"].dereference()


class Time:
    def __init__(self, value):
        self.value = fields(value)

    def to_string(self):
        usec = int(self.value["miUSec"])
        try:
            when = datetime.datetime(1970, 1, 1) + datetime.timedelta(microseconds=usec)
        except OverflowError:
            return "%d us" % usec
        return when.strftime("%Y-%m-%d %H:%M:%S.%f UTC")


class Message:
    def __init__(self, value):
        self.value = fields(value)
        self.impl = self.value["mpImpl"]["mpPointer"]

    def items(self):
        for item, _ in list_values(self.impl["mItems"]):
            yield ascii_string(item["mName"]), unicode_string(item["mValue"])

    def to_string(self):
        if not self.impl:
            return "cLIMessage, empty"
        text = ascii_string(self.impl["mKey"])
        for name, shown in self.items():
            text = text.replace(name + "%", shown, 1)  # a name begins with its percent sign
        return "cLIMessage " + quoted(text)


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("mortise")
    for name, kind in (
        ("cAsciiString", AsciiString),
        ("tArray", Array),
        ("tVector", Vector),
        ("tPtrVector", Vector),
        ("tList", List),
        ("tPtrList", List),
        ("tHash", Hash),
        ("tAutoPtr", AutoPtr),
        ("tSharedObject", Shared),
        ("tSharedObjectWatch", Shared),
        ("cTime", Time),
    ):
        collection.add_printer(name, "^mstd::%s(<.*>)?$" % name, kind)
    collection.add_printer("cString", "^mucs::cString$", UnicodeString)
    collection.add_printer("cLIMessage", "^mucs::cLIMessage$", Message)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
