#include "rsa_schemes.h"

#include "output.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace morvane::tool {
namespace {

using Bytes = std::span<const std::uint8_t>;

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
    constexpr std::uint8_t kNothing = 0;
    std::vector<std::uint8_t> block(job.key.bytes());
    return E_RSA_Private_Encrypt(block.data(), &kNothing, 0, job.key.get()) == length(block) &&
           E_RSA_Public_Decrypt(block.data(), block.data(), length(block), job.key.get()) == 0;
}

}  // namespace

std::optional<std::size_t> most_plain_bytes(const RsaJob& job) {
    const std::size_t overhead = job.padding == Padding::kPkcs1  ? kPkcs1Overhead
                                 : job.padding == Padding::kOaep ? 2 * job.hash->field_bytes + 2
                                                                 : kOldOaepOverhead;
    if (job.key.bytes() < overhead) return std::nullopt;
    return job.key.bytes() - overhead;
}

std::vector<std::uint8_t> rsa_encrypt(const RsaJob& job, Bytes plain) {
    const LibraryQuiet quiet;
    std::vector<std::uint8_t> cipher(job.key.bytes());
    const E_RSA_KEY* const key = job.key.get();
    const auto encrypt = [&] {
        switch (job.padding) {
            case Padding::kPkcs1:
                return E_RSA_Public_Encrypt(cipher.data(), plain.data(), length(plain), key);
            case Padding::kOldOaep:
                return E_RSA_Public_Encrypt_OAEP(cipher.data(), plain.data(), length(plain), job.label.data(),
                                                 length(job.label), key);
            default:
                return E_RSAES_OAEP_Encrypt(job.hash->id, job.mask_hash->id, cipher.data(), plain.data(), length(plain),
                                            job.label.data(), length(job.label), key);
        }
    };
    if (encrypt() != length(cipher)) throw std::runtime_error("the library does not encipher with this key");
    return cipher;
}

std::optional<Secret> rsa_decrypt(const RsaJob& job, Bytes cipher) {
    if (cipher.size() != job.key.bytes()) return std::nullopt;
    const LibraryQuiet quiet;
    Secret plain(std::vector<std::uint8_t>(job.key.bytes()));
    std::uint8_t* const out = (*plain).data();
    const E_RSA_KEY* const key = job.key.get();
    const auto decrypt = [&] {
        switch (job.padding) {
            case Padding::kPkcs1:
                return E_RSA_Private_Decrypt(out, cipher.data(), length(cipher), key);
            case Padding::kOldOaep:
                return E_RSA_Private_Decrypt_OAEP(out, cipher.data(), length(cipher), job.label.data(), length(job.label),
                                                  key);
            default:
                return E_RSAES_OAEP_Decrypt(job.hash->id, job.mask_hash->id, out, cipher.data(), length(cipher),
                                            job.label.data(), length(job.label), key);
        }
    };
    const std::int32_t size = decrypt();
    // 0 is the length of an empty message as well as the answer to a key that is damaged.
    if (size <= 0 && !works(job)) refuse_key();
    if (size < 0) return std::nullopt;
    (*plain).resize(static_cast<std::size_t>(size));
    return plain;
}

std::optional<std::vector<std::uint8_t>> rsa_sign(const RsaJob& job, Bytes data) {
    const LibraryQuiet quiet;
    std::vector<std::uint8_t> signature(job.key.bytes());
    std::int32_t size = 0;
    if (job.padding == Padding::kPkcs1) {
        const std::vector<std::uint8_t> info = digest_info(*job.hash, data);
        if (info.size() + kPkcs1Overhead > job.key.bytes()) return std::nullopt;
        E_RSA_Sign(info.data(), length(info), signature.data(), &size, job.key.get());
    } else {
        const std::size_t needed = job.hash->field_bytes + static_cast<std::size_t>(job.salt_bytes) + 2;
        if (needed > job.key.bytes()) return std::nullopt;
        E_RSASSA_PSS_Sign(job.hash->id, job.mask_hash->id, signature.data(), &size, data.data(), length(data),
                          job.salt_bytes, job.key.get());
    }
    if (size != length(signature) || !rsa_verify(job, data, signature)) refuse_key();
    return signature;
}

bool rsa_verify(const RsaJob& job, Bytes data, Bytes signature) {
    if (signature.size() != job.key.bytes()) return false;
    const LibraryQuiet quiet;
    if (job.padding == Padding::kPss) {
        return E_RSASSA_PSS_Verify(job.hash->id, job.mask_hash->id, data.data(), length(data), signature.data(),
                                   length(signature), job.salt_bytes, job.key.get()) == 1;
    }
    // The library's own comparison would pass over what follows the DigestInfo, where a forger of signatures under small
    // exponents puts what he needs.
    const std::vector<std::uint8_t> info = digest_info(*job.hash, data);
    std::vector<std::uint8_t> opened(job.key.bytes());
    const std::int32_t size = E_RSA_Public_Decrypt(opened.data(), signature.data(), length(signature), job.key.get());
    return size == length(info) && std::equal(info.begin(), info.end(), opened.begin());
}

}  // namespace morvane::tool
