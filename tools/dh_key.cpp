#include "dh_key.h"

#include "json.h"
#include "usage.h"

#include <morvane/bignum.h>
#include <morvane/dh.h>
#include <morvane/prime.h>

#include <algorithm>
#include <array>

namespace morvane::tool {
namespace {

constexpr std::int64_t kDefaultBits = 2048, kLeastBits = 64, kMostBits = std::int64_t{32} * E_DH_WORDS;
constexpr std::int64_t kDefaultGenerator = 2;
constexpr std::uint32_t kLeastXBits = 160;  // that parameters may ask for; a short x is quickly found

constexpr std::array<std::uint8_t, 9> kOid = {0x2a, 0x86, 0x48, 0x86, 0xf7, 0x0d, 0x01, 0x03, 0x01};  // of PKCS #3

// 1 < value < p - 1, for an odd p
bool is_inside(const ENUM& value, const ENUM& p) {
    const Number last(E_DH_WORDS);
    EN_SubU32(last.get(), &p, 1);
    return EN_GetFilledBitNum(&value) > 1 && EN_UComp(&value, last.get()) < 0;
}

class DhKey final : public Key {
public:
    DhKey() : record_(new E_DH_KEY{}) { E_DH_Init(get()); }

    KeyPart part() const override { return part_; }
    EncodedKey encode(KeyPart wanted) const override;
    void tell(Json& json) const override {
        json.member("bits", EN_GetFilledBitNum(&get()->p)).member("generator", get()->g_words[0]);
    }
    Secret agree(const Key& peer, bool padded) const override;

    bool read(const KeyFile& file);
    void search(std::int32_t bits, std::uint32_t generator);
    void take_parameters(const DhKey& other);
    // Throws KeyError.
    void require_safe_prime() const;
    void draw();

private:
    struct Wipe {
        void operator()(E_DH_KEY* key) const {
            wipe({reinterpret_cast<std::uint8_t*>(key), sizeof *key});
            delete key;
        }
    };

    E_DH_KEY* get() const { return record_.get(); }
    bool read_parameters(Bytes parameters);
    Secret write_parameters() const;
    void require_numbers() const;

    std::unique_ptr<E_DH_KEY, Wipe> record_;
    std::uint32_t x_bits_ = 0;  // that the parameters ask for; 0 if they do not
    KeyPart part_ = KeyPart::kParameters;
};

// DHParameter of PKCS #3: p, g and, where there is one, the length of private values in bits.
bool DhKey::read_parameters(Bytes parameters) {
    std::optional<Bytes> numbers = der::take(parameters, der::kSequence);
    if (!numbers || !parameters.empty()) return false;
    const std::optional<Number> p = der::take_number(*numbers), g = der::take_number(*numbers);
    if (!p || !g || p->bits() > kMostBits || g->bits() > 32) return false;
    EN_Copy(&get()->p, p->get());
    EN_Copy(&get()->g, g->get());
    if (numbers->empty()) return true;
    const std::optional<Number> x_bits = der::take_number(*numbers);
    if (!x_bits || !numbers->empty() || x_bits->bits() > 32) return false;
    x_bits_ = x_bits->bits() == 0 ? 0 : x_bits->get()->words[0];
    return true;
}

Secret DhKey::write_parameters() const {
    const Secret p = der::integer(get()->p), g = der::integer(get()->g);
    if (x_bits_ == 0) return der::element(der::kSequence, {*p, *g});
    const Number x_bits(1);
    EN_U32ToENUM(x_bits.get(), x_bits_);
    return der::element(der::kSequence, {*p, *g, *der::integer(*x_bits.get())});
}

EncodedKey DhKey::encode(KeyPart wanted) const {
    Secret parameters = write_parameters();
    if (wanted == KeyPart::kParameters) return {"DH PARAMETERS", std::move(parameters)};
    if (wanted == KeyPart::kPublic) return {"PUBLIC KEY", wrap_public(kOid, *parameters, *der::integer(get()->y))};
    return {"PRIVATE KEY", wrap_private(kOid, *parameters, *der::integer(get()->x))};
}

void DhKey::require_numbers() const {
    const E_DH_KEY& key = *get();
    const bool parameters = EN_GetFilledBitNum(&key.p) >= kLeastBits && key.p.words[0] % 2 != 0 &&
                            is_inside(key.g, key.p) && x_bits_ < EN_GetFilledBitNum(&key.p);
    const bool x = part_ != KeyPart::kPrivate || (EN_GetFilledBitNum(&key.x) > 0 && EN_UComp(&key.x, &key.p) < 0);
    if (!parameters || !x) throw KeyError("the numbers in it are none of a Diffie-Hellman key");
}

// y is looked at by who uses it: one that is none is the peer's fault, not that of the file.
bool DhKey::read(const KeyFile& file) {
    if (file.wrapping() == KeyFile::Wrapping::kNone) {
        if (!file.may_be("dh") || !read_parameters(file.all())) return false;
        require_numbers();
        return true;
    }
    if (!std::ranges::equal(file.algorithm(), kOid) || !read_parameters(file.parameters())) return false;
    const bool all = file.wrapping() == KeyFile::Wrapping::kPrivate;
    Bytes rest = file.key();
    const std::optional<Number> value = der::take_number(rest);
    if (!value || !rest.empty() || value->bits() > kMostBits) return false;
    EN_Copy(all ? &get()->x : &get()->y, value->get());
    part_ = all ? KeyPart::kPrivate : KeyPart::kPublic;
    require_numbers();
    if (all) E_DH_GenerateKey(get(), 0);  // computes y for the x that is there
    return true;
}

void DhKey::search(std::int32_t bits, std::uint32_t generator) {
    E_DH_GenerateParameters(get(), bits, generator);
    if (EN_GetFilledBitNum(&get()->p) == 0) throw std::bad_alloc();
}

void DhKey::take_parameters(const DhKey& other) {
    EN_Copy(&get()->p, &other.get()->p);
    EN_Copy(&get()->g, &other.get()->g);
    x_bits_ = other.x_bits_;
}

void DhKey::require_safe_prime() const {
    if (EN_IsStrongPrime(&get()->p) == 0) throw KeyError("the modulus in it is no safe prime");
}

void DhKey::draw() {
    if (x_bits_ != 0 && x_bits_ < std::min(kLeastXBits, EN_GetFilledBitNum(&get()->p) - 1)) {
        throw KeyError("the parameters in it ask for private values that are too short");
    }
    do {
        get()->x.words = nullptr;  // which asks for a new x
        E_DH_GenerateKey(get(), static_cast<std::int32_t>(x_bits_));
        if (get()->x.words == nullptr) throw std::bad_alloc();
    } while (!is_inside(get()->y, get()->p));
    part_ = KeyPart::kPrivate;
}

Secret DhKey::agree(const Key& peer, bool padded) const {
    const auto* const other = dynamic_cast<const DhKey*>(&peer);
    if (other == nullptr) throw MismatchError("is a key of another kind");
    if (EN_UComp(&get()->p, &other->get()->p) != 0 || EN_UComp(&get()->g, &other->get()->g) != 0) {
        throw MismatchError("has other parameters than the own key");
    }
    if (!is_inside(other->get()->y, get()->p)) throw MismatchError("its public value is not from 2 to p - 2");
    require_safe_prime();
    const std::size_t size = (std::size_t{EN_GetFilledBitNum(&get()->p)} + 7) / 8;
    Secret secret(std::vector<std::uint8_t>(size, 0));
    const std::int32_t length = E_DH_ComputeKey((*secret).data(), &other->get()->y, get());
    if (length < 0) throw std::bad_alloc();
    const auto filled = static_cast<std::size_t>(length);
    if (padded) {
        std::rotate((*secret).begin(), (*secret).begin() + length, (*secret).end());
    } else {
        (*secret).resize(filled);
    }
    return secret;
}

}  // namespace

std::unique_ptr<Key> read_dh_key(const KeyFile& file) {
    auto key = std::make_unique<DhKey>();
    if (!key->read(file)) return nullptr;
    return key;
}

std::function<std::unique_ptr<Key>()> prepare_dh_key(const KeyOptions& options, const Key* domain) {
    options.refuse_curve();
    if (options.exponent || options.subgroup_bits || options.kind) {
        throw UsageError("--exponent, --subgroup-bits and --kind are not for dh");
    }
    if (domain != nullptr && (options.bits || options.generator)) {
        throw UsageError("--params leaves nothing for --bits and --generator to say");
    }
    const std::int64_t bits = options.bits.value_or(kDefaultBits);
    if (bits < kLeastBits || bits > kMostBits) {
        throw UsageError("--bits is from " + std::to_string(kLeastBits) + " to " + std::to_string(kMostBits));
    }
    const std::int64_t generator = options.generator.value_or(kDefaultGenerator);
    if (generator < 2 || generator > UINT32_MAX) throw UsageError("--generator is from 2 to " + std::to_string(UINT32_MAX));
    return [=, no_key = options.parameters_only]() -> std::unique_ptr<Key> {
        auto key = std::make_unique<DhKey>();
        if (domain == nullptr) {
            key->search(static_cast<std::int32_t>(bits), static_cast<std::uint32_t>(generator));
        } else {
            key->take_parameters(static_cast<const DhKey&>(*domain));
            key->require_safe_prime();
        }
        if (!no_key) key->draw();
        return key;
    };
}

}  // namespace morvane::tool
