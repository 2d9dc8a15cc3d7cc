// The DER readers on any input. They take exactly what the writers give: an input that moves the position is written again
// and must be the same octets. Any other leaves the position, and nothing ever leaves a member's storage.
#include <morvane/asn1.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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

template <auto Get, auto Put>
void read_key(const std::uint8_t* data, std::size_t size) {
    E_RSA_KEY key;
    std::memset(&key, static_cast<int>(kUntouched & 0xff), sizeof key);
    E_RSA_Init(&key);
    for (ENUM* member : {&key.n, &key.e, &key.d, &key.p, &key.q, &key.dP, &key.dQ, &key.qInv}) member->length = 0;
    const std::uint8_t* position = data;
    Get(&key, &position, static_cast<std::uint32_t>(size));
    require(position >= data && position <= data + size, "the position stays in the input");
    expect_in_storage(key.n, key.n_words);
    expect_in_storage(key.e, key.e_words);
    expect_in_storage(key.d, key.d_words);
    expect_in_storage(key.p, key.p_words);
    expect_in_storage(key.q, key.q_words);
    expect_in_storage(key.dP, key.dP_words);
    expect_in_storage(key.dQ, key.dQ_words);
    expect_in_storage(key.qInv, key.qInv_words);
    if (position == data) return;
    const auto put = [](const void* record, std::uint8_t* out) { return Put(static_cast<const E_RSA_KEY*>(record), out); };
    expect_written_alike(data, position - data, put, &key);
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
    read_key<E_ASN1_GetRSAPublicKey, E_ASN1_PutRSAPublicKey>(data, size);
    read_key<E_ASN1_GetRSAPrivateKey, E_ASN1_PutRSAPrivateKey>(data, size);
    read_u32(data, size);
    return 0;
}
