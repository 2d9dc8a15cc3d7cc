// A key of any kind, and the table of kinds.
#pragma once

#include "key_file.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

class Json;

// What a key holds. A private one serves where a public one is wanted, and each where parameters are.
enum class KeyPart { kParameters, kPublic, kPrivate };

// The numbers of a key are wrong, or it is none for what is wanted. Its text follows the name of the file.
struct KeyError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct EncodedKey {
    std::string_view label;  // of its PEM text
    Secret der;
};

// What the command line says of a signature, with the options that only some kinds have.
struct SignatureOptions {
    std::optional<std::string> hash;
    std::optional<std::string> scheme, mask_hash;  // RSA
    std::optional<std::int64_t> salt;              // RSA
    bool old = false;                              // KCDSA

    // Throw UsageError for options of the others.
    void refuse_those_of_rsa() const;
    void refuse_those_of_kcdsa() const;
};

// What the command line says of a key to be made.
struct KeyOptions {
    std::optional<std::string> kind, curve;
    std::optional<std::int64_t> bits, subgroup_bits, exponent, generator;
    bool parameters_only = false;

    // Throws UsageError for the option of keys on curves.
    void refuse_curve() const;
};

class Key {
public:
    virtual ~Key() = default;

    virtual KeyPart part() const = 0;
    // In the form in which the kind's files are written; `wanted` is part() or what comes before it.
    virtual EncodedKey encode(KeyPart wanted) const = 0;
    // Lines that tell how a new key came about.
    virtual std::string remark() const { return {}; }
    // Members of an object: sizes, the curve, and what the remark says.
    virtual void tell(Json& json) const = 0;

    // Of the file of this name, or standard input for "-". They throw UsageError for options of other kinds, KeyError,
    // which is also what kinds without signatures do, and InputError.
    virtual std::vector<std::uint8_t> sign(const SignatureOptions& options, const std::string& input) const;
    virtual bool verify(const SignatureOptions& options, const std::string& input, Bytes signature) const;

    // The secret that both sides' keys give, as long as the modulus with `padded`, otherwise without leading zeros; on a
    // curve always as long as a coordinate. Throws KeyError; MismatchError when the peer's key does not go with this one.
    virtual Secret agree(const Key& peer, bool padded) const;
};

struct KeyKind {
    std::string_view name, title;
    std::string_view sizes, note;  // for the list
    // Null when the file has a key of another kind, or none. Throws KeyError.
    std::unique_ptr<Key> (*read)(const KeyFile& file);
    // Looks at the options, throwing UsageError, and returns what makes such a key: with a domain, which is a key of this
    // kind, in that one. That may take minutes, and throws KeyError when the domain is none.
    std::function<std::unique_ptr<Key>()> (*prepare)(const KeyOptions& options, const Key* domain);
};

std::span<const KeyKind> all_key_kinds();

// Throws UsageError.
const KeyKind& find_key_kind(const std::string& option, std::string_view name);

// Reads a key in DER or PEM. Of the one kind, or of the first that can read it. Throws InputError.
std::unique_ptr<Key> read_key(const std::string& name, KeyPart wanted, const KeyKind* kind = nullptr);

}  // namespace morvane::tool
