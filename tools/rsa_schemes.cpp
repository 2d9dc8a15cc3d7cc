#include "rsa_schemes.h"

#include "output.h"
#include "toolkit.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace morvane::tool {
namespace {

using toolkit::In;

constexpr std::size_t kPkcs1Overhead = 11;
constexpr std::size_t kOldOaepOverhead = 42;  // of the encoder: up to k - 22 the library enciphers zeros instead

std::int32_t length(Bytes bytes) { return static_cast<std::int32_t>(bytes.size()); }

std::vector<std::uint8_t> digest_info(const RsaHash& hash, Bytes digest) {
    const std::size_t algorithm = 2 + hash.oid.size() + 2;
    std::vector<std::uint8_t> info;
    const auto begin = [&](std::uint8_t tag, std::size_t bytes) {  // all are below 128
        info.push_back(tag);
        info.push_back(static_cast<std::uint8_t>(bytes));
    };
    begin(0x30, 2 + algorithm + 2 + digest.size());
    begin(0x30, algorithm);
    begin(0x06, hash.oid.size());
    std::ranges::copy(hash.oid, std::back_inserter(info));
    begin(0x05, 0);
    begin(0x04, digest.size());
    std::ranges::copy(digest, std::back_inserter(info));
    return info;
}

[[noreturn]] void refuse_key() { throw std::runtime_error("the numbers of the key do not belong together"); }

// Whether the two halves of the key undo each other. The library looks at this too, but only where it has remainders.
bool works(const RsaJob& job) {
    const Secret own = job.key.der(KeyPart::kPrivate), open = job.key.der(KeyPart::kPublic);
    const std::optional<Secret> block = toolkit::make(KERR_RSA_PRIVATE_ENCRYPT, K_RSAPrivateEncrypt, In(*own), In(Bytes()));
    if (!block) return false;
    const std::optional<Secret> nothing =
        toolkit::make(KERR_RSA_PUBLIC_DECRYPT, K_RSAPublicDecrypt, In(*open), In(**block));
    return nothing && (**nothing).empty();
}

// A result of the primitives: as many bytes as `transform` says that it wrote, or nothing for a negative number.
template <typename Transform>
std::optional<Secret> by_primitive(const RsaJob& job, Transform transform) {
    Secret out(std::vector<std::uint8_t>(job.key.bytes()));
    const std::int32_t size = transform((*out).data(), job.key.get());
    if (size < 0) return std::nullopt;
    (*out).resize(static_cast<std::size_t>(size));
    return out;
}

// What the toolkit's OAEP takes.
bool is_all_sha1(const RsaJob& job) { return job.hash->id == kSha1 && job.mask_hash->id == kSha1; }

}  // namespace

std::optional<std::size_t> most_plain_bytes(const RsaJob& job) {
    const std::size_t overhead = job.padding == Padding::kPkcs1  ? kPkcs1Overhead
                                 : job.padding == Padding::kOaep ? 2 * job.hash->field_bytes + 2
                                                                 : kOldOaepOverhead;
    if (job.key.bytes() < overhead) return std::nullopt;
    return job.key.bytes() - overhead;
}

Secret rsa_encrypt(const RsaJob& job, Bytes plain) {
    const LibraryQuiet quiet;
    const Secret key = job.key.der(KeyPart::kPublic);
    const auto encrypt = [&]() -> std::optional<Secret> {
        if (job.padding == Padding::kPkcs1) {
            return toolkit::make(KERR_RSA_PUBLIC_ENCRYPT, K_RSAPublicEncrypt, In(*key), In(plain));
        }
        if (job.padding == Padding::kOldOaep) {
            return by_primitive(job, [&](std::uint8_t* out, const E_RSA_KEY* rsa) {
                return E_RSA_Public_Encrypt_OAEP(out, plain.data(), length(plain), job.label.data(), length(job.label),
                                                 rsa);
            });
        }
        if (is_all_sha1(job)) {
            return toolkit::make(KERR_RSA_PUBLIC_ENCRYPT, K_RSAPublicEncryptOAEP, In(*key), In(job.label), In(plain));
        }
        return by_primitive(job, [&](std::uint8_t* out, const E_RSA_KEY* rsa) {
            return E_RSAES_OAEP_Encrypt(job.hash->id, job.mask_hash->id, out, plain.data(), length(plain), job.label.data(),
                                        length(job.label), rsa);
        });
    };
    std::optional<Secret> cipher = encrypt();
    if (!cipher || (**cipher).size() != job.key.bytes()) {
        throw std::runtime_error("the library does not encipher with this key");
    }
    return std::move(*cipher);
}

std::optional<Secret> rsa_decrypt(const RsaJob& job, Bytes cipher) {
    if (cipher.size() != job.key.bytes()) return std::nullopt;
    const LibraryQuiet quiet;
    const auto decrypt = [&]() -> std::optional<Secret> {
        if (job.padding == Padding::kOaep && is_all_sha1(job)) {
            const Secret key = job.key.der(KeyPart::kPrivate);
            return toolkit::make(KERR_RSA_PRIVATE_DECRYPT, K_RSAPrivateDecryptOAEP, In(*key), In(job.label), In(cipher));
        }
        return by_primitive(job, [&](std::uint8_t* out, const E_RSA_KEY* rsa) {
            switch (job.padding) {
                case Padding::kPkcs1:
                    return E_RSA_Private_Decrypt(out, cipher.data(), length(cipher), rsa);
                case Padding::kOldOaep:
                    return E_RSA_Private_Decrypt_OAEP(out, cipher.data(), length(cipher), job.label.data(),
                                                      length(job.label), rsa);
                default:
                    return E_RSAES_OAEP_Decrypt(job.hash->id, job.mask_hash->id, out, cipher.data(), length(cipher),
                                                job.label.data(), length(job.label), rsa);
            }
        });
    };
    std::optional<Secret> plain = decrypt();
    // No bytes are an empty message as well as the answer to a key that is damaged.
    if ((!plain || (**plain).empty()) && !works(job)) refuse_key();
    return plain;
}

std::optional<Secret> rsa_sign(const RsaJob& job, Bytes data) {
    const bool is_pss = job.padding == Padding::kPss;
    const std::vector<std::uint8_t> info = is_pss ? std::vector<std::uint8_t>() : digest_info(*job.hash, data);
    const std::size_t needed =
        is_pss ? job.hash->field_bytes + static_cast<std::size_t>(job.salt_bytes) + 2 : info.size() + kPkcs1Overhead;
    if (needed > job.key.bytes()) return std::nullopt;
    const LibraryQuiet quiet;
    const Secret key = job.key.der(KeyPart::kPrivate);
    const auto sign = [&] {
        if (!is_pss) return toolkit::make(KERR_RSA_PRIVATE_ENCRYPT, K_RSAPrivateEncrypt, In(*key), In(info));
        if (job.hash == job.mask_hash) {
            return toolkit::make(KERR_SIGN, K_RSASignPSS, job.hash->id, job.salt_bytes, In(*key), In(data));
        }
        return by_primitive(job, [&](std::uint8_t* out, const E_RSA_KEY* rsa) {
            std::int32_t size = 0;
            E_RSASSA_PSS_Sign(job.hash->id, job.mask_hash->id, out, &size, data.data(), length(data), job.salt_bytes, rsa);
            return size;
        });
    };
    std::optional<Secret> signature = sign();
    if (!signature || (**signature).size() != job.key.bytes() || !rsa_verify(job, data, **signature)) refuse_key();
    return signature;
}

bool rsa_verify(const RsaJob& job, Bytes data, Bytes signature) {
    if (signature.size() != job.key.bytes()) return false;
    const LibraryQuiet quiet;
    const Secret key = job.key.der(KeyPart::kPublic);
    if (job.padding == Padding::kPss) {
        if (job.hash == job.mask_hash) {
            return toolkit::check(KERR_VERIFY, K_RSAVerifyPSS, job.hash->id, job.salt_bytes, In(*key), In(data),
                                  In(signature));
        }
        return E_RSASSA_PSS_Verify(job.hash->id, job.mask_hash->id, data.data(), length(data), signature.data(),
                                   length(signature), job.salt_bytes, job.key.get()) == 1;
    }
    // All of it is compared: behind the DigestInfo a forger of signatures under small exponents puts what he needs.
    const std::vector<std::uint8_t> info = digest_info(*job.hash, data);
    const std::optional<Secret> opened =
        toolkit::make(KERR_RSA_PUBLIC_DECRYPT, K_RSAPublicDecrypt, In(*key), In(signature));
    return opened && **opened == info;
}

}  // namespace morvane::tool
