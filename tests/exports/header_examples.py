"""Prints a C file with the examples of a header, to be compiled: the lines of its comments that are indented by five columns
or more. Fails if a function of the header is in none of them."""
import re
import sys

text = open(sys.argv[1], encoding="utf-8").read()
examples = re.findall(r"(?:^ \*     .*\n)+", text, re.M)
missing = set(re.findall(r"MORVANE_CALL (\w+)\(", text)) - set(re.findall(r"\w+", " ".join(examples)))
if missing:
    sys.exit("without an example: " + ", ".join(sorted(missing)))
print("""#include <morvane/asn1.h>
#include <morvane/csp.h>
#include <morvane/toolkit.h>
#include <stdio.h>
#pragma GCC diagnostic ignored "-Wshadow"
extern K_CONTEXT* context;
extern CSSM_DATA key, text, public_key, private_key;""")
for number, example in enumerate(examples):
    print(f"void example_{number}(void);\nvoid example_{number}(void) {{\n{example.replace(' * ', '')}}}")
