#!/usr/bin/env python3
"""Makes a static library of objects, with the aliases of an export list.

An alias becomes a second symbol of the object that defines its target, at the same place. So a program that links the
library gets what the shared library has: one function under two names.

usage: static_aliases.py LIST ARCHIVE NM OBJCOPY AR OBJECT...
"""

import os
import subprocess
import sys
import tempfile

import exports


def definitions(nm, objects):
    """Of every global symbol that is defined: object, address and section."""
    listing = subprocess.run([nm, "-A", "-f", "sysv", "-g", "--defined-only", *objects], capture_output=True, text=True,
                             check=True).stdout
    for line in listing.splitlines():
        fields = [field.strip() for field in line.split("|")]
        if len(fields) == 7:
            path, symbol = fields[0].rsplit(":", 1)
            yield symbol.strip(), (path, int(fields[1], 16), fields[6])


def main(arguments):
    export_list, archive, nm, objcopy, ar, *objects = arguments
    found = dict(definitions(nm, objects))
    added = {}
    for export in exports.read_list(export_list):
        if not export.target:
            continue
        name, target = export.name, export.target
        if target not in found:  # 32-bit Windows decorates
            name, target = "_" + export.symbol(), "_" + export.symbol(export.target)
        if target not in found:
            sys.exit(f"{archive}: nothing defines {export.target}, which {export.name} is to stand for")
        path, address, section = found[target]
        added.setdefault(path, []).append(f"--add-symbol={name}={section}:{address:#x},function,global")
    with tempfile.TemporaryDirectory() as folder:
        members = []
        for number, path in enumerate(objects):
            if path in added:
                copy = os.path.join(folder, str(number), os.path.basename(path))
                os.mkdir(os.path.dirname(copy))
                subprocess.run([objcopy, *added[path], path, copy], check=True)
                path = copy
            members.append(path)
        os.unlink(archive)
        subprocess.run([ar, "qcsD", archive, *members], check=True)


if __name__ == "__main__":
    main(sys.argv[1:])
