#!/usr/bin/env python3
"""Makes python/morvane/declarations.py from the public headers and the lists of exports.

usage: python_bindings.py [--check]    with --check it only says whether the file is current
"""

import os
import sys

import exports
import headers

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
OUTPUT = os.path.join(ROOT, "python", "morvane", "declarations.py")
PLAIN = {"uint8_t": "c_uint8", "uint16_t": "c_uint16", "uint32_t": "c_uint32", "int32_t": "c_int32",
         "size_t": "c_size_t", "uintptr_t": "c_size_t", "void": "None"}

HEAD = '''"""Constants, records and functions of the library. Made by scripts/python_bindings.py from the headers; do not edit.

Pointers to octets and to words are plain addresses here: bytes (for input), buffers of ctypes and None will do.
"""

from ctypes import (CFUNCTYPE, POINTER, Structure, Union, c_char_p, c_int32, c_size_t, c_uint8, c_uint16, c_uint32,
                    c_void_p)
'''


class Writer:
    def __init__(self, interface):
        self.synonyms = interface.synonyms
        self.records = {record.name for record in interface.records}

    def type(self, name, in_record=False):
        base = name.rstrip("*")
        stars = len(name) - len(base)
        base = self.synonyms.get(base, base)
        if base in self.records:
            text = base
        elif stars == 1 and base == "char":
            return "c_char_p"
        elif stars == 1 and in_record and base in ("uint8_t", "uint32_t"):
            text = PLAIN[base]
        elif stars:
            return "c_void_p"
        else:
            return PLAIN[base]
        return "POINTER(" * stars + text + ")" * stars

    def member(self, member, owner):
        if member.parameters:
            types = [self.type(member.type)] + [self.type(p.type) for p in member.parameters]
            return f'("{member.name}", CFUNCTYPE({", ".join(types)}))'
        if member.type == "union":
            return f'("{member.name}", {owner}_{member.name})'
        text = self.type(member.type, in_record=True)
        for count in reversed(member.counts):
            text = f"({text} * {count})"
        return f'("{member.name}", {text})'

    def record(self, record):
        for member in record.members:
            if member.type == "union":
                yield from self.fields(f"{record.name}_{member.name}", "Union", member.members)
        yield from self.fields(record.name, "Structure", record.members)

    def fields(self, name, kind, members):
        yield f"\n\nclass {name}({kind}):"
        yield "    _fields_ = ["
        for member in members:
            yield f"        {self.member(member, name)},"
        yield "    ]"


def text():
    interface = headers.read(os.path.join(ROOT, "include"))
    lists = {"MorvaneCrypto": "exports.txt", "MorvaneCommon": "common_exports.txt"}
    listed = {export.name: (library, export) for library, name in lists.items()
              for export in exports.read_list(os.path.join(ROOT, "include", "morvane", name))}
    writer = Writer(interface)
    yield HEAD
    for name, value in interface.constants.items():
        yield f"{name} = {value!r}".replace("'", '"')
    for record in interface.records:
        yield from writer.record(record)
    yield "\n"
    for name, old in interface.synonyms.items():
        if old in writer.records:
            yield f"{name} = {old}"
    yield "\n# Name in the DLL of 32-bit Windows, result, arguments."
    for library in lists:
        yield f"{library} = {{"
        for function in interface.functions:
            if listed[function.name][0] != library:
                continue
            arguments = ", ".join(writer.type(parameter.type) for parameter in function.parameters)
            name = listed[function.name][1].windows_name()
            yield f'    "{function.name}": ("{name}", {writer.type(function.result)}, [{arguments}]),'
        yield "}"


def main(arguments):
    made = "\n".join(text()) + "\n"
    if arguments == ["--check"]:
        with open(OUTPUT, encoding="ascii") as file:
            return 0 if file.read() == made else "python/morvane/declarations.py is old: run scripts/python_bindings.py"
    with open(OUTPUT, "w", encoding="ascii") as file:
        file.write(made)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
