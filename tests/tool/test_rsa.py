#!/usr/bin/env python3
"""RSA, against the openssl command of the system that runs the tests."""

import binascii
import hashlib
import os
import subprocess
import sys
import unittest

from tool_case import COMMAND, INPUT_OUTPUT, IS_WINDOWS, MISMATCH, TEXT, ToolTest, key_of


class RsaTest(ToolTest):
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
            for size in (most,) if IS_WINDOWS else (0, 1, most):
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
        self.run_tool("rsa", "encrypt", "--key", "key", "--hash", "sha512", "public", "new", code=INPUT_OUTPUT)  # too short for it
        self.run_tool("genkey", "rsa", "--out", "new", "--public", "public", code=INPUT_OUTPUT)  # before the long search
        self.assertEqual(sorted(os.listdir()), names)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
