#!/usr/bin/env python3
"""The Python bindings against the built library: the project's vectors through plain functions, the layers above them,
and the size of every record as the kept interface has it.

usage: test_bindings.py FOLDER ABI
FOLDER holds the library, ABI is the file in abi/ for this platform.
"""

import ctypes
import glob
import os
import re
import sys
import unittest

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), "..", ".."))
sys.path.insert(0, os.path.join(ROOT, "python"))
import morvane  # noqa: E402
from morvane import declarations as c  # noqa: E402


def vectors(name):
    with open(os.path.join(ROOT, "tests", "vectors", name + ".txt"), encoding="utf-8") as file:
        for block in file.read().split("\n\n"):
            lines = [line for line in block.splitlines() if line and not line.startswith("#")]
            if lines:
                yield dict(re.fullmatch(r"(\w+) = ?(.*)", line).groups() for line in lines)


class Bindings(unittest.TestCase):
    def test_digests(self):
        for name in ("MD2", "MD4", "SHA1", "SHA256", "SHA384", "SHA512", "HAS160", "RIPEMD160"):
            for vector in vectors(name.lower()):
                message = bytes.fromhex(vector["message"]) * int(vector.get("times", 1))
                for cut in (0, len(message) // 3):
                    self.assertEqual(library.digest(name, message[:cut], message[cut:]).hex(), vector["digest"], name)

    def test_provider_layer(self):
        session, out = c.CspSession(context_type=c.CSP_CONTEXT_DIGEST, algorithm=c.CSP_ALG_SHA1), c.CSSM_DATA()
        handle = ctypes.addressof(session)
        text = (ctypes.c_uint8 * 3)(*b"abc")
        self.assertEqual(library.CSP_DigestDataInit(0, handle, None), 0)
        self.assertEqual(library.CSP_DigestDataUpdate(0, handle, c.CSSM_DATA(3, text), 1), 0)
        out.Data, out.Length = (ctypes.c_uint8 * 20)(), 20
        self.assertEqual(library.CSP_DigestDataFinal(0, handle, out), 0)
        self.assertEqual(ctypes.string_at(out.Data, 20), library.digest("SHA1", b"abc"))
        self.assertEqual(library.CSP_DigestDataInit(0, 0, None), -1)
        self.assertEqual(library.GetError(), c.CSP_ERR_NO_CONTEXT)

    def test_toolkit(self):
        with library.toolkit() as kit:
            key, text = bytes(range(16)), b"attack at dawn"
            for message in (b"", text, library.random(5000)):
                sealed = kit.K_Encryption(c.K_CIPHER_SEED, c.K_OPTION_CBC_PKCS5, key, message)
                self.assertEqual(kit.K_Decryption(c.K_CIPHER_SEED, c.K_OPTION_CBC_PKCS5, key, sealed), message)
            public, private = kit.K_GenerateECCKeyPair(7)
            signature = kit.K_ECDSASign(7, private, text)
            self.assertIsNone(kit.K_ECDSAVerify(7, public, text, signature))
            with self.assertRaises(morvane.MorvaneError) as failure:
                kit.K_ECDSAVerify(7, public, text + b"!", signature)
            self.assertEqual(failure.exception.code, c.KERR_VERIFY)

    def test_record_sizes(self):
        with open(abi, encoding="utf-8") as file:
            sizes = re.findall(r"^record (\w+), (\d+) bytes", file.read(), re.M)
        self.assertGreater(len(sizes), 30)
        for name, size in sizes:
            record = getattr(c, name if hasattr(c, name) else name.upper())
            self.assertEqual(ctypes.sizeof(record), int(size), name)

    def test_names_in_other_languages(self):
        listed = {row[0] for table in (c.MorvaneCrypto, c.MorvaneCommon) for row in table.values()}
        found = set()
        for name in glob.glob(os.path.join(ROOT, "examples", "bindings", "*")):
            with open(name, encoding="utf-8") as file:
                found |= set(re.findall(r"_[A-Z]+_\w+@\d+", file.read()))
        self.assertGreater(len(found), 2)
        self.assertLessEqual(found, listed)


if __name__ == "__main__":
    library, abi = morvane.load(sys.argv[1]), sys.argv[2]
    unittest.main(argv=sys.argv[:1])
