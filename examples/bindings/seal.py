"""Enciphers a text, deciphers it again, and signs it with a new key: seal.py [FOLDER OF THE LIBRARY]"""

import sys

import morvane
from morvane.declarations import K_CIPHER_SEED, K_OPTION_CBC_PKCS5, K_SIGN_SHA256

library = morvane.load(*sys.argv[1:])
print(library.digest("SHA256", b"abc").hex())
with library.toolkit() as kit:
    key = library.random(16)
    sealed = kit.K_Encryption(K_CIPHER_SEED, K_OPTION_CBC_PKCS5, key, b"attack at dawn")
    print(kit.K_Decryption(K_CIPHER_SEED, K_OPTION_CBC_PKCS5, key, sealed).decode())
    public, private = kit.K_GenerateRSAKey(2048)
    signature = kit.K_RSASign(K_SIGN_SHA256, private, b"attack at dawn")
    kit.K_RSAVerify(K_SIGN_SHA256, public, b"attack at dawn", signature)  # an exception where it is not valid
