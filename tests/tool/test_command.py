#!/usr/bin/env python3
"""Random bytes, primes, help, and arguments and outputs that fail."""

import binascii
import hashlib
import os
import subprocess
import sys
import time
import unittest

from tool_case import COMMAND, GOOD, INPUT_OUTPUT, IS_WINDOWS, MISMATCH, TEXT, ToolTest, key_of, lines_of, read_terminal


class RandomTest(ToolTest):
    def test_every_source_and_format(self):
        for count in (0, 1, 2, 3, 49152, 100001):
            out, _ = self.run_tool("random", str(count), "--format", "raw")
            self.assertEqual(len(out), count)
            out, _ = self.run_tool("random", str(count))
            self.assertRegex(out, rb"^[0-9a-f]{%d}\n$" % (2 * count))
            out, _ = self.run_tool("random", str(count), "--format=base64")
            self.assertEqual(binascii.b2a_base64(binascii.a2b_base64(out)), out)
            self.assertEqual(len(binascii.a2b_base64(out)), count)
        sources = ("pool", "key-pool", "POOL", "Key-Pool", "des")
        seen = {self.run_tool("random", "--source", source, "20")[0] for source in sources}
        self.assertEqual((len(seen), {len(out) for out in seen}), (5, {41}))
        chain = self.run_tool("random", "32", "--source", "md5-chain", "--format", "raw")[0]
        self.assertEqual(hashlib.md5(chain[:16]).digest(), chain[16:])


class PrimeTest(ToolTest):
    def test_kinds_and_formats(self):
        for kind, bits in (("rsa", 200), ("strong", 60), ("x9", 40), ("STRONG-X9", 20)):
            p = int(self.run_tool("prime", str(bits), "--kind", kind)[0], 16)
            self.assertEqual(p >> (bits - 2), 3, kind)
            self.assertEqual(pow(3, p - 1, p), 1, kind)
            out, _ = self.run_tool("prime", "--test", hex(p))
            self.assertIn(out, (b"safe prime\n",) if kind.lower().startswith("strong") else (b"prime\n", b"safe prime\n"))
        for kind, remainder, found in (("dh", (), 1), ("dh", ("--remainder", "0x1d"), 29), ("strong-dh", ("--remainder", "5"), 59)):
            out, _ = self.run_tool("prime", "100", "--kind", kind, "--step", "60", *remainder, "--format", "dec")
            self.assertEqual((int(out).bit_length(), int(out) % 60), (100, found))
            self.assertEqual(pow(3, int(out) - 1, int(out)), 1)

    def test_tested_numbers(self):
        digits = str(2 ** 607 - 1)
        for number, code, expected in ((digits, GOOD, b"prime\n"), (digits + "0", MISMATCH, b"not prime\n"), ("0", MISMATCH, b"not prime\n"),
                                       ("0x17", GOOD, b"safe prime\n"), ("1000000007", GOOD, b"safe prime\n")):
            self.assertEqual(self.run_tool("prime", "--test", number, code=code)[0], expected)

    def test_seconds_are_for_terminals(self):
        if IS_WINDOWS:
            self.skipTest("needs a console")
        for quiet, expected in (((), b"\rsearching, 1 s"), (("--quiet",), b"")):
            ours, theirs = os.openpty()
            command = [*COMMAND, "prime", "16384", "--kind", "strong", *quiet]
            with subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=theirs) as running:
                if expected:
                    self.assertEqual(read_terminal(ours, len(expected)), expected)
                else:
                    time.sleep(1.5)
                running.kill()
            os.close(theirs)
            if not expected:
                self.assertEqual(read_terminal(ours, 1), b"")


class CommandTest(ToolTest):
    def test_what_is_refused(self):
        for kind, *options in (("dsa", "--bits", "512", "--public", "public"), ("rsa", "--bits", "512"), ("dh", "--bits", "64"),
                               ("ec", "--curve", "secp160r1"), ("eckcdsa", "--curve", "secp160r1")):
            self.run_tool("genkey", kind, *options, "--out", kind)
        self.write("x", b"")
        names = sorted(os.listdir())
        rows = lines_of("tool_refusals.txt")
        for row in rows[::4] if IS_WINDOWS else rows:
            (code, *arguments), message = row.partition(" |")[0].split(" "), row.partition(" |")[2].strip()
            out, err = self.run_tool(*arguments, code=int(code))
            self.assertEqual(out, b"", row)
            self.assertRegex(err, rb"^morvane: [^\n]*%s[^\n]*%s\n$" % (message.encode(), b"; see 'morvane help[^\n]*'" if code == "2" else b""), row)
        self.assertEqual(sorted(os.listdir()), names)

    def test_standard_output_that_fails(self):
        des = ("encrypt", "des-ecb", "--key", key_of(8).hex())
        with open("/dev/full", "wb") as full:
            for arguments in (("digest", "sha1"), ("list",), des, ("random", "99999999999"),
                              ("random", "99999999999", "--format", "raw")):
                err = self.run_tool(*arguments, code=INPUT_OUTPUT, stdin=TEXT * 40000, stdout=full)[1]
                self.assertRegex(err, rb"^morvane: standard output: [^\n]+\n$")

    def test_help(self):
        out, _ = self.run_tool("help")
        self.assertEqual(self.run_tool("-h")[0], out)
        out, _ = self.run_tool("help", "digest")
        self.assertRegex(out, rb"(?s)ALGORITHM.*FILE.*--check.*--quiet.*Exit codes")
        self.assertEqual(self.run_tool("digest", "--help")[0], out)

    def test_version_and_list(self):
        out, _ = self.run_tool("version")
        self.assertRegex(out, rb"^morvane \d+\.\d+\.\d+\n$")
        self.assertEqual(self.run_tool("--version")[0], out)
        out, _ = self.run_tool("list")
        self.assertRegex(out, rb"(?m)^NAME +KIND +BYTES +NOTE\n(.*\n)*sha1 +digest +20 +broken")
        self.assertRegex(out, rb"(?m)^des3 +cipher +24 .*CBC only\n(.*\n)*blowfish +cipher +1-72 ")
        self.assertRegex(out, rb"(?m)^ec +public-key +20-21 +.*sect163k1, c2pnb163v1, secp160r1\n")
        self.assertRegex(out, rb"(?m)^pool +random +any +for keys(.*\n)*des +random +any +not for secrets\n")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
