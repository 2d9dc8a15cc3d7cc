#!/usr/bin/env python3
"""Enciphering and deciphering, compared with what other cipher programs make."""

import os
import signal
import subprocess
import sys
import time
import unittest

from tool_case import COMMAND, INPUT_OUTPUT, IS_WINDOWS, MISMATCH, TEXT, ToolTest, iv_of, key_of, lines_of, sha1

VECTORS = lines_of("tool_ciphers.txt")


class CipherTest(ToolTest):
    DES = ("des-cbc", "--key", key_of(8).hex(), "--iv", iv_of("des").hex())

    @staticmethod
    def options(name, key_bytes):
        iv = () if name == "rc4" or name.endswith("-ecb") else ("--iv", iv_of(name).hex())
        rounds = ("--rounds", "12") if name.startswith("rc5") else ()
        return (name, "--key", key_of(key_bytes).hex(), *iv, *rounds)

    def test_every_cipher_and_mode(self):
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


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
