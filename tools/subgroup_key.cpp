#include "subgroup_key.h"

#include "json.h"
#include "usage.h"

#include <morvane/asn1.h>
#include <morvane/bignum.h>
#include <morvane/prime.h>

#include <algorithm>

namespace morvane::tool {
namespace {

constexpr std::int64_t kDefaultBits = 1024, kMostBits = std::int64_t{32} * E_DSA_WORDS;
constexpr std::int64_t kDefaultSubgroupBits = 160, kLeastSubgroupBits = 16;
constexpr std::int32_t kLongBits = 2048, kShortOrderBits = 160, kLongOrderBits = 256;  // of p and q by the toolkit

using Reader = void (*)(E_DSA_KEY* key, const std::uint8_t** input, std::uint32_t length);
using Writer = std::int32_t (*)(const E_DSA_KEY* key, std::uint8_t* out);

bool read_with(Reader reader, E_DSA_KEY* key, Bytes der) {
    const std::uint8_t* position = der.data();
    reader(key, &position, static_cast<std::uint32_t>(der.size()));
    return position == der.data() + der.size() && !der.empty();
}

Secret write_with(Writer writer, const E_DSA_KEY* key) {
    Secret der(std::vector<std::uint8_t>(static_cast<std::size_t>(writer(key, nullptr))));
    writer(key, (*der).data());
    return der;
}

bool is_odd(const ENUM& x) { return x.length > 0 && x.words[0] % 2 != 0; }
bool is_above_1(const ENUM& x) { return EN_GetFilledBitNum(&x) > 1; }
bool is_below(const ENUM& a, const ENUM& b) { return EN_UComp(&a, &b) < 0; }

}  // namespace

void SubgroupKey::Wipe::operator()(E_DSA_KEY* key) const {
    wipe({reinterpret_cast<std::uint8_t*>(key), sizeof *key});
    delete key;
}

SubgroupKey::SubgroupKey(const Kind& kind) : kind_(kind), record_(new E_DSA_KEY{}) { E_DSA_Init(get()); }

Secret SubgroupKey::der(KeyPart wanted) const {
    constexpr Writer kWriters[] = {E_ASN1_PutDSAParams, E_ASN1_PutDSAPublicKey, E_ASN1_PutDSAPrivateKey};
    return write_with(kWriters[static_cast<std::size_t>(wanted)], get());
}

void SubgroupKey::take_private(Bytes der) {
    if (!read_with(E_ASN1_GetDSAPrivateKey, get(), der)) throw std::bad_alloc();
}

void SubgroupKey::generate(std::uint32_t selector, void (*primitive)(E_DSA_KEY*, std::int32_t, std::int32_t),
                           DomainSize size) {
    if (size.q_bits != (size.p_bits < kLongBits ? kShortOrderBits : kLongOrderBits)) {
        return primitive(get(), size.p_bits, size.q_bits);
    }
    take_pair(K_GenAssymetricKey, selector, static_cast<std::uint32_t>(size.p_bits));
}

void SubgroupKey::tell(Json& json) const {
    json.member("bits", EN_GetFilledBitNum(&record_->p)).member("subgroup_bits", EN_GetFilledBitNum(&record_->q));
}

EncodedKey SubgroupKey::encode(KeyPart wanted) const {
    Secret parameters = der(KeyPart::kParameters);
    if (wanted == KeyPart::kParameters) return {kind_.parameters_label, std::move(parameters)};
    if (wanted == KeyPart::kPublic) {
        return {"PUBLIC KEY", wrap_public(kind_.oid, *parameters, *tool::der::integer(get()->y))};
    }
    if (kind_.bare_private_keys) return {kind_.private_label, der(KeyPart::kPrivate)};
    return {kind_.private_label, wrap_private(kind_.oid, *parameters, *tool::der::integer(get()->x))};
}

// The readers of KCDSA's bare x and y are those of any INTEGER.
bool SubgroupKey::read_numbers(const KeyFile& file) {
    if (file.wrapping() == KeyFile::Wrapping::kNone) {
        if (!file.may_be(kind_.name)) return false;
        constexpr std::pair<Reader, KeyPart> kForms[] = {{E_ASN1_GetDSAPrivateKey, KeyPart::kPrivate},
                                                         {E_ASN1_GetDSAPublicKey, KeyPart::kPublic},
                                                         {E_ASN1_GetDSAParams, KeyPart::kParameters}};
        const auto* const form =
            std::ranges::find_if(kForms, [&](const auto& each) { return read_with(each.first, get(), file.all()); });
        if (form == std::end(kForms)) return false;
        part_ = form->second;
        return true;
    }
    if (!std::ranges::equal(file.algorithm(), kind_.oid)) return false;
    if (!read_with(E_ASN1_GetDSAParams, get(), file.parameters())) return false;
    const bool all = file.wrapping() == KeyFile::Wrapping::kPrivate;
    part_ = all ? KeyPart::kPrivate : KeyPart::kPublic;
    return read_with(all ? E_ASN1_GetEncPrivateKey_KCDSA : E_ASN1_GetEncPublicKey_KCDSA, get(), file.key());
}

void SubgroupKey::require_numbers() const {
    const E_DSA_KEY& key = *get();
    const bool domain = is_odd(key.p) && is_odd(key.q) && is_above_1(key.q) && is_below(key.q, key.p) &&
                        is_above_1(key.g) && is_below(key.g, key.p);
    const bool x = part_ != KeyPart::kPrivate || (EN_GetFilledBitNum(&key.x) > 0 && is_below(key.x, key.q));
    const bool y = part_ == KeyPart::kParameters || (is_above_1(key.y) && is_below(key.y, key.p));
    if (!domain || !x || !y) throw KeyError("the numbers in it are none of a " + std::string(kind_.name) + " key");
}

bool SubgroupKey::read(const KeyFile& file) {
    if (!read_numbers(file)) return false;
    // PKCS #8 has no y.
    if (file.wrapping() == KeyFile::Wrapping::kPrivate) {
        part_ = KeyPart::kParameters;
        require_numbers();
        part_ = KeyPart::kPrivate;
        compute_y();
    }
    require_numbers();
    return true;
}

void SubgroupKey::generated(KeyPart part) {
    if (EN_GetFilledBitNum(&(part == KeyPart::kPrivate ? get()->y : get()->p)) == 0) throw std::bad_alloc();
    part_ = part;
}

void SubgroupKey::take_domain(const Key& other) {
    const E_DSA_KEY& from = *static_cast<const SubgroupKey&>(other).get();
    EN_Copy(&get()->p, &from.p);
    EN_Copy(&get()->q, &from.q);
    EN_Copy(&get()->g, &from.g);
}

void SubgroupKey::require_domain() const {
    const E_DSA_KEY& key = *get();
    const Number rest(E_DSA_WORDS + 1);
    const auto is_1 = [&] { return EN_GetFilledBitNum(rest.get()) == 1; };
    EN_Mod(rest.get(), &key.p, &key.q);
    bool good = is_1() && EN_IsPrime(&key.q) != 0 && EN_IsPrime(&key.p) != 0;
    if (good) EN_Mod_Exp(rest.get(), &key.g, &key.q, &key.p);
    if (!good || !is_1()) throw KeyError("the parameters in it are no two primes and a generator");
}

void SubgroupKey::set_y(const ENUM& exponent) { EN_Mod_Exp(&get()->y, &get()->g, &exponent, &get()->p); }

Digest SubgroupKey::digest_of(const std::string& hash, const std::string& input) const {
    const Algorithm* const algorithm = find_algorithm(morvane::tool::Kind::kDigest, hash);
    if (algorithm == nullptr) throw UsageError("--hash is no digest; see 'morvane list'");
    // The library would take a longer digest, up to whole bytes, uncut. Others cut it.
    if (8 * algorithm->digest_bytes > EN_GetFilledBitNum(&get()->q)) {
        throw KeyError("its q is too short for " + std::string(algorithm->name));
    }
    return FileDigester(*algorithm)(input);
}

DomainSize domain_size(const KeyOptions& options, std::int64_t least_p_bits, std::int64_t least_difference) {
    const std::int64_t p_bits = options.bits.value_or(kDefaultBits);
    const std::int64_t q_bits = options.subgroup_bits.value_or(kDefaultSubgroupBits);
    if (p_bits < least_p_bits || p_bits > kMostBits) {
        throw UsageError("--bits is from " + std::to_string(least_p_bits) + " to " + std::to_string(kMostBits));
    }
    if (q_bits < kLeastSubgroupBits || q_bits > p_bits - least_difference) {
        throw UsageError("--subgroup-bits is from " + std::to_string(kLeastSubgroupBits) + " to " +
                         std::to_string(p_bits - least_difference));
    }
    return {static_cast<std::int32_t>(p_bits), static_cast<std::int32_t>(q_bits)};
}

void refuse_foreign_options(const KeyOptions& options, const Key* domain) {
    options.refuse_curve();
    if (options.exponent || options.generator) throw UsageError("--exponent is for rsa, --generator for dh");
    if (domain != nullptr && (options.bits || options.subgroup_bits || options.kind)) {
        throw UsageError("--params leaves nothing for --bits, --subgroup-bits and --kind to say");
    }
}

}  // namespace morvane::tool
