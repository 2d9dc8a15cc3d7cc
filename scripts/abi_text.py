#!/usr/bin/env python3
"""Turns what abidw tells of libraries into lines that people can read and compare: every exported function, then every
public record with the place of its members in bytes.

usage: abi_text.py HEADER-FOLDER XML...
"""

import glob
import re
import sys
import xml.etree.ElementTree as ElementTree


class Library:
    def __init__(self, name):
        self.tree = ElementTree.parse(name)
        self.by_id = {element.get("id"): element for element in self.tree.iter() if element.get("id")}

    def name(self, identifier):
        element = self.by_id[identifier]
        inner = element.get("type-id")
        if element.tag == "pointer-type-def":
            return self.name(inner) + "*"
        if element.tag == "qualified-type-def":
            of_pointer = self.by_id[inner].tag == "pointer-type-def"
            return f"{self.name(inner)} const" if of_pointer else f"const {self.name(inner)}"
        if element.tag == "array-type-def":
            return self.name(inner) + "".join(f"[{part.get('length')}]" for part in element.findall("subrange"))
        if element.tag == "function-type":
            return f"({self.signature(element)})"
        if element.get("is-anonymous"):
            return "{" + "; ".join(self.members(element)) + "}"
        return element.get("name")

    def signature(self, function):
        parameters = ", ".join(self.name(parameter.get("type-id")) for parameter in function.findall("parameter"))
        return f"{self.name(function.find('return').get('type-id'))} ({parameters})"

    def members(self, record):
        for member in record.findall("data-member"):
            variable = member.find("var-decl")
            place = int(member.get("layout-offset-in-bits", 0)) // 8
            yield f"{place} {self.name(variable.get('type-id'))} {variable.get('name')}"

    def functions(self):
        for symbol in self.tree.iter("elf-symbol"):
            for alias in filter(None, symbol.get("alias", "").split(",")):
                yield f"{alias.split('@')[0]} = {symbol.get('name')}"
        for function in self.tree.iter("function-decl"):
            if function.get("elf-symbol-id"):
                yield f"{function.get('name')}: {self.signature(function)}"

    def records(self, wanted):
        for record in self.tree.iter("class-decl"):
            if record.get("size-in-bits") and record.get("name") in wanted:
                head = f"record {record.get('name')}, {int(record.get('size-in-bits')) // 8} bytes"
                yield record.get("name"), "\n  ".join([head, *self.members(record)])


def public_records(folder):
    for name in glob.glob(f"{folder}/morvane/*.h"):
        with open(name, encoding="ascii") as file:
            yield from re.findall(r"^typedef struct (\w+) \{", file.read(), re.M)


def main(folder, *names):
    libraries = [Library(name) for name in names]
    public = set(public_records(folder))
    records = {name: lines for library in libraries for name, lines in library.records(public)}
    print("\n".join(sorted({line for library in libraries for line in library.functions()})))
    for name in sorted(public):
        if name not in records:
            sys.exit(f"no library knows the record {name}")
        print("\n" + records[name])


if __name__ == "__main__":
    main(*sys.argv[1:])
