#!/usr/bin/env python3
"""Makes, from a list of exports, everything that has to agree with it.

usage: exports.py def LIST             definitions for the Windows linker
       exports.py import-def LIST DLL  definitions for dlltool, which makes the import library
       exports.py plain-def LIST DLL   definitions for other makers of import libraries: names alone
       exports.py version-script LIST NODE   ELF: the public names; everything else is local
       exports.py aliases LIST         ELF: the aliases, as an implicit linker script
       exports.py test LIST            C++: a table of every export, for the tests
       exports.py check LIST LIBRARY   compares a built library's export table with the list

A line of the list: name, family, calling convention, bytes of arguments, and for an alias the name it stands for.
"""

import re
import subprocess
import sys
from dataclasses import dataclass

FAMILIES = ("K", "CSP", "E", "EN", "RAND", "TORVA", "ECC", "PRINT")
CONVENTIONS = ("cdecl", "stdcall")


@dataclass
class Export:
    name: str
    family: str
    convention: str
    argument_bytes: int
    target: str | None

    def symbol(self, name=None):
        """The symbol of the object file, without the leading underscore that 32-bit Windows adds."""
        name = name or self.name
        return f"{name}@{self.argument_bytes}" if self.convention == "stdcall" else name

    def windows_name(self):
        """The name in the export table of the DLL."""
        return f"_{self.symbol()}" if self.convention == "stdcall" else self.name


def read_list(path):
    exports = {}
    with open(path, encoding="ascii") as lines:
        for number, line in enumerate(lines, 1):
            fields = line.split("#")[0].split()
            if not fields:
                continue
            where = f"{path}:{number}"
            if len(fields) not in (4, 5):
                sys.exit(f"{where}: expected 4 or 5 fields, found {len(fields)}")
            export = Export(fields[0], fields[1], fields[2], int(fields[3]), fields[4] if len(fields) == 5 else None)
            if export.family not in FAMILIES or export.convention not in CONVENTIONS:
                sys.exit(f"{where}: unknown family or calling convention")
            if export.argument_bytes % 4:
                sys.exit(f"{where}: arguments are whole words")
            if export.name in exports:
                sys.exit(f"{where}: {export.name} is listed twice")
            exports[export.name] = export
    for export in exports.values():
        target = exports.get(export.target)
        if export.target and (target is None or target.target
                              or (target.convention, target.argument_bytes) != (export.convention, export.argument_bytes)):
            sys.exit(f"{path}: {export.name} needs a listed, defined target with the same convention and bytes")
    return list(exports.values())


def linker_def(exports):
    yield "EXPORTS"
    for export in exports:
        symbol = export.symbol(export.target)
        name = export.windows_name()
        yield f"    {name}" if name == symbol else f"    {name} = {symbol}"


def import_def(exports, dll):
    yield f"LIBRARY {dll}"
    yield "EXPORTS"
    for export in exports:
        symbol = export.symbol()
        name = export.windows_name()
        yield f"    {name}" if name == symbol else f"    {symbol} == {name}"


def plain_def(exports, dll):
    yield f"LIBRARY {dll}"
    yield "EXPORTS"
    for export in exports:
        yield f"    {export.windows_name()}"


def version_script(exports, node):
    yield f"{node} {{"
    yield "    global:"
    for export in exports:
        yield f"        {export.name};"
    yield "    local:"
    yield "        *;"
    yield "};"


def aliases(exports):
    for export in exports:
        if export.target:
            yield f"{export.name} = {export.target};"


def test_table(exports):
    for export in exports:
        target = export.target or export.name
        yield f'EXPORT({export.name}, "{export.windows_name()}", {export.convention}, {export.argument_bytes}, {target})'


def names_in_library(library):
    """Exported names with their addresses. An address without a name stands under its ordinal, as #5."""
    if library.endswith(".dll"):
        listing = subprocess.run(["objdump", "-p", library], capture_output=True, text=True, check=True).stdout
        table, names = listing.split("Export Address Table -- Ordinal Base")[1].split("[Ordinal/Name Pointer] Table")
        name_of = dict(re.findall(r"^\s+\[\s*(\d+)\] (\S+)$", names, re.M))
        addresses = re.findall(r"^\s+\[\s*(\d+)\] \+base\[\s*\d+\] ([0-9a-f]+) Export RVA$", table, re.M)
        return {name_of.get(ordinal, f"#{ordinal}"): address for ordinal, address in addresses}
    listing = subprocess.run(["nm", "-D", "--defined-only", library], capture_output=True, text=True, check=True).stdout
    symbols = (line.split() for line in listing.splitlines())
    return {name.split("@")[0]: address for address, kind, name in symbols if kind != "A"}


def check(exports, library):
    found = names_in_library(library)
    windows = library.endswith(".dll")
    listed = {(e.windows_name() if windows else e.name): e for e in exports}
    errors = [f"not exported: {name}" for name in listed.keys() - found.keys()]
    errors += [f"exported but not listed: {name}" for name in found.keys() - listed.keys()]
    by_name = {e.name: name for name, e in listed.items()}
    for name, export in listed.items():
        if export.target and found.get(name) != found.get(by_name[export.target]):
            errors.append(f"{name} has another address than {export.target}")
    for error in sorted(errors):
        print(f"{library}: {error}")
    print(f"{library}: {len(found)} exports, {len(errors)} differences from the list")
    return 1 if errors else 0


def main(arguments):
    makers = {"def": linker_def, "import-def": import_def, "plain-def": plain_def, "version-script": version_script,
              "aliases": aliases, "test": test_table}
    if len(arguments) >= 2 and arguments[0] == "check":
        return check(read_list(arguments[1]), arguments[2])
    if len(arguments) < 2 or arguments[0] not in makers:
        sys.exit(__doc__)
    for line in makers[arguments[0]](read_list(arguments[1]), *arguments[2:]):
        print(line)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
