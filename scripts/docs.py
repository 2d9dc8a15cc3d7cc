#!/usr/bin/env python3
"""Brings up to date what the documents take from elsewhere.

In README.md and docs/*.md, what stands between such a mark and the next `<!-- end -->` is made here:

    <!-- file: examples/digest.c -->       the file, as a block of code; "from X to Y" after the name takes part of it only,
                                           from the first line that begins with X to the next one that
                                           begins with Y
    <!-- departures -->                    a table of the departures from standards that the public headers tell of

A header tells of one in a paragraph of a comment that begins "Departs from STANDARD:" and ends with the paragraph.

With --tool COMMAND, docs/morvane.1 is made of what the command says of itself.

usage: docs.py [--check] [--tool COMMAND]    with --check it only says what is old
"""

import argparse
import os
import re
import subprocess
import sys

import headers

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), ".."))


def read(name):
    with open(os.path.join(ROOT, name), encoding="utf-8") as file:
        return file.read()


def departures():
    """Header, name of what the comment is about, standard and text of each departure."""
    for header in headers.HEADERS:
        text = read(f"include/morvane/{header}.h")
        for comment in re.finditer(r"/\*.*?\*/", text, re.S):
            lines = [re.sub(r"^ ?(/\*|\*/?)? ?", "", line) for line in comment[0].removesuffix("*/").split("\n")]
            for paragraph in "\n".join(lines).split("\n\n"):
                found = re.match(r"Departs from ([^:]+): (.*)", paragraph, re.S)
                if found:
                    title = re.match(r"/\* ---- (.*?) ----", comment[0]) or re.match(r"/\* ([^:.,(]*\w)", comment[0])
                    rest = text[comment.end():].lstrip()
                    name = re.match(r"MORVANE_API [^(]*?(\w+)\(", rest)
                    yield header, f"`{name[1]}`" if name else title[1], found[1], " ".join(found[2].split())


def departure_table():
    yield "| standard | where | what differs |"
    yield "|---|---|---|"
    for header, name, standard, text in departures():
        yield f"| {standard} | {name}, `{header}.h` | {text[0].upper() + text[1:]} |".replace("* ", r"\* ")


def part_of_file(order):
    name, _, part = order.partition(" from ")
    lines = read(name.strip()).splitlines()
    if part:
        first, last = part.split(" to ")
        begin = next(n for n, line in enumerate(lines) if line.startswith(first))
        lines = lines[begin:next(n for n in range(begin, len(lines)) if lines[n].startswith(last)) + 1]
    language = {".c": "c", ".py": "python", ".txt": "cmake"}[os.path.splitext(name.strip())[1]]
    return [f"```{language}", *lines, "```"]


def with_parts(text):
    def fill(mark):
        lines = departure_table() if mark[2] == "departures" else part_of_file(mark[3])
        return mark[1] + "\n".join(lines) + "\n<!-- end -->"
    return re.sub(r"(<!-- (file: (.*?)|departures) -->\n).*?<!-- end -->", fill, text, flags=re.S)


def roff(text):
    text = text.replace("\\", r"\e").replace("-", r"\-")
    return re.sub(r"^([.'])", r"\\&\1", text, flags=re.M)


def verb_page(help_text):
    """The help of a verb: usage, what the arguments are, paragraphs."""
    usage, *blocks = re.sub(r"\A.*?Usage: ", "", help_text.strip(), flags=re.S).split("\n\n")
    yield f".B {roff(usage)}\n"
    for block in blocks:
        lines = block.split("\n")
        if lines[0] in ("Positionals:", "Options:"):
            for line in lines[1:]:
                item = re.match(r"  (\S.*?)(?:  +(\S.*))?$", line)
                if item:
                    yield f".TP\n.B {roff(item[1])}\n{roff(item[2] or '')}".rstrip() + "\n"
                else:
                    yield roff(line.strip()) + "\n"
        else:
            yield ".PP\n" + roff(block) + "\n"


def man_page(tool):
    def ask(*words):
        return subprocess.run([tool, *words], capture_output=True, text=True, check=True).stdout

    version = re.search(r'MORVANE_VERSION +"(.*)"', read("include/morvane/version.h"))[1]
    yield '.\\" Made by scripts/docs.py from what the command says of itself.\n'
    yield f'.TH MORVANE 1 "" "MorvaneCrypto {version}" "User Commands"\n'
    yield ".SH NAME\nmorvane \\- digests, ciphers, keys and signatures of the library MorvaneCrypto\n"
    yield ".SH SYNOPSIS\n.B morvane\n.I VERB\n.RI [ ARGUMENTS ]\n"
    summary = ask("help")
    yield ".SH VERBS\n"
    verbs = re.findall(r"^  (\w+) +(.*)$", summary, re.M)
    for verb, text in verbs:
        yield f".TP\n.B {verb}\n{roff(text)}\n"
    for verb, _ in verbs:
        if verb not in ("help", "version"):
            yield f".SH {verb.upper()}\n"
            yield from verb_page(ask("help", verb))
    yield ".SH SEE ALSO\nThe documents of the library tell what its algorithms are worth, SECURITY.md above all.\n"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--tool")
    arguments = parser.parse_args()
    documents = ["README.md", *(f"docs/{name}" for name in os.listdir(os.path.join(ROOT, "docs")) if name.endswith(".md"))]
    made = {name: with_parts(read(name)) for name in documents}
    if arguments.tool:
        made["docs/morvane.1"] = "".join(man_page(arguments.tool))
    old = [name for name, text in made.items() if read(name) != text]
    if arguments.check:
        return f"old: {', '.join(old)}; run scripts/docs.py --tool build/linux-x64/bin/morvane" if old else 0
    for name in old:
        with open(os.path.join(ROOT, name), "w", encoding="utf-8") as file:
            file.write(made[name])
    return 0


if __name__ == "__main__":
    sys.exit(main())
