#!/usr/bin/env python3
"""What the library exports is what the list beside this script says: one line for each class or free function with its
namespace, template arguments left out, sorted. Nothing of the standard library is exported, and no container, string, stream,
smart pointer, thread or function wrapper of it is inside.

usage: exported_symbols.py LIBRARY [--update]
"""

import os
import re
import subprocess
import sys

LIST = os.path.join(os.path.dirname(os.path.abspath(__file__)), "exported-symbols.txt")

# The part of the standard library that the language itself needs, as it shows in symbols.
SUPPORT = re.compile(
    r"^std::(terminate|unexpected|set_terminate|get_terminate|uncaught_exceptions?|current_exception|rethrow_exception"
    r"|bad_alloc|bad_array_new_length|bad_cast|bad_typeid|bad_exception|exception|exception_ptr|__exception_ptr|type_info"
    r"|nothrow_t|nothrow|align_val_t|get_new_handler|set_new_handler|new_handler"
    r"|move|forward|swap|is_\w+|enable_if\w*|remove_\w+|integral_constant|numeric_limits|initializer_list"
    r"|__and_|__not_|__or_|__is_\w+|__throw_bad_alloc|__throw_bad_array_new_length|nullptr_t)\b"
)


def symbols(library, *options):
    done = subprocess.run(["nm", *options, library], capture_output=True, text=True, check=True)
    lines = (line.split(maxsplit=2 if line[0] not in " \t" else 1) for line in done.stdout.splitlines() if line.strip())
    mangled = [parts[-1].split("@")[0] for parts in lines]
    plain = subprocess.run(["c++filt"], input="\n".join(mangled), capture_output=True, text=True, check=True).stdout
    return list(zip(mangled, plain.splitlines()))


def strip_templates(name):
    """a<b<c>>::d -> a::d; operator<, operator<< and operator-> stay out of the count."""
    name = re.sub(r"operator\s*(<<=|>>=|<=|>=|->\*|->|<<|>>|<|>)", "operator", name)
    depth, out = 0, []
    for char in name:
        if char == "<":
            depth += 1
        elif char == ">":
            depth -= 1
        elif depth == 0:
            out.append(char)
    return "".join(out)


NAMESPACES = {"mstd", "mp", "mucs", "msa", "mrmi", "mio", "mcs", "mce", "mpi"}


def owner(symbol):
    """The class, or the free function, that an exported symbol belongs to: the first name below the namespaces."""
    name = re.sub(r"^(typeinfo name|typeinfo|vtable|VTT|construction vtable|guard variable|TLS \w+ function"
                  r"|reference temporary #\d+) for ", "", symbol)
    name = re.sub(r"^(non-virtual thunk to|virtual thunk to|covariant return thunk to) ", "", name)
    name = strip_templates(name.replace("(anonymous namespace)", "anonymous"))
    name, _, operation = re.split(r"[(\[]", name)[0].partition("operator")
    name = name.strip().split(" ")[-1]
    if operation or name.endswith("::"):
        name += "operator"
    parts = name.split("::")
    depth = 0
    while depth < len(parts) - 1 and parts[depth] in NAMESPACES:
        depth += 1
    return "::".join(parts[: depth + 1])


library = sys.argv[1]
# Sanitizers and coverage bring symbols of their own, which are not the library's doing.
INSTRUMENT = re.compile(r"^(_?_?(asan|ubsan|tsan|sanitizer|gcov|llvm|odr)|_init$|_fini$|__)")

breaches = []
exported = symbols(library, "-D", "--defined-only")
owners = set()
for mangled, plain in exported:
    if INSTRUMENT.match(mangled) or INSTRUMENT.match(plain):
        continue
    if not mangled.startswith("_Z"):
        owners.add(mangled)
        continue
    name = owner(plain)
    if name.split("::")[0] in ("std", "__gnu_cxx", "__cxxabiv1"):
        # The language's headers have inline functions, and the compiler gives their copies away.
        if not SUPPORT.match(plain):
            breaches.append(f"exported from the standard library: {plain}")
    else:
        owners.add(name)

if "--update" in sys.argv:
    with open(LIST, "w", encoding="utf-8") as file:
        file.write("".join(line + "\n" for line in sorted(owners)))
with open(LIST, encoding="utf-8") as file:
    listed = set(file.read().split("\n")) - {""}
for name in sorted(owners - listed):
    breaches.append(f"exported but not listed: {name}")
for name in sorted(listed - owners):
    breaches.append(f"listed but not exported: {name}")

everything = exported + symbols(library, "-D", "--undefined-only") + symbols(library)
for mangled, plain in sorted(set(everything)):
    for name in re.findall(r"\bstd::[\w:]+", plain):
        if not SUPPORT.match(name.replace("__cxx11::", "").replace("__1::", "")):
            breaches.append(f"of the standard library: {plain}")
            break

for breach in breaches:
    print(breach)
if breaches:
    print("If the change is meant: tests/rules/exported_symbols.py LIBRARY --update")
print(f"{len(exported)} exported symbols in {len(owners)} classes and functions, {len(breaches)} breaches")
sys.exit(1 if breaches or not owners else 0)
