#!/usr/bin/env python3
"""Checks what a built library needs from its surroundings.

Besides its companion, a DLL may import system libraries only; it must be relocatable and free of executable data. An ELF
library carries its SONAME, may need only the C and C++ runtime and its companion, which it finds beside itself, and binds
at load.
usage: check_library.py LIBRARY
"""

import os
import re
import subprocess
import sys

DLLS = {"kernel32.dll", "msvcrt.dll", "gdi32.dll", "morvanecommon.dll"}
ELF_NEEDS = re.compile(r"^(libMorvaneCommon\.so\.\d+|libc\.so\.6|libm\.so\.6|libgcc_s\.so\.1|libstdc\+\+\.so\.6|ld-linux.*"
                       r"|lib(asan|ubsan)\.so\.\d+)$")


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def needed(program):
    """The libraries that a program or a library asks its system for."""
    if program.endswith((".dll", ".exe")):
        return re.findall(r"DLL Name: (\S+)", output("objdump", "-p", program))
    return re.findall(r"\(NEEDED\).*\[(.*)\]", output("readelf", "-dW", program))


def check_dll(library):
    listing = output("objdump", "-p", library)
    for dll in needed(library):
        if dll.lower() not in DLLS:
            yield f"imports {dll}"
    for flag in ("DYNAMIC_BASE", "NX_COMPAT"):
        if flag not in listing:
            yield f"lacks {flag}"
    if not re.search(r"^Time/Date\s+Thu Jan  1 00:00:00 1970", listing, re.M):
        yield "carries the time of its making"


def check_elf(library):
    listing = output("readelf", "-dW", library)
    soname = re.search(r"\(SONAME\).*\[(.*)\]", listing)
    expected = os.path.basename(library).split(".so")[0] + ".so."
    if not soname or not re.fullmatch(re.escape(expected) + r"\d+", soname[1]):
        yield f"SONAME is {soname and soname[1]}"
    for name in needed(library):
        if not ELF_NEEDS.match(name):
            yield f"needs {name}"
    runpath = re.search(r"\(RUNPATH\).*\[(.*)\]", listing)
    if runpath and runpath[1] != "$ORIGIN":
        yield f"looks for libraries in {runpath[1]}"
    if "BIND_NOW" not in listing:
        yield "does not bind at load"
    if re.search(r"GNU_STACK.*RWE", output("readelf", "-lW", library)):
        yield "has an executable stack"


def main(library):
    library = os.path.realpath(library) if library.endswith(".dll") else library
    errors = list((check_dll if library.endswith(".dll") else check_elf)(library))
    for error in errors:
        print(f"{library}: {error}")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
