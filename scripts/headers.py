"""Reads the public headers: their constants, records and functions, in the order of the headers.

The headers keep to a plain form (one declaration for each name, no function-like macros), which is all that this reads;
what it cannot read stops it.
"""

import os
import re
import sys
from dataclasses import dataclass, field

HEADERS = ("version", "types", "common", "toolkit", "csp", "bignum", "random", "prime", "hash", "cipher", "pk", "dsa",
           "kcdsa", "dh", "asn1", "ecc", "ecc_schemes")


@dataclass
class Member:
    type: str  # as in C, with stars and without const: "uint8_t*"
    name: str
    counts: list = field(default_factory=list)  # of arrays, from the outside in
    members: list = field(default_factory=list)  # of a union
    parameters: list = field(default_factory=list)  # of a function pointer, whose result is `type`


@dataclass
class Record:
    name: str
    members: list


@dataclass
class Function:
    name: str
    result: str
    convention: str
    parameters: list


@dataclass
class Interface:
    constants: dict = field(default_factory=dict)
    synonyms: dict = field(default_factory=dict)
    records: list = field(default_factory=list)
    functions: list = field(default_factory=list)


def plain_type(text):
    """'const uint8_t *' becomes 'uint8_t*'."""
    return re.sub(r"\s+", "", re.sub(r"\b(const|struct)\b", "", text))


def parameters(text):
    result = []
    for number, parameter in enumerate(text.split(",") if text.strip() != "void" else []):
        match = re.fullmatch(r"\s*(.*?[\s*])(\w+)\s*", parameter, re.S)
        if not match:
            sys.exit(f"cannot read parameter {number} of ({text})")
        result.append(Member(plain_type(match[1]), match[2]))
    return result


def members(text, constants):
    result = []
    parts = re.findall(r"union\s*\{(.*?)\}\s*(\w+)\s*;|([^;{}]*[^;{}\s][^;{}]*);", text, re.S)
    for union, union_name, declaration in parts:
        declaration = declaration.strip()
        pointer = re.fullmatch(r"(.*?)\(MORVANE_CALL\*\s*(\w+)\)\((.*)\)", declaration, re.S)
        plain = re.fullmatch(r"(.*?[\s*])(\w+(?:, \w+)*)((?:\[\w+\])*)", declaration, re.S)
        if union:
            result.append(Member("union", union_name, members=members(union, constants)))
        elif pointer:
            result.append(Member(plain_type(pointer[1]), pointer[2], parameters=parameters(pointer[3])))
        elif plain:
            counts = [value(count, constants) for count in re.findall(r"\[(\w+)\]", plain[3])]
            result += [Member(plain_type(plain[1]), name, counts) for name in plain[2].split(", ")]
        else:
            sys.exit(f"cannot read the member '{declaration}'")
    return result


def value(text, constants):
    text = text.strip()
    if text in constants:
        return constants[text]
    return text.strip('"') if text.startswith('"') else int(text.rstrip("uU"), 0)


def read(folder):
    found = Interface()
    for header in HEADERS:
        with open(os.path.join(folder, "morvane", header + ".h"), encoding="ascii") as file:
            text = re.sub(r"/\*.*?\*/", " ", file.read(), flags=re.S)
        for name, literal in re.findall(r"^#define (\w+) +(\S+) *$", text, re.M):
            if not name.startswith(("MORVANE_CALL", "MORVANE_STDCALL", "MORVANE_API")):
                found.constants[name] = value(literal, found.constants)
        text = re.sub(r"^#.*?$", "", text, flags=re.M)
        for body in re.findall(r"\benum\s*\{(.*?)\}", text, re.S):
            for item in filter(str.strip, body.split(",")):
                name, literal = item.split("=")
                found.constants[name.strip()] = value(literal, found.constants)
        for match in re.finditer(r"typedef struct (?P<tag>\w+) \{(?P<body>.*?)\n\} (?P<name>\w+);|"
                                 r"typedef (?P<old>\w+) (?P<new>\w+);", text, re.S):
            if match["name"]:
                found.records.append(Record(match["name"], members(match["body"], found.constants)))
            else:
                found.synonyms[match["new"]] = match["old"]
        for result, convention, name, arguments in re.findall(
                r"MORVANE_API\s+([\w\s*]+?)\s*MORVANE_(CALL|STDCALL)\s+(\w+)\((.*?)\);", text, re.S):
            found.functions.append(Function(name, plain_type(result), "stdcall" if convention == "STDCALL" else "cdecl",
                                            parameters(arguments)))
    return found
