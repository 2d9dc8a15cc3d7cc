#include "key.h"

#include "dh_key.h"
#include "dsa_key.h"
#include "ec_key.h"
#include "eckcdsa_key.h"
#include "input.h"
#include "kcdsa_key.h"
#include "rsa_key.h"
#include "usage.h"

namespace morvane::tool {
namespace {

// Parameters and keys without a wrapping may look alike: the first kind that can read them has them, unless one is named.
constexpr KeyKind kKinds[] = {
    {"rsa", "RSA", "4-600", "encryption: pkcs1, oaep, oaep-sha1-old; signatures: pkcs1, pss", read_rsa_key,
     prepare_rsa_key},
    {"dsa", "DSA", "8-600", "signatures", read_dsa_key, prepare_dsa_key},
    {"kcdsa", "KCDSA", "8-600", "signatures", read_kcdsa_key, prepare_kcdsa_key},
    {"dh", "Diffie-Hellman", "8-600", "agreed secrets", read_dh_key, prepare_dh_key},
    {"ec", "EC", "20-21", "encryption, signatures, agreed secrets; sect163k1, c2pnb163v1, secp160r1", read_ec_key,
     prepare_ec_key},
    {"eckcdsa", "EC-KCDSA", "20-21", "signatures; the same curves", read_eckcdsa_key, prepare_eckcdsa_key},
};

std::string titles() {
    std::string text;
    for (const KeyKind& kind : kKinds) {
        if (!text.empty()) text += &kind == std::end(kKinds) - 1 ? " or " : ", ";
        text += kind.title;
    }
    return text;
}

std::unique_ptr<Key> read_any(const KeyFile& file, const KeyKind* wanted) {
    if (wanted != nullptr) return wanted->read(file);
    for (const KeyKind& kind : kKinds) {
        if (std::unique_ptr<Key> key = kind.read(file)) return key;
    }
    return nullptr;
}

}  // namespace

void SignatureOptions::refuse_those_of_rsa() const {
    if (scheme || mask_hash || salt) throw UsageError("--scheme, --mgf-hash and --salt are for RSA keys");
}

void SignatureOptions::refuse_those_of_kcdsa() const {
    if (old) throw UsageError("--old is for KCDSA keys");
}

void KeyOptions::refuse_curve() const {
    if (curve) throw UsageError("--curve is for ec and eckcdsa");
}

std::vector<std::uint8_t> Key::sign(const SignatureOptions&, const std::string&) const {
    throw KeyError("is a key of a kind that does not sign");
}

bool Key::verify(const SignatureOptions&, const std::string&, Bytes) const {
    throw KeyError("is a key of a kind that does not sign");
}

Secret Key::agree(const Key&, bool) const { throw KeyError("is a key of a kind that agrees on no secrets"); }

std::span<const KeyKind> all_key_kinds() { return kKinds; }

const KeyKind& find_key_kind(const std::string& option, std::string_view name) { return find_row(kKinds, option, name); }

std::unique_ptr<Key> read_key(const std::string& name, KeyPart wanted, const KeyKind* kind) {
    const auto fail = [&](const std::string& why) { return InputError(display_name(name) + ": " + why); };
    const KeyFile file(name);
    try {
        std::unique_ptr<Key> key = read_any(file, kind);
        if (key == nullptr) {
            throw fail("holds no " + (kind != nullptr ? std::string(kind->title) : titles()) +
                       " key, or one of more than 4800 bits, or with an exponent or a generator of more than 32");
        }
        if (key->part() < wanted) throw fail(wanted == KeyPart::kPrivate ? "holds no private key" : "holds no key");
        return key;
    } catch (const KeyError& error) {
        throw fail(error.what());
    }
}

}  // namespace morvane::tool
