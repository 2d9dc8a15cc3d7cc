#!/usr/bin/env python3
"""Runs the morvane command for what machines and shells ask it: self-tests, measurements, JSON, examples, completion."""

import hashlib
import json
import os
import re
import shlex
import subprocess
import sys
import unittest

from tool_case import COMMAND, FAILED_SELF_TEST, INPUT_OUTPUT, IS_WINDOWS, MISMATCH, ToolTest

COMPLETION = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools/completion/morvane.bash")
# What the examples of the others need is made by the first ones.
VERBS = ("random", "genkey", "digest", "encrypt", "decrypt", "prime", "sign", "verify", "derive", "rsa", "ec", "selftest", "speed",
         "list", "version", "help")


class AnswersTest(ToolTest):
    def ask(self, *arguments, **how):
        return json.loads(self.run_tool(*arguments, "--json", **how)[0])

    def test_self_tests(self):
        lines = self.run_tool("selftest")[0].decode().splitlines()
        names = [line.removesuffix(" ok") for line in lines[:-1]]
        self.assertEqual(lines[-1], f"{len(names)} self-tests, all good")
        # Whatever the command lists has a self-test, but for the bare names of kinds with several.
        listed = {row["name"] for row in self.ask("list") if row["kind"] in ("digest", "cipher")}
        self.assertEqual({name for name in listed if not any(test == name or test.startswith(name + "-") for test in names)}, set())
        out, _ = self.run_tool("selftest", "--break", "ecdsa-secp160r1", code=FAILED_SELF_TEST)
        self.assertIn(b"\necdsa-secp160r1 FAILED: pretended\n", out)
        self.assertTrue(out.endswith(b" self-tests, 1 failed\n"))
        answer = self.ask("selftest", "--break", "sha1", code=FAILED_SELF_TEST)
        self.assertEqual([test for test in answer["tests"] if not test["ok"]], [{"name": "sha1", "ok": False, "trouble": "pretended"}])
        self.assertEqual((answer["failed"], [test["name"] for test in answer["tests"]]), (1, names))

    def test_speed(self):
        rows = self.ask("speed", "--seconds", "0.0001", "SHA1", "seed-cbc", "secp160r1", "dsa", "rc4", "dh", "rsa-1024", "kcdsa", "hmac-sha1",
                        "prime-512")["rows"]
        self.assertEqual({(row["name"], row.get("bytes")) for row in rows if "bytes" in row},
                         {(name, size) for name in ("sha1", "hmac-sha1", "seed-cbc-encrypt", "seed-cbc-decrypt", "rc4-encrypt") for size in (64, 16384)})
        self.assertTrue(all(row.get("mb_per_s", row.get("operations_per_s")) > 0 for row in rows))
        self.assertIn("secp160r1-ecdsa-verify", [row["name"] for row in rows])
        self.assertRegex(self.run_tool("speed", "md2", "--seconds", "0.001")[0], rb"^md2 +64 +[\d.]+ MB/s\nmd2 +16384 +[\d.]+ MB/s\n$")

    def test_digests(self):
        names = [b"plain", "quote\" \\ \u00fc \U0001f600".encode()] if not IS_WINDOWS else [b"plain", "\u00fc \U0001f600".encode()]
        if not IS_WINDOWS:
            # Control characters; overlong, cut, a surrogate, beyond Unicode
            names += [b"\n\t\x01\x7f", b"a\xc0\xaf", b"\xe3\x81", b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\xff\xfe"]
        for name in names:
            self.write(name, name)
        files = self.ask("digest", "sha1", *names, "missing", code=INPUT_OUTPUT)["files"]
        self.assertRegex(files.pop()["error"], "^missing: No such")
        for name, row in zip(names, files, strict=True):
            self.assertEqual(row["digest"], hashlib.sha1(name).hexdigest())
            self.assertEqual(bytes.fromhex(row["file_hex"]) if "file_hex" in row else row["file"].encode(), name)
            self.assertEqual("file_hex" in row, "\ufffd" in row["file"])
        sums, _ = self.run_tool("digest", "sha1", *names)
        self.assertTrue(self.ask("digest", "sha1", "--check", stdin=sums)["good"])
        self.write("plain", b"changed")
        answer = self.ask("digest", "sha1", "--check", "--quiet", stdin=sums, code=MISMATCH)
        self.assertEqual(answer, {"algorithm": "sha1", "files": [{"file": "plain", "result": "mismatch"}], "good": False})

    def test_keys_and_numbers(self):
        self.assertEqual(self.ask("prime", "--test", "21", code=MISMATCH), {"number": "0x15", "prime": False, "safe": False})
        self.assertEqual(int(self.ask("prime", "64")["prime"], 16) >> 62, 3)
        self.assertEqual(self.ask("genkey", "ec", "--curve", "sect163k1", "--out", "key", "--public", "public"),
                         {"algorithm": "ec", "curve": "sect163k1", "format": "pem", "private": "key", "public": "public"})
        facts = self.ask("genkey", "kcdsa", "--kind", "seeded", "--params-only", "--out", "parameters")
        self.assertEqual((facts["bits"], facts["subgroup_bits"], len(facts["seed"]), type(facts["count"])), (1024, 160, 40, int))
        self.run_tool("sign", "--key-file", "key", "--out", "signature", stdin=b"abc")
        verify = ("verify", "--key", "public", "--signature", "signature")
        self.assertEqual(self.ask(*verify, stdin=b"abc"), {"file": "-", "good": True})
        self.assertEqual(self.ask(*verify, stdin=b"abd", code=MISMATCH), {"file": "-", "good": False})
        self.assertEqual(list(self.ask("version")), ["name", "version"])

    def test_examples_of_the_help_texts_work(self):
        self.write("letter.txt", b"Dear Sir,\n")
        self.write("SHA256SUMS", hashlib.sha256(b"Dear Sir,\n").hexdigest().encode() + b"  letter.txt\n")
        self.run_tool("genkey", "ec", "--curve", "secp160r1", "--out", "peer.pem")
        overview = self.run_tool("help")[0].decode()
        self.assertEqual(sorted(re.findall(r"(?m)^  ([a-z]+) ", overview)), sorted(VERBS))
        self.assertEqual(re.findall(r"(?m)^  (\d)  ", overview), ["0", "1", "2", "3", "4"])
        for verb in VERBS:
            text = self.run_tool("help", verb)[0].decode()
            examples = re.findall(r"(?m)^  morvane (.*)$", text.partition("\nExamples:")[2])
            self.assertTrue(examples, verb)
            for example in examples:
                self.run_tool(*shlex.split(example))
        self.assertEqual({self.read(name) for name in ("letter.txt", "letter.2", "letter.3")}, {b"Dear Sir,\n"})
        self.assertEqual(self.read("cipher.key"), self.read("cipher.key.2"))

    def test_completion_in_bash(self):
        if IS_WINDOWS:
            self.skipTest("bash runs programs of its own system")
        tool = COMMAND[-1]
        self.write("private.pem", b"")

        def complete(*words):
            script = ('source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); COMPREPLY=(); _morvane; '
                      'printf "%s\\n" "${COMPREPLY[@]}"')
            done = subprocess.run(["bash", "-c", script, COMPLETION, tool, *words], capture_output=True, timeout=60, check=True)
            return done.stdout.decode().split()

        self.assertEqual(complete(""), re.findall(r"(?m)^  ([a-z]+) ", self.run_tool("help")[0].decode()))
        for words, expected in ((("s",), {"sign", "selftest", "speed"}), (("digest", "sha"), {"sha1", "sha256", "sha384", "sha512"}),
                                (("digest", "--quiet", "md"), {"md2", "md4", "md5"}), (("encrypt", "seed-c"), {"seed-cbc", "seed-cfb"}),
                                (("genkey", "ec", "--curve", "se"), {"sect163k1", "secp160r1"}), (("genkey", "rsa", "--format", "="), {"pem", "der"}),
                                (("genkey", "ec", "--par"), {"--params", "--params-only"}), (("help", "ve"), {"verify", "version"}),
                                (("rsa", "--key", "private.pem", "en"), {"encrypt"}), (("sign", "--key", "pri"), set()),
                                (("digest", "sha1", "sha"), set()), (("nothing", ""), set())):
            self.assertEqual(set(complete(*words)), expected, words)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
