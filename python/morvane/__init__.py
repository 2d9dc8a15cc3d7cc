"""MorvaneCrypto for Python, through ctypes.

    import morvane
    library = morvane.load()
    print(library.digest("SHA256", b"abc").hex())

`load` gives a Library: every function of the C interface under its own name, as the headers describe it, with the records and
constants in `morvane.declarations`, and above them a few methods that take and give bytes. A failure is a MorvaneError.

As in C, a key or an initialisation vector must have the length that its cipher wants; a Toolkit is used by one thread at a
time.
"""

import ctypes
import ctypes.util
import os
import sys

from . import declarations as c

__all__ = ["load", "Library", "Toolkit", "MorvaneError"]
__version__ = c.MORVANE_VERSION

_WINDOWS = sys.platform == "win32"
_DIGESTS = {"MD2": 16, "MD4": 16, "HAS160": 20, "RIPEMD160": 20, "SHA1": 20, "SHA256": 32, "SHA384": 48, "SHA512": 64}
_CONTEXT_OF = {"SHA384": c.E_SHA512_CTX, "MD4": c.E_MD5_CTX}


class MorvaneError(Exception):
    """A call that failed; `code` is what it returned."""

    def __init__(self, function, code):
        super().__init__(f"{function} failed: {code:#x}")
        self.code = code


def _open(name, folder):
    file = f"{name}.dll" if _WINDOWS else f"lib{name}.so.{c.MORVANE_VERSION_MAJOR}"
    here = os.path.dirname(os.path.abspath(__file__))
    # Beside this package in an unpacked archive, then wherever the system looks.
    folders = [folder] if folder else [os.path.join(here, "..", "..", "bin" if _WINDOWS else "lib")]
    for path in (os.path.join(each, file) for each in folders):
        if os.path.exists(path):
            return ctypes.CDLL(os.path.abspath(path)), os.path.abspath(path)
    if folder:
        raise OSError(f"no {file} in {folder}")
    return ctypes.CDLL(file), file


def load(folder=None):
    """The library; folder is where its two files are, if not beside this package or where the system looks for libraries.
    On Windows this takes a 32-bit Python."""
    return Library(folder)


class Library:
    """Every exported function of MorvaneCrypto and MorvaneCommon, and the methods below."""

    def __init__(self, folder=None):
        # The companion first, so that the other one finds it.
        for name in ("MorvaneCommon", "MorvaneCrypto"):
            cdecl, path = _open(name, folder)
            stdcall = ctypes.WinDLL(path) if _WINDOWS else cdecl
            for function, (windows_name, result, arguments) in getattr(c, name).items():
                decorated = "@" in windows_name
                pointer = getattr(stdcall if decorated else cdecl, windows_name if _WINDOWS else function)
                pointer.restype, pointer.argtypes = result, arguments
                setattr(self, function, pointer)

    def digest(self, name, *pieces):
        """The digest of the pieces, one after the other; name is one of MD2, MD4, HAS160, RIPEMD160, SHA1, SHA256, SHA384,
        SHA512. For SHA256 in several pieces of together 512 MiB and more see E_SHA256_Update."""
        if name not in _DIGESTS:
            raise ValueError(f"no such digest: {name}")
        context = _CONTEXT_OF.get(name) or getattr(c, f"E_{name}_CTX")
        state, result = context(), ctypes.create_string_buffer(_DIGESTS[name])
        getattr(self, f"E_{name}_Init")(ctypes.byref(state))
        for piece in pieces:
            # Lengths are words, that of HAS-160 a signed one.
            if len(piece) >= 1 << 31:
                raise ValueError("a piece has at most 2 GiB - 1")
            getattr(self, f"E_{name}_Update")(ctypes.byref(state), bytes(piece), len(piece))
        getattr(self, f"E_{name}_Final")(ctypes.byref(state), result)
        return result.raw

    def random(self, count):
        """Random bytes fit for keys."""
        result = ctypes.create_string_buffer(count)
        self.RAND_Bytes(result, count)
        return result.raw

    def toolkit(self):
        return Toolkit(self)


class Toolkit:
    """A context of the toolkit. Every K_ function that takes a context and hands out one buffer can be called as a method
    with bytes:

        with library.toolkit() as kit:
            sealed = kit.K_Encryption(K_CIPHER_SEED, K_OPTION_CBC_PKCS5, key, b"text")
            public, private = kit.K_GenerateRSAKey(2048)
            kit.K_RSAVerify(K_SIGN_SHA256, public, b"text", kit.K_RSASign(K_SIGN_SHA256, private, b"text"))

    Outputs stand last among the arguments and are what the method returns: bytes, a pair of them for key pairs, None for
    what only says yes. Whatever the method refuses raises a MorvaneError.
    """

    _OUTPUTS = {"K_GenHash": 1, "K_GenMac": 1, "K_VerifyMac": 0, "K_Encryption": 1, "K_Decryption": 1, "K_Encryption_IV_Fix": 1,
                "K_Decryption_IV_Fix": 1, "K_KeyEncryption": 1, "K_KeyDecryption": 1, "K_GenAssymetricKey": 2,
                "K_GenerateRSAKey": 2, "K_GenerateKCDSAKeyPair": 2, "K_GenerateKCDSAKeyPair_Params": 2,
                "K_RSAPublicEncrypt": 1, "K_RSAPrivateDecrypt": 1, "K_RSAPublicEncryptOAEP": 1, "K_RSAPrivateDecryptOAEP": 1,
                "K_RSAPrivateEncrypt": 1, "K_RSAPublicDecrypt": 1, "K_RSASign": 1, "K_RSAVerify": 0, "K_RSASignPSS": 1,
                "K_RSAVerifyPSS": 0, "K_KCDSASign": 1, "K_KCDSAVerify": 0, "K_KCDSASignHash": 1, "K_KCDSAVerifyHash": 0,
                "K_GenerateECCKeyPair": 2, "K_GenerateECKCDSAKeyPair": 2, "K_ECDSASign": 1, "K_ECDSAVerify": 0,
                "K_ECKCDSASign": 1, "K_ECKCDSAVerify": 0, "K_ECDH": 1, "K_ECC_Encryption": 1, "K_ECC_Decryption": 1}

    def __init__(self, library):
        self._library = library
        self._context = library.K_NewContext(None)
        if not self._context or library.K_KCCInit(self._context) != 0:
            raise MemoryError

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        if self._context:
            self._library.K_KCCTerm(self._context)
            self._library.K_EndContext(self._context)
            self._context = None

    def __getattr__(self, name):
        if name not in self._OUTPUTS:
            raise AttributeError(name)
        return lambda *arguments: self._call(name, arguments)

    def _call(self, name, arguments):
        held = [_data(each) if isinstance(each, (bytes, bytearray, memoryview)) else each for each in arguments]
        outputs = [c.CSSM_DATA() for _ in range(self._OUTPUTS[name])]
        code = getattr(self._library, name)(self._context, *held, *outputs)
        results = [ctypes.string_at(output.Data, output.Length) if output.Length else b"" for output in outputs]
        for output in outputs:
            self._library.K_free(self._context, output.Data)
        if code != 0:
            raise MorvaneError(name, code & 0xFFFFFFFF)
        return results[0] if len(results) == 1 else tuple(results) or None


def _data(octets):
    # At least one byte, so that there is an address for an empty message too.
    buffer = (ctypes.c_uint8 * max(len(octets), 1)).from_buffer_copy(bytes(octets) or b"\0")
    return c.CSSM_DATA(len(octets), buffer)
