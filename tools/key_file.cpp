#include "key_file.h"

#include "input.h"
#include "pem.h"

#include <morvane/asn1.h>

#include <algorithm>
#include <array>
#include <bit>

namespace morvane::tool {
namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kMostFileBytes = 1 << 16;  // the longest key takes 7 KiB of PEM
constexpr std::uint32_t kLeastExponent = 3;

constexpr std::uint8_t kInteger = 0x02, kBitString = 0x03, kOctetString = 0x04, kSequence = 0x30;

// rsaEncryption, with its parameters NULL: the content of an AlgorithmIdentifier.
constexpr std::array<std::uint8_t, 13> kRsaEncryption = {0x06, 0x09, 0x2a, 0x86, 0x48, 0x86, 0xf7,
                                                         0x0d, 0x01, 0x01, 0x01, 0x05, 0x00};

// The content of the element of that tag that the bytes begin with; they are moved behind it. Nothing, and they stay, when
// they begin with another one or with none.
std::optional<Bytes> take(Bytes& bytes, std::uint8_t tag) {
    if (bytes.size() < 2 || bytes[0] != tag) return std::nullopt;
    std::size_t length = bytes[1], header = 2;
    if (length >= 0x80) {
        const std::size_t octets = length - 0x80;
        if (octets < 1 || octets > 2 || bytes.size() < header + octets) return std::nullopt;
        length = 0;
        for (const std::uint8_t octet : bytes.subspan(header, octets)) length = length << 8 | octet;
        if (length < (octets == 1 ? 0x80u : 0x100u)) return std::nullopt;
        header += octets;
    }
    if (bytes.size() - header < length) return std::nullopt;
    const Bytes content = bytes.subspan(header, length);
    bytes = bytes.subspan(header + length);
    return content;
}

bool take_rsa_algorithm(Bytes& bytes) {
    const std::optional<Bytes> algorithm = take(bytes, kSequence);
    return algorithm && std::ranges::equal(*algorithm, kRsaEncryption);
}

// SubjectPublicKeyInfo: the algorithm, and the key in a BIT STRING of whole octets.
std::optional<Bytes> unwrap_public(Bytes der) {
    std::optional<Bytes> info = take(der, kSequence);
    if (!info || !der.empty() || !take_rsa_algorithm(*info)) return std::nullopt;
    const std::optional<Bytes> key = take(*info, kBitString);
    if (!key || !info->empty() || key->empty() || key->front() != 0) return std::nullopt;
    return key->subspan(1);
}

// PrivateKeyInfo, of version 0 or 1: the algorithm, and the key in an OCTET STRING. Attributes may follow.
std::optional<Bytes> unwrap_private(Bytes der) {
    std::optional<Bytes> info = take(der, kSequence);
    if (!info || !der.empty()) return std::nullopt;
    const std::optional<Bytes> version = take(*info, kInteger);
    if (!version || version->size() != 1 || version->front() > 1 || !take_rsa_algorithm(*info)) return std::nullopt;
    return take(*info, kOctetString);
}

using Reader = void (*)(E_RSA_KEY* key, const std::uint8_t** input, std::uint32_t length);

bool read(const RsaKey& key, Reader reader, Bytes der) {
    const std::uint8_t* position = der.data();
    reader(key.get(), &position, static_cast<std::uint32_t>(der.size()));
    return position == der.data() + der.size() && !der.empty();
}

// Which part of a key the bytes held. The first one that can be read is it, for no form is also another one.
std::optional<KeyPart> read_der(const RsaKey& key, Bytes der) {
    const Bytes private_key = unwrap_private(der).value_or(der);
    if (read(key, E_ASN1_GetRSAPrivateKey, private_key)) return KeyPart::kPrivate;
    const Bytes public_key = unwrap_public(der).value_or(der);
    if (read(key, E_ASN1_GetRSAPublicKey, public_key)) return KeyPart::kPublic;
    return std::nullopt;
}

bool is_odd(const ENUM& x) { return x.length > 0 && x.words[0] % 2 != 0; }

}  // namespace

void RsaKey::Wipe::operator()(E_RSA_KEY* key) const {
    wipe({reinterpret_cast<std::uint8_t*>(key), sizeof *key});
    delete key;
}

RsaKey::RsaKey() : record_(new E_RSA_KEY{}) { E_RSA_Init(record_.get()); }

std::size_t RsaKey::bits() const {
    const ENUM& n = record_->n;
    for (auto i = static_cast<std::size_t>(std::max(n.length, 0)); i-- > 0;) {
        if (n.words[i] != 0) return 32 * i + static_cast<std::size_t>(std::bit_width(n.words[i]));
    }
    return 0;
}

RsaKey read_rsa_key(const std::string& name, KeyPart wanted) {
    const auto fail = [&](const std::string& why) -> InputError { return InputError(display_name(name) + ": " + why); };
    Secret file(std::vector<std::uint8_t>(kMostFileBytes + 1));
    Input input(name);
    const std::size_t size = input.read(*file);
    if (size > kMostFileBytes) throw fail("is too long for a key");
    const Bytes bytes = Bytes(*file).first(size);

    RsaKey key;
    std::optional<KeyPart> part;
    try {
        const std::optional<PemBlock> block = read_pem({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        part = read_der(key, block ? Bytes(*block->bytes) : bytes);
    } catch (const PemError& error) {
        throw fail(error.what());
    }
    if (!part) {
        throw fail("holds no RSA key, or one of more than " + std::to_string(32 * E_RSA_MODULUS_WORDS) +
                   " bits or with an exponent of more than 32");
    }
    const ENUM& e = key.get()->e;
    if (!is_odd(key.get()->n) || !is_odd(e) || e.words[0] < kLeastExponent) {
        throw fail("the modulus or the exponent in it is none of an RSA key");
    }
    if (wanted == KeyPart::kPrivate && *part != KeyPart::kPrivate) throw fail("holds no private key");
    return key;
}

Secret to_der(const RsaKey& key, KeyPart part) {
    const auto put = part == KeyPart::kPrivate ? E_ASN1_PutRSAPrivateKey : E_ASN1_PutRSAPublicKey;
    Secret der(std::vector<std::uint8_t>(static_cast<std::size_t>(put(key.get(), nullptr))));
    put(key.get(), (*der).data());
    return der;
}

Secret to_pem(const RsaKey& key, KeyPart part) {
    const Secret der = to_der(key, part);
    return write_pem(part == KeyPart::kPrivate ? "RSA PRIVATE KEY" : "RSA PUBLIC KEY", *der);
}

}  // namespace morvane::tool
