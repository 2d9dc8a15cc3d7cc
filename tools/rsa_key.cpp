#include "rsa_key.h"

#include "file_digest.h"
#include "input.h"
#include "json.h"
#include "rsa_schemes.h"
#include "toolkit.h"
#include "usage.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>

#include <algorithm>
#include <array>

namespace morvane::tool {
namespace {

constexpr std::uint32_t kLeastExponent = 3;
constexpr std::int64_t kDefaultBits = 3072, kMostBits = std::int64_t{32} * E_RSA_MODULUS_WORDS;
constexpr std::int64_t kDefaultExponent = 65537;
constexpr std::int64_t kMostSaltBytes = std::int64_t{4} * E_RSA_MODULUS_WORDS;
constexpr std::size_t kAuxiliaryBytes = 13;

// rsaEncryption, and its parameters NULL.
constexpr std::array<std::uint8_t, 9> kRsaEncryption = {0x2a, 0x86, 0x48, 0x86, 0xf7, 0x0d, 0x01, 0x01, 0x01};
constexpr std::array<std::uint8_t, 2> kNull = {0x05, 0x00};

using Reader = void (*)(E_RSA_KEY* key, const std::uint8_t** input, std::uint32_t length);

bool read(const RsaKey& key, Reader reader, Bytes der) {
    const std::uint8_t* position = der.data();
    reader(key.get(), &position, static_cast<std::uint32_t>(der.size()));
    return position == der.data() + der.size() && !der.empty();
}

bool is_odd(const ENUM& x) { return x.length > 0 && x.words[0] % 2 != 0; }

// ---- Generation ----

using Generate = void(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e);

void generate_plain(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e) {
    if (e != kDefaultExponent) return E_RSA_GenerateKey(key, bits, e);
    const auto [open, secret] = toolkit::make_pair(K_GenerateRSAKey, static_cast<std::uint32_t>(bits));
    const std::uint8_t* position = (*secret).data();
    E_ASN1_GetRSAPrivateKey(key, &position, static_cast<std::uint32_t>((*secret).size()));
}

void generate_strong(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e) { E_RSA_GenerateStrongKey(key, bits, e); }

template <auto Generate>
void generate_x9(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e) {
    std::array<Secret, 4> primes;
    for (Secret& prime : primes) (*prime).resize(kAuxiliaryBytes);
    Generate(key, bits, e, (*primes[0]).data(), (*primes[1]).data(), (*primes[2]).data(), (*primes[3]).data());
}

struct PrimeKind {
    std::string_view name;
    std::int64_t least_bits;
    Generate* generate;
};

constexpr PrimeKind kPrimeKinds[] = {
    {"plain", 32, generate_plain},
    {"strong", 32, generate_strong},
    {"x9", 200, generate_x9<E_RSA_GenerateX9Key>},
    {"strong-x9", 200, generate_x9<E_RSA_GenerateStrongX9Key>},
};

// ---- Signatures ----

RsaJob signature_job(const RsaKey& key, const SignatureOptions& options) {
    options.refuse_those_of_kcdsa();
    const RsaScheme& scheme = find_row(kRsaSchemes, "--scheme", options.scheme.value_or("pss"));
    if (!scheme.signs) throw UsageError(std::string(scheme.name) + " makes no signatures");
    if (scheme.padding != Padding::kPss && (options.mask_hash || options.salt)) {
        throw UsageError("--mgf-hash and --salt are for pss");
    }
    if (options.salt && (*options.salt < 0 || *options.salt > kMostSaltBytes)) {
        throw UsageError("--salt is from 0 to " + std::to_string(kMostSaltBytes));
    }
    RsaJob job(key);
    job.padding = scheme.padding;
    job.hash = &find_row(kRsaHashes, "--hash", options.hash.value_or("sha256"));
    job.mask_hash = options.mask_hash ? &find_row(kRsaHashes, "--mgf-hash", *options.mask_hash) : job.hash;
    job.salt_bytes = static_cast<std::int32_t>(options.salt.value_or(static_cast<std::int64_t>(job.hash->field_bytes)));
    return job;
}

std::vector<std::uint8_t> data_to_sign(const RsaJob& job, const std::string& input) {
    if (job.padding == Padding::kPss) return read_whole(input);
    return FileDigester(*find_algorithm(Kind::kDigest, job.hash->name))(input);
}

}  // namespace

void RsaKey::Wipe::operator()(E_RSA_KEY* key) const {
    wipe({reinterpret_cast<std::uint8_t*>(key), sizeof *key});
    delete key;
}

RsaKey::RsaKey(KeyPart part) : record_(new E_RSA_KEY{}), part_(part) { E_RSA_Init(record_.get()); }

std::size_t RsaKey::bits() const { return EN_GetFilledBitNum(&record_->n); }

Secret RsaKey::der(KeyPart wanted) const {
    const auto put = wanted == KeyPart::kPrivate ? E_ASN1_PutRSAPrivateKey : E_ASN1_PutRSAPublicKey;
    Secret der(std::vector<std::uint8_t>(static_cast<std::size_t>(put(get(), nullptr))));
    put(get(), (*der).data());
    return der;
}

void RsaKey::tell(Json& json) const { json.member("bits", bits()).member("exponent", record_->e_words[0]); }

EncodedKey RsaKey::encode(KeyPart wanted) const {
    return {wanted == KeyPart::kPrivate ? "RSA PRIVATE KEY" : "RSA PUBLIC KEY", der(wanted)};
}

std::vector<std::uint8_t> RsaKey::sign(const SignatureOptions& options, const std::string& input) const {
    const RsaJob job = signature_job(*this, options);
    if (job.padding == Padding::kPss && bits() % 8 != 0) {
        // The library makes signatures then that others, or even itself, may refuse.
        throw KeyError("pss signs only under a modulus of a multiple of 8 bits");
    }
    std::optional<Secret> signature = rsa_sign(job, data_to_sign(job, input));
    if (!signature) throw KeyError("the key is too short for this scheme, hash and salt");
    return std::move(**signature);
}

bool RsaKey::verify(const SignatureOptions& options, const std::string& input, Bytes signature) const {
    const RsaJob job = signature_job(*this, options);
    return rsa_verify(job, data_to_sign(job, input), signature);
}

std::unique_ptr<Key> read_rsa_key(const KeyFile& file) {
    const bool wrapped = file.wrapping() != KeyFile::Wrapping::kNone;
    if (wrapped ? !std::ranges::equal(file.algorithm(), kRsaEncryption) || !std::ranges::equal(file.parameters(), kNull)
                : !file.may_be("rsa")) {
        return nullptr;
    }
    const Bytes der = wrapped ? file.key() : file.all();
    auto key = std::make_unique<RsaKey>(KeyPart::kPrivate);
    if (file.wrapping() == KeyFile::Wrapping::kPublic || !read(*key, E_ASN1_GetRSAPrivateKey, der)) {
        key = std::make_unique<RsaKey>(KeyPart::kPublic);
        if (file.wrapping() == KeyFile::Wrapping::kPrivate || !read(*key, E_ASN1_GetRSAPublicKey, der)) return nullptr;
    }
    const ENUM& e = key->get()->e;
    if (!is_odd(key->get()->n) || !is_odd(e) || e.words[0] < kLeastExponent) {
        throw KeyError("the modulus or the exponent in it is none of an RSA key");
    }
    return key;
}

std::function<std::unique_ptr<Key>()> prepare_rsa_key(const KeyOptions& options, const Key* domain) {
    if (domain != nullptr || options.parameters_only) throw UsageError("RSA keys have no parameters");
    if (options.subgroup_bits || options.generator) throw UsageError("RSA keys have no subgroup and no generator");
    options.refuse_curve();
    const PrimeKind& kind = find_row(kPrimeKinds, "--kind", options.kind.value_or("plain"));
    const std::int64_t bits = options.bits.value_or(kDefaultBits);
    if (bits < kind.least_bits || bits > kMostBits) {
        throw UsageError("--bits of " + std::string(kind.name) + " is from " + std::to_string(kind.least_bits) + " to " +
                         std::to_string(kMostBits));
    }
    const std::int64_t e = options.exponent.value_or(kDefaultExponent);
    if (e < kLeastExponent || e > UINT32_MAX || e % 2 == 0) {
        throw UsageError("--exponent is an odd number from 3 to " + std::to_string(UINT32_MAX));
    }
    return [&kind, bits, e]() -> std::unique_ptr<Key> {
        auto key = std::make_unique<RsaKey>(KeyPart::kPrivate);
        kind.generate(key->get(), static_cast<std::int32_t>(bits), static_cast<std::uint32_t>(e));
        if (key->bits() == 0) throw std::bad_alloc();
        return key;
    };
}

}  // namespace morvane::tool
