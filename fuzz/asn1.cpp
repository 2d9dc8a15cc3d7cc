// The DER readers on any input. They take exactly what the writers give: an input that moves the position is written again
// and must be the same octets. Any other leaves the position, and nothing ever leaves a member's storage.
#include <morvane/asn1.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}

constexpr std::uint32_t kUntouched = 0xa5a5a5a5;

template <std::size_t Words>
void expect_in_storage(const ENUM& number, const std::uint32_t (&words)[Words]) {
    require(number.words == words && number.sign == 0 && number.length >= 0, "a member is as it was attached");
    const auto length = static_cast<std::size_t>(number.length);
    require(length <= Words, "a member fits");
    for (std::size_t i = length; i < Words; ++i) require(words[i] == kUntouched, "words beyond a member are left alone");
}

void expect_written_alike(const std::uint8_t* read, std::ptrdiff_t size, std::int32_t (*put)(const void*, std::uint8_t*),
                          const void* value) {
    require(put(value, nullptr) == size, "what was read has the size of what is written");
    std::vector<std::uint8_t> written(static_cast<std::size_t>(size));
    require(put(value, written.data()) == size, "the writer writes what it counts");
    require(std::memcmp(written.data(), read, written.size()) == 0, "what was read is what is written");
}

// A record's members and their storages.
template <typename Key, typename See>
void for_each_member(Key& key, See see) {
    if constexpr (std::is_same_v<Key, E_RSA_KEY>) {
        see(key.n, key.n_words), see(key.e, key.e_words), see(key.d, key.d_words), see(key.p, key.p_words);
        see(key.q, key.q_words), see(key.dP, key.dP_words), see(key.dQ, key.dQ_words), see(key.qInv, key.qInv_words);
    } else if constexpr (std::is_same_v<Key, E_DSA_KEY>) {
        see(key.x, key.x_words), see(key.y, key.y_words), see(key.p, key.p_words), see(key.q, key.q_words);
        see(key.g, key.g_words);
    } else {
        see(key.p, key.p_words), see(key.g, key.g_words);
    }
}

template <typename Key, void (*Init)(Key*), void (*Get)(Key*, const std::uint8_t**, std::uint32_t),
          std::int32_t (*Put)(const Key*, std::uint8_t*)>
void read_key(const std::uint8_t* data, std::size_t size) {
    Key key;
    std::memset(&key, static_cast<int>(kUntouched & 0xff), sizeof key);
    Init(&key);
    for_each_member(key, [](ENUM& member, auto& /*words*/) { member.sign = 0, member.length = 0; });
    const std::uint8_t* position = data;
    Get(&key, &position, static_cast<std::uint32_t>(size));
    require(position >= data && position <= data + size, "the position stays in the input");
    for_each_member(key, [](ENUM& member, auto& words) { expect_in_storage(member, words); });
    if (position == data) return;
    const auto put = [](const void* record, std::uint8_t* out) { return Put(static_cast<const Key*>(record), out); };
    expect_written_alike(data, position - data, put, &key);
}

void read_signature(const std::uint8_t* data, std::size_t size) {
    E_KCDSA_SIGNATURE signature;
    std::memset(&signature, static_cast<int>(kUntouched & 0xff), sizeof signature);
    const std::uint8_t* position = data;
    E_ASN1_GetSignRS_KCDSA(&signature, &position, static_cast<std::uint32_t>(size));
    require(position >= data && position <= data + size, "the position stays in the input");
    if (data != nullptr) expect_in_storage(signature.s, signature.s_words);
}

void read_u32(const std::uint8_t* data, std::size_t size) {
    std::uint32_t value = kUntouched;
    const std::uint8_t* position = data;
    E_ASN1_GetU32(&value, &position, static_cast<std::uint32_t>(size));
    if (position == data) return require(value == kUntouched, "a refused value is left alone");
    const auto put = [](const void* word, std::uint8_t* out) {
        return E_ASN1_PutU32(*static_cast<const std::uint32_t*>(word), out);
    };
    expect_written_alike(data, position - data, put, &value);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    read_key<E_RSA_KEY, E_RSA_Init, E_ASN1_GetRSAPublicKey, E_ASN1_PutRSAPublicKey>(data, size);
    read_key<E_RSA_KEY, E_RSA_Init, E_ASN1_GetRSAPrivateKey, E_ASN1_PutRSAPrivateKey>(data, size);
    read_key<E_DSA_KEY, E_DSA_Init, E_ASN1_GetDSAParams, E_ASN1_PutDSAParams>(data, size);
    read_key<E_DSA_KEY, E_DSA_Init, E_ASN1_GetDSAPublicKey, E_ASN1_PutDSAPublicKey>(data, size);
    read_key<E_DSA_KEY, E_DSA_Init, E_ASN1_GetDSAPrivateKey, E_ASN1_PutDSAPrivateKey>(data, size);
    read_key<E_DH_KEY, E_DH_Init, E_ASN1_GetDHParams, E_ASN1_PutDHParams>(data, size);
    read_signature(data, size);
    read_u32(data, size);
    return 0;
}
