// What keys of DSA and KCDSA share: the record, their files, the way to the toolkit, the test of a domain.
#pragma once

#include "file_digest.h"
#include "key.h"
#include "toolkit.h"

#include <morvane/dsa.h>

namespace morvane::tool {

// Lengths of the modulus and of the order.
struct DomainSize {
    std::int32_t p_bits, q_bits;
};

class SubgroupKey : public Key {
public:
    KeyPart part() const override { return part_; }
    EncodedKey encode(KeyPart wanted) const override;
    void tell(Json& json) const override;
    E_DSA_KEY* get() const { return record_.get(); }

    // False when the file has none of this kind. Throws KeyError for numbers that are those of no key.
    bool read(const KeyFile& file);

    // The bare forms of the library, which the toolkit takes.
    Secret der(KeyPart wanted) const;

    // A new domain and a pair in it: by the toolkit, if q has as many bits as it gives it, otherwise by the primitive.
    void generate(std::uint32_t selector, void (*primitive)(E_DSA_KEY*, std::int32_t, std::int32_t), DomainSize size);
    // The pair of call(context, inputs..., public, private).
    template <typename Call, typename... Inputs>
    void take_pair(Call call, const Inputs&... inputs) {
        take_private(*toolkit::make_pair(call, inputs...).second);
    }
    // To be called when the library has filled the record so far; throws std::bad_alloc if it did not.
    void generated(KeyPart part);
    // The other key is of the same kind.
    void take_domain(const Key& other);
    // Tests primes and order. Throws KeyError.
    void require_domain() const;

protected:
    struct Kind {
        std::string_view name;
        Bytes oid;
        std::string_view private_label, parameters_label;
        bool bare_private_keys;  // are written; otherwise PKCS #8
    };
    explicit SubgroupKey(const Kind& kind);

    // From x and the domain.
    virtual void compute_y() = 0;
    // y = g^exponent modulo p.
    void set_y(const ENUM& exponent);

    // The digest by that hash, which must not be longer than q.
    Digest digest_of(const std::string& hash, const std::string& input) const;

private:
    struct Wipe {
        void operator()(E_DSA_KEY* key) const;
    };
    void take_private(Bytes der);
    bool read_numbers(const KeyFile& file);
    void require_numbers() const;

    const Kind& kind_;
    std::unique_ptr<E_DSA_KEY, Wipe> record_;
    KeyPart part_ = KeyPart::kParameters;
};

inline std::int32_t length(Bytes bytes) { return static_cast<std::int32_t>(bytes.size()); }

// What the options say of a domain's size, as far as the kind has no other limits.
DomainSize domain_size(const KeyOptions& options, std::int64_t least_p_bits, std::int64_t least_difference);

// Throws UsageError for options that these keys do not have or that a given domain answers already.
void refuse_foreign_options(const KeyOptions& options, const Key* domain);

template <typename AnyKey>
std::unique_ptr<Key> read_subgroup_key(const KeyFile& file) {
    auto key = std::make_unique<AnyKey>();
    if (!key->read(file)) return nullptr;
    return key;
}

}  // namespace morvane::tool
