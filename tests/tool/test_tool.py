#!/usr/bin/env python3
"""Runs the morvane command and compares what it makes with hashlib, the formats of sum files and other cipher programs.

usage: test_tool.py TOOL [EMULATOR...]
"""

import binascii
import errno
import hashlib
import os
import re
import signal
import subprocess
import sys
import tempfile
import time
import unittest

COMMAND = []  # the emulator, if any, and the tool
with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "../vectors/tool_ciphers.txt"), encoding="ascii") as vectors:
    VECTORS = [line for line in vectors if line.strip() and line[0] != "#"]
IS_WINDOWS = False

GOOD, MISMATCH, USAGE, INPUT_OUTPUT = range(4)


TEXT = bytes(range(0x30, 0x45))


def key_of(size):
    return bytes((i * 37 + 1) & 255 for i in range(size))


def iv_of(name):
    return bytes(range(0xa0, 0xb0 if name.startswith("seed") else 0xa8))


def sha1(data):
    return hashlib.sha1(data).hexdigest()


def read_terminal(terminal, count):
    """The first octets written to a terminal, or all when it has been closed; they may come in any number of pieces."""
    shown = b""
    try:
        while len(shown) < count and (piece := os.read(terminal, count - len(shown))):
            shown += piece
    except OSError as error:
        if error.errno != errno.EIO:
            raise
    os.close(terminal)
    return shown


class ToolTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir="/tmp", prefix="morvane-tool-")
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)

    def write(self, name, data):
        with open(name, "wb") as file:
            file.write(data)

    def read(self, name):
        with open(name, "rb") as file:
            return file.read()

    def write_zeros(self, name, size):
        with open(name, "wb") as file:
            file.truncate(size)

    def run_tool(self, *arguments, code=GOOD, stdin=b"", **streams):
        """Returns standard output and standard error; checks the exit code and that every error is explained."""
        streams = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **streams}
        done = subprocess.run([*COMMAND, *arguments], input=stdin, timeout=120, **streams)
        self.assertEqual(done.returncode, code, (arguments, done))
        if code in (USAGE, INPUT_OUTPUT):
            self.assertRegex(done.stderr, rb"^morvane: \S")
        elif code == GOOD and done.stderr is not None:
            self.assertEqual(done.stderr, b"")
        return done.stdout, done.stderr

    def openssl(self, *arguments, code=0):
        done = subprocess.run(["openssl", *arguments], capture_output=True, timeout=120)
        self.assertEqual(done.returncode, code, (arguments, done))
        return done.stdout

    def read(self, name):
        with open(name, "rb") as file:
            return file.read()


class DigestTest(ToolTest):
    def test_every_digest_of_files_of_all_sizes(self):
        sizes = (0, 1, 55, 56, 64, 262143, 262144, 262145, 1000003)
        contents = {f"f{size}": bytes(i * 7 % 251 for i in range(size)) for size in sizes}
        for name, data in contents.items():
            self.write(name, data)
        for digest in ("md5", "SHA1", "sha256", "sha384", "sha512"):
            expected = "".join(f"{hashlib.new(digest, data).hexdigest()}  {name}\n" for name, data in contents.items())
            self.assertEqual(self.run_tool("digest", digest, *contents)[0], expected.encode())

    def test_sha256_of_more_than_2_to_the_32_bits(self):
        self.write_zeros("long", (512 << 20) + 1)
        # sha256sum of as many zero bytes
        expected = b"7c40fe5ce847740d0f0d0cdde3949d6585804cdec3ae61a15b923165699c8137  long\n"
        self.assertEqual(self.run_tool("digest", "sha256", "long")[0], expected)

    def test_standard_input_is_binary(self):
        data = b"a\r\nb\n\x1a\0\xff" * 3  # 0x1a ends a text file on Windows
        expected = f"{sha1(data)}  -\n".encode()
        self.write("file", data)
        out, _ = self.run_tool("digest", "sha1", "-", "file", "-", stdin=data)
        self.assertEqual(out, expected + f"{sha1(data)}  file\n{sha1(b'')}  -\n".encode())

    def test_names_that_look_like_something_else(self):
        names = ["list", "[a,b]", "[a]", "{}", "%%", "++", "-1", "--check", "[]", " with space", "ünï 日本 😀"]
        for name in names:
            self.write(os.fsencode(name), name.encode())
        lines = [f"{sha1(name.encode())}  {name}\n" for name in names]
        out, _ = self.run_tool("digest", "sha1", "--", *names)
        self.assertEqual(out.decode(), "".join(lines))
        self.assertEqual(self.run_tool("digest", "sha1", "{}")[0].decode(), lines[3])
        self.run_tool("digest", "sha1", "--check", "--quiet", stdin=out)

    def test_other_files_follow_an_unreadable_one(self):
        os.mkdir("folder")
        self.write("good", b"abc")
        out, err = self.run_tool("digest", "sha1", "missing", "folder", "good", code=INPUT_OUTPUT)
        self.assertEqual(out, f"{sha1(b'abc')}  good\n".encode())
        self.assertRegex(err, rb"^morvane: missing: No such .*\nmorvane: folder: Is a directory\n$")

    def test_names_are_escaped(self):
        if IS_WINDOWS:
            self.skipTest("no file can have such a name")
        names = ["back\\slash", "line\nfeed", "carriage\rreturn", "\\n"]
        for name in names:
            self.write(name, name.encode())
        escaped = ["back\\\\slash", "line\\nfeed", "carriage\\rreturn", "\\\\n"]
        out, _ = self.run_tool("digest", "sha1", *names)
        self.assertEqual(out.decode(), "".join(f"\\{sha1(n.encode())}  {e}\n" for n, e in zip(names, escaped)))
        out, _ = self.run_tool("digest", "sha1", "-c", stdin=out)
        self.assertEqual(out.decode(), "".join(f"\\{e}: OK\n" for e in escaped))

    def test_progress_is_for_terminals_and_erased(self):
        if IS_WINDOWS:
            self.skipTest("needs a console")
        self.write_zeros("long", 70 << 20)
        expected = f"{sha1(bytes(70 << 20))}  long\n".encode()
        ours, theirs = os.openpty()
        self.assertEqual(self.run_tool("digest", "sha1", "long", stderr=theirs)[0], expected)
        os.close(theirs)
        shown = read_terminal(ours, 4096)
        self.assertRegex(shown, rb"^\r\d+ %  \d+ MB/s +\r.* +\r$")
        self.assertEqual(self.run_tool("digest", "sha1", "long"), (expected, b""))


class CheckTest(ToolTest):
    def setUp(self):
        super().setUp()
        for name in ("one", "two", "a) = (b"):
            self.write(name, name.encode())

    @staticmethod
    def line(name, data=None, form="{}  {}\n"):
        return form.format(sha1(name.encode() if data is None else data), name).encode()

    def test_every_form_of_a_line(self):
        upper = sha1(b"two").upper().encode()
        lines = [self.line("one"), self.line("two", form="{} *{}\r\n"), upper + b"  two\n",
                 b"SHA1 (one) = " + sha1(b"one").encode() + b"\n", b"sha1(two)= " + upper + b"\r\n",
                 b"SHA1 (a) = (b) = " + sha1(b"a) = (b").encode() + b"\n",
                 b"\\" + self.line("one"), b"# a comment\n", b"\n",
                 self.line("two").rstrip()]  # the last line need not end
        self.write("sums", b"".join(lines))
        out, _ = self.run_tool("digest", "sha1", "--check", "sums")
        self.assertEqual(out, b"one: OK\ntwo: OK\ntwo: OK\none: OK\ntwo: OK\na) = (b: OK\none: OK\ntwo: OK\n")
        self.assertEqual(self.run_tool("digest", "sha1", "-c", "--quiet", "sums")[0], b"")

    def test_bad_lines_are_counted(self):
        good, hexed = self.line("one"), sha1(b"one").encode()
        bad = [b"text\n", hexed + b" one\n", hexed[1:] + b"  one\n", hexed + b"0  one\n", hexed + b"  \n", hexed[1:] + b"g  one\n",
               b"MD5 (one) = " + hexed + b"\n", b"SHA1 (one = " + hexed + b"\n", b"\\" + hexed + b"  o\\ne\\\n",
               hexed + b"  one\0x\n", hexed + b"  -\n", b"SHA1 () = " + hexed + b"\n", b"SHA1 (one) =\n", b"y" * (3 << 20) + b"\n"]
        out, err = self.run_tool("digest", "sha1", "-c", "--quiet", stdin=b"".join(bad) + self.line("two", b"") + good,
                                 code=MISMATCH)
        self.assertEqual(out, b"two: FAILED\n")
        self.assertIn(b"%d lines are not in the format" % len(bad), err)
        self.run_tool("digest", "sha1", "-c", stdin=b"".join(bad), code=INPUT_OUTPUT)
        self.run_tool("digest", "sha1", "-c", code=INPUT_OUTPUT)

    def test_mismatch_outranks_an_unreadable_file(self):
        self.write("unreadable", self.line("missing") + self.line("one"))
        self.write("wrong", self.line("two", b"") + self.line("one"))
        out, err = self.run_tool("digest", "sha1", "-c", "unreadable", code=INPUT_OUTPUT)
        self.assertEqual(out, b"missing: FAILED open or read\none: OK\n")
        self.assertIn(b"unreadable: warning: 1 listed file could not be read", err)
        out, err = self.run_tool("digest", "sha1", "-c", "--quiet", "wrong", "none", "unreadable", code=MISMATCH)
        self.assertEqual(out, b"two: FAILED\nmissing: FAILED open or read\n")
        self.assertIn(b"wrong: warning: 1 digest does not match", err)
        self.assertRegex(err, rb"morvane: none: No such")


class CipherTest(ToolTest):
    DES = ("des-cbc", "--key", key_of(8).hex(), "--iv", iv_of("des").hex())

    @staticmethod
    def options(name, key_bytes):
        iv = () if name == "rc4" or name.endswith("-ecb") else ("--iv", iv_of(name).hex())
        rounds = ("--rounds", "12") if name.startswith("rc5") else ()
        return (name, "--key", key_of(key_bytes).hex(), *iv, *rounds)

    def test_every_cipher_and_mode(self):
        # One table serves all builds; Wine is slow to start.
        for row in VECTORS[::4] if IS_WINDOWS else VECTORS:
            name, key_bytes, expected = row.split()
            options = self.options(name, int(key_bytes))
            out, _ = self.run_tool("encrypt", *options, stdin=TEXT)
            self.assertEqual(out.hex(), expected, name)
            self.assertEqual(self.run_tool("decrypt", *options, stdin=out)[0], TEXT, name)

    def test_options_of_single_ciphers(self):
        self.write("key", bytes.fromhex("88bca90e90875a7f0f79c384627bafb2"))  # RFC 2268
        options = ("RC2-ECB", "--key-file", "key", "--effective-bits", "64", "--no-padding")
        self.assertEqual(self.run_tool("encrypt", *options, stdin=bytes(8))[0].hex(), "1a807d272bbe5db1")
        for rounds, expected in ((("--rounds", "0"), "7a7bba4d79111d1e"), ((), "13d73cd71bd3a150")):
            options = ("rc5-ecb", "--key", "00", "--no-padding", *rounds)
            self.assertEqual(self.run_tool("encrypt", *options, "-", "-", stdin=bytes(8))[0].hex(), expected)

    def test_inputs_of_several_pieces(self):
        # sha1 of the ciphertext, made with OpenSSL and, for 24 bits of feedback, with its block cipher
        for name, key_bytes, size, more, expected in (
                ("des-cbc", 8, 262144, (), "29f357809acedf7abccde3b1984947b9298584d6"),
                ("blowfish-cbc", 16, 600001, (), "00a1f09d42ae265c6e117dc4c41c18bef905380d"),
                ("seed-cfb", 16, 600001, (), "6e31d4870299ee20f0f70f5174992091cc412d56"),
                ("des-cfb", 8, 600001, ("--feedback-bits", "24"), "584240c08cb165cb8c88918e67bb2b39e8680293"),
                ("rc4", 16, 262145, (), "fdb4e0da59319439715182e6aabf88b2d2f4e66f")):
            data = (bytes(range(251)) * (size // 251 + 1))[:size]
            options = (*self.options(name, key_bytes), *more, "--force")
            self.write("{}", data)
            self.run_tool("encrypt", *options, "--", "{}", "[a,b]")
            self.assertEqual(sha1(self.read("[a,b]")), expected, name)
            self.run_tool("decrypt", *options, "[a,b]", "[a,b]")  # in place
            self.assertEqual(self.read("[a,b]"), data, name)
            self.assertEqual(sorted(os.listdir()), ["[a,b]", "{}"])

    def test_short_inputs(self):
        for size in (0, 7, 8, 9):
            out, _ = self.run_tool("encrypt", *self.DES, stdin=TEXT[:size])
            self.assertEqual(len(out), size // 8 * 8 + 8)
            self.assertEqual(self.run_tool("decrypt", *self.DES, stdin=out)[0], TEXT[:size])
        self.assertEqual(self.run_tool("encrypt", *self.options("seed-ofb", 16))[0], b"")

    def test_wrong_usage(self):
        cases = (
            "nothing --key K|no cipher", "des --key K|des-ecb des-cbc des-cfb des-ofb", "rc4-cbc --key K|none of rc4",
            "des-ecb|--key-hex or --key-file", "des-ecb --key K --key-file x|--key-hex or --key-file",
            "rc4 --key-file -|both the key and the input", "des-ecb --key K1|hexadecimal", "des-ecb --key zzzzzzzzzzzzzzzz|hexadecimal",
            "des-ecb --key K11|has 8 bytes, not 9", "rc4 --key LONG|1-256 bytes, not more", "blowfish-ecb --key |1-72 bytes, not 0",
            "des3-ecb --key K|16 or 24 bytes, not 8", "des3-ofb --key KKK --iv K|only des3-cbc", "des-cbc --key K|--iv of 8 bytes",
            "des-cbc --key K --iv K00|--iv of 8 bytes, not 9", "des-ecb --key K --iv K|takes no --iv",
            "des-cfb --key K --iv K --feedback-bits 12|multiple of 8 from 8 to 64",
            "des-cbc --key K --iv K --feedback-bits 8|for cfb and ofb", "rc5-ecb --key K --rounds 17|from 0 to 16",
            "rc2-ecb --key K --effective-bits 0|from 1 to 1024", "rc5-ecb --key K --effective-bits 8|is for rc2")
        for case in cases[::4] if IS_WINDOWS else cases:
            arguments, message = case.replace("LONG", "00" * 257).replace("K", self.DES[2]).split("|")
            out, err = self.run_tool("encrypt", *arguments.split(" "), code=USAGE)
            self.assertRegex(err, f"^morvane: [^\n]*{message}[^\n]*; see 'morvane help encrypt'\n$".encode())
            self.assertEqual(out, b"")

    def test_nothing_is_left_of_a_failure(self):
        wrong = ("des-cbc", "--key", "00" * 8, *self.DES[3:])
        self.write("cipher", self.run_tool("encrypt", *self.DES, stdin=TEXT * 20000)[0])
        self.write("old", b"old")
        os.mkdir("folder")
        for code, message, *arguments in (
                (MISMATCH, b"cipher: wrong key", "decrypt", *wrong, "cipher", "new"),
                (MISMATCH, b"cipher: wrong key", "decrypt", *wrong, "cipher", "old", "--force"),
                (MISMATCH, b"standard input: wrong key", "decrypt", *self.DES, "-", "new"),
                (MISMATCH, b"old: is not a whole number of 8-byte blocks", "decrypt", *self.DES, "old", "new"),
                (INPUT_OUTPUT, b"which --no-padding needs", "encrypt", *self.DES, "--no-padding", "old", "new"),
                (INPUT_OUTPUT, b"old: exists", "decrypt", *self.DES, "cipher", "old"),
                (INPUT_OUTPUT, b"folder: is not a regular file", "decrypt", *self.DES, "cipher", "folder", "--force"),
                (INPUT_OUTPUT, b"missing/new: No such", "decrypt", *self.DES, "cipher", "missing/new"),
                (INPUT_OUTPUT, b"folder: Is a directory", "encrypt", *self.DES, "folder", "new")):
            err = self.run_tool(*arguments, code=code)[1]
            self.assertRegex(err, b"^morvane: [^\n]*" + message + b"[^\n]*\n$")
            self.assertEqual(sorted(os.listdir()), ["cipher", "folder", "old"], arguments)
            self.assertEqual(self.read("old"), b"old")

    def test_permissions_stay_and_an_interrupted_file_goes(self):
        if IS_WINDOWS:
            self.skipTest("needs signals and permissions")
        self.write("file", TEXT)
        os.chmod("file", 0o600)
        self.run_tool("encrypt", *self.DES, "file", "file", "--force")
        self.assertEqual(os.stat("file").st_mode & 0o777, 0o600)
        command = [*COMMAND, "encrypt", *self.DES, "-", "new"]
        with subprocess.Popen(command, stdin=subprocess.PIPE) as running:
            deadline = time.monotonic() + 60
            while os.listdir() == ["file"] and time.monotonic() < deadline:
                time.sleep(0.01)
            self.assertEqual(len(os.listdir()), 2)
            time.sleep(0.1)  # until the name is known to the handler
            running.send_signal(signal.SIGTERM)
            self.assertEqual(running.wait(60), -signal.SIGTERM)
        self.assertEqual(os.listdir(), ["file"])


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
        chain = self.run_tool("random", "100001", "--source", "md5-chain", "--format", "raw")[0]
        for at in range(16, 100000, 16):
            self.assertEqual(hashlib.md5(chain[at - 16:at]).digest(), chain[at:at + 16], at)


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


class RsaTest(ToolTest):
    """Against the openssl command of the system that runs the tests."""

    def make_keys(self, *options):
        self.run_tool("genkey", "rsa", "--bits", "1024", "--out", "key", "--public", "public", *options)

    def test_generated_keys(self):
        for kind, bits, exponent in (("plain", 1025, 3), ("strong", 128, 65537), ("x9", 512, 4294967295), ("strong-x9", 513, 65537)):
            out, _ = self.run_tool("genkey", "RSA", "--kind", kind, "--bits", str(bits), "--exponent", str(exponent), "--out", "key",
                                   "--public", "public", "--force")
            self.assertEqual(out, b"")
            self.openssl("rsa", "-in", "key", "-check", "-noout")
            self.assertIn(b"(%d bit)" % bits, self.openssl("rsa", "-RSAPublicKey_in", "-in", "public", "-text", "-noout"))
            self.assertIn(b"Exponent: %d " % exponent, self.openssl("rsa", "-RSAPublicKey_in", "-in", "public", "-text", "-noout"))
            self.assertEqual(self.openssl("rsa", "-in", "key", "-traditional"), self.read("key"))
        if not IS_WINDOWS:
            os.chmod("key", 0o644)
            self.make_keys("--force")
            self.assertEqual(os.stat("key").st_mode & 0o777, 0o600)
        self.make_keys("--force", "--format", "der")
        self.assertEqual(self.openssl("rsa", "-in", "key", "-traditional", "-outform", "der"), self.read("key"))

    def test_key_files(self):
        self.make_keys()
        self.write("data", TEXT)
        self.run_tool("rsa", "encrypt", "--key", "key", "data", "cipher")
        for form in ("pem", "der"):
            for name, *options in (("pkcs8",), ("pkcs1", "-traditional")):
                self.openssl("pkey", "-in", "key", "-outform", form, "-out", name, *options)
                self.assertEqual(self.run_tool("rsa", "decrypt", "--key", name, "cipher")[0], TEXT)
            for name, option in (("spki", "-pubout"), ("pkcs1public", "-RSAPublicKey_out")):
                self.openssl("rsa", "-in", "key", "-outform", form, "-out", name, option)
                out, _ = self.run_tool("rsa", "encrypt", "--key", "-", "data", stdin=self.read(name))
                self.assertEqual(self.run_tool("rsa", "decrypt", "--key", "key", stdin=out)[0], TEXT)
        crlf = b"a remark\r\n" + self.read("key").replace(b"\n", b"\r\n")
        self.assertEqual(self.run_tool("rsa", "decrypt", "--key", "-", "cipher", stdin=crlf)[0], TEXT)

    def test_encryption(self):
        self.make_keys()
        old = ("rsa_padding_mode:oaep",)
        for scheme, most, openssl in (
                (("pkcs1",), 117, ("rsa_padding_mode:pkcs1",)), (("oaep-sha1-old",), 86, old),
                (("oaep", "--hash", "sha1"), 86, old), ((), 62, (*old, "rsa_oaep_md:sha256")),
                (("OAEP", "--hash", "sha384", "--mgf-hash", "sha1", "--label", "AB"), 30,
                 (*old, "rsa_oaep_md:sha384", "rsa_mgf1_md:sha1", "rsa_oaep_label:4142"))):
            ours = ("--key", "key", *(("--scheme", *scheme) if scheme else ()))
            theirs = ("-inkey", "key", *(part for option in openssl for part in ("-pkeyopt", option)))
            for size in (most,) if IS_WINDOWS else (0, 1, most):  # Wine is slow to start
                self.write("data", key_of(size))
                self.run_tool("rsa", "encrypt", *ours, "data", "cipher", "--force")
                self.assertEqual(self.openssl("pkeyutl", "-decrypt", "-in", "cipher", *theirs), key_of(size), (scheme, size))
            # the older form cannot read one block in 256
            for _ in range(20 if "oaep-sha1-old" in scheme else 1):
                self.openssl("pkeyutl", "-encrypt", "-in", "data", "-out", "cipher", *theirs)
                out = subprocess.run([*COMMAND, "rsa", "decrypt", *ours, "cipher"], capture_output=True, timeout=120).stdout
                if out == key_of(most):
                    break
            self.assertEqual(out, key_of(most), scheme)
            self.assertEqual(self.run_tool("rsa", "encrypt", *ours, stdin=key_of(most + 1), code=INPUT_OUTPUT)[0], b"")
            damaged = bytearray(self.read("cipher"))
            damaged[100] ^= 1
            for wrong in (damaged, damaged[1:], damaged + b"1"):
                out, err = self.run_tool("rsa", "decrypt", *ours, stdin=wrong, code=MISMATCH)
                self.assertEqual(out, b"")
                self.assertRegex(err, rb"^morvane: standard input: wrong key, scheme or label[^\n]*\n$")

    def test_signatures(self):
        self.make_keys()
        self.openssl("rsa", "-in", "key", "-pubout", "-out", "spki")
        self.write("data", TEXT * 20000)
        pss = ("-sigopt", "rsa_padding_mode:pss", "-sigopt")
        for options, openssl in ((("--scheme", "pkcs1"), ("-sha256",)), (("--scheme", "pkcs1", "--hash", "md5"), ("-md5",)),
                                 (("--scheme", "pkcs1", "--hash", "sha512"), ("-sha512",)), ((), ("-sha256", *pss, "rsa_pss_saltlen:32")),
                                 (("--hash", "sha384", "--mgf-hash", "sha1", "--salt", "0"),
                                  ("-sha384", *pss, "rsa_pss_saltlen:0", "-sigopt", "rsa_mgf1_md:sha1"))):
            self.run_tool("rsa", "sign", "--key", "key", *options, "data", "signature", "--force")
            self.openssl("dgst", *openssl, "-verify", "spki", "-signature", "signature", "data")
            self.openssl("dgst", *openssl, "-sign", "key", "-out", "signature", "data")
            verify = ("rsa", "verify", "--key", "public", "--signature", "signature", *options)
            self.assertEqual(self.run_tool(*verify, "data")[0], b"good signature\n")
            self.assertEqual(self.run_tool(*verify, stdin=TEXT, code=MISMATCH)[0], b"bad signature\n")
        # a block that is good as far as the DigestInfo goes, which is all that a forger under a small exponent needs
        info = bytes.fromhex("3031300d060960864801650304020105000420") + hashlib.sha256(TEXT).digest()
        self.write("block", info + b"!")
        self.openssl("pkeyutl", "-sign", "-inkey", "key", "-in", "block", "-out", "signature")
        forged = ("rsa", "verify", "--key", "public", "--scheme", "pkcs1", "--signature", "signature")
        self.assertEqual(self.run_tool(*forged, stdin=TEXT, code=MISMATCH)[0], b"bad signature\n")
        has160 = ("--key", "key", "--scheme", "pkcs1", "--hash", "has160")
        self.run_tool("rsa", "sign", *has160, "block", "signature", "--force")
        self.assertIn(b"2a831a8c9a440102", binascii.hexlify(self.openssl("pkeyutl", "-verifyrecover", "-inkey", "key", "-in", "signature")))

    def test_refusals(self):
        self.make_keys()
        self.openssl("rsa", "-in", "key", "-aes128", "-passout", "pass:x", "-traditional", "-out", "enciphered1")
        self.openssl("pkcs8", "-in", "key", "-topk8", "-passout", "pass:x", "-out", "enciphered8")
        self.openssl("genpkey", "-algorithm", "ed25519", "-out", "ed25519")
        der = self.openssl("pkey", "-in", "key", "-outform", "der", "-traditional")
        self.write("damaged", der[:400] + bytes([der[400] ^ 1]) + der[401:])
        self.run_tool("genkey", "rsa", "--bits", "600", "--out", "short", "--format", "der")
        short = self.read("short")
        self.write("short", short[:120] + bytes([short[120] ^ 1]) + short[121:])  # d, which a short key uses alone
        self.write("long", der + b"0")
        self.write("large", b"\x30\x82\x02\x62\x02\x82\x02\x59" + b"\x01" * 601 + b"\x02\x01\x03")
        self.write("even", b"\x30\x06\x02\x01\x22\x02\x01\x03")
        self.write("cut", self.read("key")[:500])
        names = sorted(os.listdir())
        for name, message in (("enciphered1", b"under a password"), ("enciphered8", b"under a password"), ("ed25519", b"no RSA key"),
                              ("damaged", b"do not belong together"), ("long", b"no RSA key"), ("large", b"more than 4800 bits"),
                              ("even", b"none of an RSA key"), ("cut", b"has no end"), ("public", b"no private key"),
                              ("missing", b"No such")):
            out, err = self.run_tool("rsa", "sign", "--key", name, "public", "new", code=INPUT_OUTPUT)
            self.assertRegex(err, b"^morvane: [^\n]*" + message + b"[^\n]*\n$")
        self.run_tool("rsa", "sign", "--key", "key", "--salt", "95", "public", "new", code=INPUT_OUTPUT)
        self.run_tool("rsa", "sign", "--key", "short", "--scheme", "pkcs1", "public", "new", code=INPUT_OUTPUT)
        self.run_tool("genkey", "rsa", "--out", "new", "--public", "public", code=INPUT_OUTPUT)  # before the long search
        self.assertEqual(sorted(os.listdir()), names)


def der(tag, *parts):
    """An element of DER; numbers among its parts become INTEGERs."""
    content = b"".join(der(2, part.to_bytes(part.bit_length() // 8 + 1, "big")) if isinstance(part, int) else part for part in parts)
    size = len(content)
    length = bytes([size]) if size < 128 else bytes([0x81, size]) if size < 256 else bytes([0x82, size >> 8, size & 255])
    return bytes([tag]) + length + content


DH = bytes.fromhex("06092a864886f70d010301")  # dhKeyAgreement


CURVES = {"sect163k1": "06052b81040001", "c2pnb163v1": "06082a8648ce3d030001", "secp160r1": "06052b81040008"}


class KeyTest(ToolTest):
    """DSA, Diffie-Hellman and curves against the openssl command of the system that runs the tests."""

    def verify(self, key, *options, code=GOOD, data=TEXT):
        out, _ = self.run_tool("verify", "--key", key, "--signature", "signature", *options, stdin=data, code=code)
        self.assertEqual(out, b"bad signature\n" if code else b"good signature\n")

    def integers(self, name):
        return [int(digits, 16) for digits in re.findall(rb"INTEGER +:(\w+)", self.openssl("asn1parse", "-in", name))]

    def test_dsa(self):
        self.write("data", TEXT)
        self.run_tool("genkey", "dsa", "--bits", "1088", "--subgroup-bits", "256", "--out", "ours", "--public", "ours-public")
        self.openssl("pkey", "-pubin", "-in", "ours-public", "-pubcheck", "-noout")
        self.assertEqual(self.openssl("pkey", "-in", "ours", "-traditional"), self.read("ours"))
        self.assertEqual(self.openssl("pkey", "-in", "ours", "-pubout"), self.read("ours-public"))
        if not IS_WINDOWS:
            self.assertEqual(os.stat("ours").st_mode & 0o777, 0o600)
        self.openssl("genpkey", "-genparam", "-algorithm", "DSA", "-pkeyopt", "dsa_paramgen_bits:1024", "-out", "parameters")
        self.run_tool("genkey", "dsa", "--params", "parameters", "--out", "new", "--public", "new-public", "--format", "der")
        self.run_tool("genkey", "dsa", "--params", "new", "--params-only", "--out", "same")
        self.assertEqual(self.read("same"), self.read("parameters"))
        self.openssl("pkey", "-pubin", "-in", "new-public", "-pubcheck", "-noout")
        for key, public, hashes in (("ours", "ours-public", (None, "has160", "sha256")), ("new", "new-public", ("ripemd160",))):
            for name in hashes:
                options = ("--hash", name) if name else ()
                self.run_tool("sign", "--key", key, *options, "data", "signature", "--force")
                if name != "has160":
                    self.openssl("dgst", f"-{name or 'sha1'}", "-verify", public, "-signature", "signature", "data")
                    self.openssl("dgst", f"-{name or 'sha1'}", "-sign", key, "-out", "signature", "data")
                self.verify(public, *options)
                self.verify(public, *options, data=TEXT + b"0", code=MISMATCH)
        # PKCS #8 has no public key; parameters often stand before a key
        self.openssl("pkey", "-in", "ours", "-out", "pkcs8")
        self.write("pkcs8", self.read("parameters") + self.read("pkcs8"))
        self.run_tool("sign", "--key", "pkcs8", "data", "signature", "--force")
        self.verify("pkcs8")
        self.openssl("dgst", "-sha1", "-verify", "ours-public", "-signature", "signature", "data")
        # the library alone takes these numbers for a signature of everything
        self.write("signature", der(0x30, 1, 0))
        self.verify("ours-public", code=MISMATCH)
        self.run_tool("sign", "--key", "new", "--hash", "sha256", code=INPUT_OUTPUT)  # longer than q

    def test_kcdsa(self):
        for kind in ("plain", "seeded", "builtin")[IS_WINDOWS:]:
            out, _ = self.run_tool("genkey", "kcdsa", "--kind", kind, "--out", "key", "--public", "public", "--force")
            self.assertRegex(out, rb"^seed: [0-9a-f]{40}\ncount: [1-9]\d*\n$" if kind == "seeded" else b"^$")
        self.assertIn(b":1.2.410.200004.1.1", self.openssl("asn1parse", "-in", "public"))
        self.run_tool("genkey", "kcdsa", "--params-only", "--params", "key", "--out", "parameters")
        self.run_tool("genkey", "kcdsa", "--params", "parameters", "--out", "second", "--public", "second-public")
        for options in ((), ("--hash", "sha1"), ("--old",), ("--old", "--hash", "md5")):
            signature, _ = self.run_tool("sign", "--key", "second", *options, stdin=TEXT)
            self.write("signature", signature)
            self.verify("second", *options)
            self.verify("second-public", *options)
            self.verify("second-public", *options, data=TEXT[1:], code=MISMATCH)
            self.verify("public", *options, code=MISMATCH)
            self.write("signature", signature[:-1] + bytes([signature[-1] ^ 1]))
            self.verify("second-public", *options, code=MISMATCH)
        # without an algorithm's name, numbers are taken for DSA's unless the label or an option tells
        p, q, g = self.integers("parameters")
        x = q // 3
        y = pow(g, pow(x, -1, q), p)
        for label in (None, b"KCDSA PRIVATE KEY"):
            bare = der(0x30, 0, p, q, g, y, x)
            self.write("bare", b"-----BEGIN %s-----\n%s-----END %s-----\n" % (label, binascii.b2a_base64(bare), label) if label else bare)
            kind = () if label else ("--kind", "kcdsa")
            self.write("signature", self.run_tool("sign", "--key", "bare", *kind, stdin=TEXT)[0])
            self.verify("bare", *kind)
            # the same x without y
            self.write("wrapped", der(0x30, 0, der(0x30, bytes.fromhex("06082a831a8c9a440101"), der(0x30, p, q, g)), der(4, x)))
            self.verify("wrapped")
        for damaged in (der(0x30, 0, p, q, g, y, x + 1), der(0x30, 0, p, q, g, y, 0), der(0x30, 0, p, q, g, y, q), der(0x30, 0, p, q + 1, g, y, x)):
            self.write("bare", damaged)
            self.run_tool("sign", "--key", "bare", "--kind", "kcdsa", stdin=TEXT, code=INPUT_OUTPUT)
        for domain in (der(0x30, p, q, g + 1), der(0x30, p + 2 * q, q, g), der(0x30, p, 3 * q, g)):
            self.write("bad", domain)
            self.run_tool("genkey", "kcdsa", "--params", "bad", "--out", "new", code=INPUT_OUTPUT)

    def test_dh(self):
        self.run_tool("genkey", "dh", "--bits", "512", "--generator", "5", "--params-only", "--out", "parameters")
        self.openssl("pkeyparam", "-in", "parameters", "-check", "-noout")
        self.run_tool("genkey", "dh", "--params", "parameters", "--out", "ours", "--public", "ours-public")
        self.openssl("genpkey", "-paramfile", "parameters", "-out", "theirs")
        self.openssl("pkey", "-in", "theirs", "-pubout", "-outform", "der", "-out", "theirs-public")
        self.openssl("pkey", "-in", "ours", "-check", "-noout")
        secret = self.openssl("pkeyutl", "-derive", "-inkey", "theirs", "-peerkey", "ours-public")
        self.assertEqual(self.run_tool("derive", "--key", "ours", "--peer", "theirs-public")[0], secret)
        self.run_tool("derive", "--key", "theirs", "--peer", "ours", "--format", "hex", "secret")
        self.assertEqual(self.read("secret"), binascii.hexlify(secret) + b"\n")
        # with a length for x, which OpenSSL writes too
        self.openssl("genpkey", "-genparam", "-algorithm", "DH", "-pkeyopt", "group:ffdhe2048", "-out", "group")
        self.write("group", der(0x30, *self.integers("group"), 300))
        self.run_tool("genkey", "dh", "--params", "group", "--out", "group-key")
        self.assertRegex(self.openssl("asn1parse", "-in", "group-key"), rb":012C\n.*OCTET STRING +\[HEX DUMP\]:022[56]")

        # a secret with a zero in front
        p, g = self.integers("parameters")
        x = p // 3
        self.write("ours", der(0x30, 0, der(0x30, DH, der(0x30, p, g)), der(4, x)))

        def write_peer(y, g=g):
            self.write("peer", der(0x30, der(0x30, DH, der(0x30, p, g)), der(3, b"\0", y)))

        write_peer(next(y for y in range(2, 10000) if pow(y, x, p).bit_length() <= 504))
        for ours, theirs in (((), "0"), (("--pad",), "1")):
            self.assertEqual(self.run_tool("derive", "--key", "ours", "--peer", "peer", *ours)[0],
                             self.openssl("pkeyutl", "-derive", "-inkey", "ours", "-peerkey", "peer", "-pkeyopt", "dh_pad:" + theirs))
        for y, generator in ((0, g), (1, g), (p - 1, g), (p + 5, g), (4, g + 1)):
            write_peer(y, generator)
            self.assertEqual(self.run_tool("derive", "--key", "ours", "--peer", "peer", code=MISMATCH)[0], b"")
        for bad in (der(0x30, p + 2, g), der(0x30, p, g, 100)):  # no prime; a short x
            self.write("bad", bad)
            self.run_tool("genkey", "dh", "--params", "bad", "--out", "new", code=INPUT_OUTPUT)

    def test_ec(self):
        self.write("data", TEXT)
        for curve in list(CURVES)[2 if IS_WINDOWS else 0:]:  # Wine is slow to start
            form = "der" if curve == "c2pnb163v1" else "pem"
            self.run_tool("genkey", "EC", "--curve", curve, "--out", "ours", "--public", "ours-public", "--format", form, "--force")
            self.openssl("pkey", "-in", "ours", "-check", "-noout")
            self.assertEqual(self.openssl("pkcs8", "-topk8", "-nocrypt", "-in", "ours", "-outform", form), self.read("ours"))
            self.assertEqual(self.openssl("pkey", "-in", "ours", "-pubout", "-outform", form), self.read("ours-public"))
            # SEC 1 behind its parameters, bare and without the public key, and so in PKCS #8
            self.openssl("ecparam", "-name", curve, "-genkey", "-out", "theirs")
            self.openssl("ec", "-in", "theirs", "-no_public", "-outform", "der", "-out", "sec1")
            self.openssl("pkey", "-in", "sec1", "-out", "pkcs8")
            self.openssl("pkey", "-in", "theirs", "-pubout", "-outform", "der", "-out", "theirs-public")
            secret = self.openssl("pkeyutl", "-derive", "-inkey", "theirs", "-peerkey", "ours-public")
            self.assertEqual(len(secret), 20 if curve == "secp160r1" else 21)
            for key, peer in (("ours", "theirs-public"), ("theirs", "ours-public"), ("sec1", "ours"), ("pkcs8", "ours-public")):
                self.assertEqual(self.run_tool("derive", "--key", key, "--peer", peer)[0], secret, key)
            for key in ("ours", "sec1"):
                self.run_tool("sign", "--key", key, "data", "signature", "--force")
                self.openssl("dgst", "-sha1", "-verify", "ours-public" if key == "ours" else "theirs-public", "-signature", "signature", "data")
            self.openssl("dgst", "-sha1", "-sign", "theirs", "-out", "signature", "data")
            self.verify("theirs-public", "--hash", "SHA1")
            self.verify("pkcs8", data=TEXT[1:], code=MISMATCH)
            self.verify("ours-public", code=MISMATCH)
            self.write("signature", self.read("signature") + b"0")
            self.verify("theirs-public", code=MISMATCH)
        self.write("signature", self.run_tool("sign", "--key", "ours")[0])  # of nothing
        self.verify("ours-public", data=b"")

    def test_files_of_other_curves_and_of_no_key(self):
        self.run_tool("genkey", "ec", "--curve", "secp160r1", "--out", "key", "--format", "der")
        self.openssl("pkey", "-in", "key", "-pubout", "-ec_conv_form", "compressed", "-out", "compressed")
        self.openssl("pkey", "-in", "key", "-ec_param_enc", "explicit", "-out", "explicit")
        self.openssl("genpkey", "-algorithm", "EC", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-out", "p256")
        ec, curves = bytes.fromhex("06072a8648ce3d0201"), {name: bytes.fromhex(oid) for name, oid in CURVES.items()}
        order = (1 << 160) + 0x1F4C8F927AED3CA752257  # of secp160r1
        point = self.read("key")[-41:]

        def private(d, more=b"", curve="secp160r1"):
            return der(0x30, 1, der(4, d.to_bytes(21, "big")), der(0xa0, curves[curve]), more)

        self.write("off", der(0x30, der(0x30, ec, curves["secp160r1"]), der(3, b"\0\4" + b"\5" * 40)))
        self.write("zero", private(0))
        self.write("order", private(order))
        self.write("foreign", private(2, der(0xa1, der(3, b"\0" + point))))
        self.write("two", der(0x30, 0, der(0x30, ec, curves["secp160r1"]), der(4, private(2, curve="sect163k1"))))
        names = sorted(os.listdir())
        cases = (("compressed", b"compressed"), ("explicit", b"by name"), ("p256", b"curve is not given as"), ("off", b"no uncompressed point"),
                 ("zero", b"not below the order"), ("order", b"not below the order"), ("foreign", b"do not belong together"), ("two", b"two curves"))
        for name, message in cases[::3] if IS_WINDOWS else cases:
            err = self.run_tool("ec", "encrypt", "--key", name, "key", "new", code=INPUT_OUTPUT)[1]
            self.assertRegex(err, b"^morvane: " + name.encode() + b": [^\n]*" + message + b"[^\n]*\n$")
        # the last number that is one, with the base point mirrored
        self.write("last", private(order - 1))
        self.run_tool("sign", "--key", "last", "key", "signature")
        self.openssl("pkey", "-in", "last", "-pubout", "-out", "last-public")
        self.openssl("dgst", "-sha1", "-verify", "last-public", "-signature", "signature", "key")
        for peer in ("other", "dh"):
            self.run_tool("genkey", *(("dh", "--bits", "64") if peer == "dh" else ("ec", "--curve", "sect163k1")), "--out", peer)
            self.assertEqual(self.run_tool("derive", "--key", "key", "--peer", peer, code=MISMATCH)[0], b"")
        self.assertEqual(sorted(os.listdir()), sorted([*names, "last", "last-public", "signature", "other", "dh"]))

    def test_eckcdsa(self):
        for curve in list(CURVES)[2 if IS_WINDOWS else 0:]:
            self.run_tool("genkey", "eckcdsa", "--curve", curve, "--out", "key", "--public", "public", "--force")
            self.assertRegex(self.openssl("asn1parse", "-in", "public"), b":1.2.410.200004.1.100\n.*:" + curve.encode())
            signature, _ = self.run_tool("sign", "--key", "key", stdin=TEXT)
            self.write("signature", signature)
            self.verify("public", "--hash", "has160")
            self.verify("key", data=TEXT[1:], code=MISMATCH)
            self.write("signature", signature[:-1] + bytes([signature[-1] ^ 1]))
            self.verify("public", code=MISMATCH)

    def test_ec_encryption(self):
        for curve in list(CURVES)[2 if IS_WINDOWS else 0:]:
            for name in ("key", "other"):
                self.run_tool("genkey", "ec", "--curve", curve, "--out", name, "--public", name + "-public", "--force")
            sizes = (100001,) if IS_WINDOWS else (1, 100001)
            for size in sizes:
                self.write("data", key_of(size))
                self.run_tool("ec", "encrypt", "--key", "key-public", "data", "cipher", "--force")
                cipher = self.read("cipher")
                self.assertEqual(len(cipher), size + (61 if curve == "secp160r1" else 63))
                self.assertEqual(self.run_tool("ec", "decrypt", "--key", "key", stdin=cipher)[0], key_of(size))
            names = sorted(os.listdir())
            # form of the point, message, tag; a message of no bytes
            wrong = [cipher[:at] + bytes([cipher[at] ^ 1]) + cipher[at + 1:] for at in (0, 100, len(cipher) - 1)] + [cipher[:-size], b""]
            for key, data in (("other", cipher), *(("key", data) for data in (wrong[::2] if IS_WINDOWS else wrong))):
                err = self.run_tool("ec", "decrypt", "--key", key, "-", "new", stdin=data, code=MISMATCH)[1]
                self.assertEqual(err.rstrip(), b"morvane: standard input: wrong key or damaged data")
            self.assertEqual(sorted(os.listdir()), names)
        self.write_zeros("long", (64 << 20) + 1)
        for name, message in (("-", b"is empty"), ("long", b"too long")):
            out, err = self.run_tool("ec", "encrypt", "--key", "key-public", name, code=INPUT_OUTPUT)
            self.assertEqual((out, message in err), (b"", True))

    def test_wrong_usage(self):
        self.run_tool("genkey", "dsa", "--bits", "512", "--out", "dsa", "--public", "public")
        self.run_tool("genkey", "dh", "--bits", "64", "--out", "dh")
        for kind in ("ec", "eckcdsa"):
            self.run_tool("genkey", kind, "--curve", "secp160r1", "--out", kind)
        names = sorted(os.listdir())
        new = ("--out", "new")
        cases = (("genkey", "dsa", "--kind", "seeded", *new), ("genkey", "kcdsa", "--kind", "seeded", "--bits", "1023", *new),
                 ("genkey", "kcdsa", "--kind", "builtin", "--bits", "1024", *new), ("genkey", "dsa", "--subgroup-bits", "1024", *new),
                 ("genkey", "dsa", "--params", "dsa", "--bits", "512", *new), ("genkey", "rsa", "--params-only", *new),
                 ("genkey", "dsa", "--params-only", "--public", "other", *new), ("genkey", "dh", "--generator", "1", *new),
                 ("genkey", "rsa", "--generator", "2", *new), ("sign",), ("verify", "--key", "public"), ("derive", "--key", "dh"),
                 ("sign", "--key", "dsa", "--old"), ("sign", "--key", "dsa", "--salt", "1"), ("sign", "--key", "dsa", "--hash", "none"),
                 ("sign", "--key", "-"), ("sign", "--key", "dsa", "--kind", "none"),
                 ("genkey", "ec", *new), ("genkey", "eckcdsa", "--curve", "secp160k1", *new),
                 ("genkey", "ec", "--curve", "secp160r1", "--bits", "160", *new), ("genkey", "ec", "--curve", "secp160r1", "--params", "ec", *new),
                 ("sign", "--key", "ec", "--hash", "sha256"), ("sign", "--key", "eckcdsa", "--hash", "sha1"), ("sign", "--key", "ec", "--old"),
                 ("sign", "--key", "ec", "--salt", "1"), *(("genkey", kind, "--curve", "secp160r1", *new) for kind in ("rsa", "dsa", "kcdsa", "dh")))
        for arguments in cases[::5] if IS_WINDOWS else cases:
            self.assertEqual(self.run_tool(*arguments, code=USAGE)[0], b"", arguments)
        for arguments in (("sign", "--key", "public"), ("sign", "--key", "dh"), ("derive", "--key", "dsa", "--peer", "dsa"),
                          ("genkey", "dh", "--params", "dsa", *new), ("sign", "--kind", "kcdsa", "--key", "dh"),
                          ("derive", "--key", "eckcdsa", "--peer", "ec"), ("ec", "encrypt", "--key", "eckcdsa"), ("ec", "encrypt", "--key", "ec"),
                          ("genkey", "dsa", "--out", "public")):
            self.assertEqual(self.run_tool(*arguments, code=INPUT_OUTPUT)[0], b"", arguments)
        self.assertEqual(sorted(os.listdir()), names)


class CommandTest(ToolTest):
    def test_wrong_usage(self):
        verbs = {"": ["", "nothing", "help nothing", "list sha1"], "digest": ["", "nothing", "sha1 --nothing", "sha1 --quiet"],
                 "random": ["", "-1", "99999999999999999999", "many", "5 --source nothing", "5 --format nothing"],
                 "prime": ["", "1", "16385", "many", "64 --kind none", "64 --format oct", "64 --step 4", "64 --kind dh", "64 --test 5",
                           "--test 0x", "--test 12a", "--test -3", "64 --kind dh --step x"],
                 "genkey": ["rsa", "none --out new", "rsa --out new --bits 31", "rsa --out new --bits 4801",
                            "rsa --out new --exponent 4", "rsa --out new --public new"],
                 "rsa": ["none --key key", "sign", "encrypt --key key --scheme pss", "sign --key -", "verify --key key",
                         "sign --key key --label x", "encrypt --key key --scheme pkcs1 --hash sha1"],
                 "ec": ["encrypt", "sign --key key", "decrypt --key -"]}
        for verb, cases in verbs.items():
            for case in cases[::4] if IS_WINDOWS else cases:  # Wine is slow to start
                out, err = self.run_tool(*verb.split(), *case.split(), code=USAGE)
                self.assertEqual(out, b"", (verb, case))
                self.assertRegex(err, rb"^morvane: [^\n]*; see 'morvane help[^\n]*'\n$")
        self.assertEqual(os.listdir(), [])

    def test_standard_output_that_fails(self):
        des = ("encrypt", *CipherTest.DES)
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
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    COMMAND = sys.argv[2:] + [os.path.abspath(sys.argv[1])]
    IS_WINDOWS = sys.argv[1].endswith(".exe")
    unittest.main(argv=sys.argv[:1])
