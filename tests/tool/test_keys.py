#!/usr/bin/env python3
"""DSA, KCDSA, Diffie-Hellman and curves, against the openssl command of the system that runs the tests."""

import binascii
import os
import re
import sys
import unittest

from tool_case import GOOD, INPUT_OUTPUT, IS_WINDOWS, MISMATCH, TEXT, ToolTest, key_of


def der(tag, *parts):
    """An element of DER; numbers among its parts become INTEGERs."""
    content = b"".join(der(2, part.to_bytes(part.bit_length() // 8 + 1, "big")) if isinstance(part, int) else part for part in parts)
    size = len(content)
    length = bytes([size]) if size < 128 else bytes([0x81, size]) if size < 256 else bytes([0x82, size >> 8, size & 255])
    return bytes([tag]) + length + content


DH = bytes.fromhex("06092a864886f70d010301")  # dhKeyAgreement
CURVES = {"sect163k1": "06052b81040001", "c2pnb163v1": "06082a8648ce3d030001", "secp160r1": "06052b81040008"}


class KeyTest(ToolTest):
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
        for curve in list(CURVES)[2 if IS_WINDOWS else 0:]:
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


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
