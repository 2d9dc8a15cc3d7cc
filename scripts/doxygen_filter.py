#!/usr/bin/env python3
"""Shows a public header to Doxygen, which wants its comments marked and takes many plain characters for commands.

Every comment on lines of its own describes what follows it; the first one of a file describes the file, one that begins
with dashes opens a group. A comment behind a declaration describes that. Lines that are set in, tables and examples, stay
as they are.

usage: doxygen_filter.py HEADER
"""

import os
import re
import sys


def escaped(line):
    return re.sub(r"([\\@&$#<>%\"|])", r"\\\1", line).replace("::", r"\::").replace("--", r"\--")


def body(lines):
    """The lines of a comment, what is set in between @verbatim and @endverbatim."""
    inside = False
    for line in lines:
        if line.startswith("  ") != inside and line:
            yield "@endverbatim" if inside else "@verbatim"
            inside = not inside
        yield line if inside else escaped(line)
    if inside:
        yield "@endverbatim"


def block(text, name, first):
    first_line, *others = text[2:-2].strip().split("\n")
    lines = [first_line, *(re.sub(r"^ ?\*? ?", "", line) for line in others)]
    heading = re.fullmatch(r"---- (.*) ----", lines[0])
    if first:
        head, rest = [f"@file {name}"], lines
    elif heading:
        head, rest = [f"@name {escaped(heading[1])}"], lines[1:]
    else:
        head, rest = [], lines
    return "/** " + "\n".join([*head, *body(rest)]) + "\n */"


def main(path):
    with open(path, encoding="ascii") as file:
        text = file.read()
    first = True
    result, end = [], 0
    for comment in re.finditer(r"/\*.*?\*/", text, re.S):
        result.append(text[end:comment.start()])
        end = comment.end()
        behind = text[:comment.start()].rpartition("\n")[2].strip()
        if behind.startswith("#"):
            result.append(comment[0].replace("/*", "/**<", 1) if behind.startswith("#define") else "")
        elif behind:
            inner = " ".join(re.sub(r"^\s*\*? ?", "", line) for line in comment[0][2:-2].split("\n"))
            result.append(f"/**< {escaped(inner.strip())} */")
        else:
            result.append(block(comment[0], "morvane/" + os.path.basename(path), first))
            first = False
    print("".join(result) + text[end:], end="")


if __name__ == "__main__":
    main(sys.argv[1])
