// What RSA blocks are opened to. The key's exponents are 1 and its modulus is one less than a power of two, so that the
// encoded message is the input itself and every line of the unpadding is in reach; a plain reading of the formats says what
// is in it.
#include <morvane/bignum.h>
#include <morvane/hash.h>
#include <morvane/pk.h>

#include "fuzz.h"

#include <algorithm>

using namespace morvane::test;

namespace {

constexpr std::int32_t kRefused = -1;

struct Opened {
    std::int32_t status = kRefused;
    Bytes message = {};
};

struct Key : E_RSA_KEY {
    explicit Key(std::size_t bits) : E_RSA_KEY{} {
        E_RSA_Init(this);
        const std::uint8_t one[1] = {1};
        EN_U8ToENUM(&e, one, 1), EN_U8ToENUM(&d, one, 1);
        Bytes ones((bits + 7) / 8, 0xff);
        ones[0] = static_cast<std::uint8_t>(0xff >> (8 * ones.size() - bits));
        EN_U8ToENUM(&n, ones.data(), size32(ones));
    }
};

Bytes tail(const Bytes& bytes, std::size_t from) {
    return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(from), bytes.end());
}

Opened message_of(const Bytes& message) { return {static_cast<std::int32_t>(message.size()), message}; }

// 00, the type, eight octets of padding or more, 00, the message.
Opened pkcs1(const Bytes& block, std::uint8_t type) {
    std::size_t end = 2;
    while (end < block.size() && (type == 1 ? block[end] == 0xff : block[end] != 0)) ++end;
    const bool good = block.size() >= 11 && block[0] == 0 && block[1] == type && end >= 10 && end < block.size();
    return good && block[end] == 0 ? message_of(tail(block, end + 1)) : Opened{};
}

Bytes digest(bool sha256, const Bytes& bytes) {
    Bytes out(sha256 ? 32 : 20);
    std::uint32_t length = 0;
    if (sha256) {
        E_SHA256(out.data(), &length, bytes.data(), size32(bytes));
    } else {
        E_SHA1(out.data(), bytes.data(), size32(bytes));
    }
    return out;
}

void mask(bool sha256, const Bytes& seed, std::uint8_t* octets, std::size_t size) {
    for (std::size_t at = 0, size_of_hash = sha256 ? 32 : 20; at < size; ++at) {
        Bytes counted = seed;
        for (const std::size_t octet : {std::size_t{0}, std::size_t{0}, std::size_t{0}, at / size_of_hash}) {
            counted.push_back(static_cast<std::uint8_t>(octet));
        }
        octets[at] ^= digest(sha256, counted)[at % size_of_hash];
    }
}

// block: 00, seed, digest of the label, anything, 01, the message; all after the 00 in the clear. It is masked here.
Opened oaep(Bytes& block, bool sha256, bool older, const Bytes& label) {
    const Bytes hash = digest(sha256, label);
    const std::size_t h = hash.size(), k = block.size();
    Opened opened;
    if (k >= 2 * h + 2) {
        const auto one = std::find(block.begin() + static_cast<std::ptrdiff_t>(1 + 2 * h), block.end(), 1);
        const bool same = std::equal(hash.begin(), hash.end(), block.begin() + static_cast<std::ptrdiff_t>(1 + h));
        if (block[0] == 0 && same && one != block.end()) opened = message_of(Bytes(one + 1, block.end()));
        mask(sha256, Bytes(block.data() + 1, block.data() + 1 + h), block.data() + 1 + h, k - 1 - h);
        mask(sha256, tail(block, 1 + h), block.data() + 1, h);
        if (older && block[1] == 0) return {};
    }
    return opened;
}

// The encoding of a message with this salt in k octets, all of whose bits are there.
Bytes pss(std::size_t k, bool sha256, const Bytes& message, const Bytes& salt) {
    Bytes mixed(8);
    for (const Bytes& part : {digest(sha256, message), salt}) mixed.insert(mixed.end(), part.begin(), part.end());
    const Bytes hash = digest(sha256, mixed);
    Bytes block(k - hash.size() - 2 - salt.size());
    block.push_back(1);
    block.insert(block.end(), salt.begin(), salt.end());
    mask(sha256, hash, block.data(), block.size());
    block[0] &= 0x7f;
    block.insert(block.end(), hash.begin(), hash.end());
    block.push_back(0xbc);
    return block;
}

template <typename Call>
void expect_opened(const Opened& expected, const Bytes& block, Call open) {
    Bytes out(block.size() + 4, 0xee);
    const Bytes before = out;
    EXPECT_EQ(open(out.data(), block.data(), static_cast<std::int32_t>(block.size())), expected.status) << to_hex(block);
    const auto written = static_cast<std::ptrdiff_t>(expected.message.size());
    EXPECT_TRUE(std::equal(expected.message.begin(), expected.message.end(), out.begin())) << to_hex(block);
    EXPECT_TRUE(std::equal(out.begin() + written, out.end(), before.begin() + written)) << to_hex(block);
}

void try_pss(Random& random, bool sha256) {
    const std::size_t k = 70 + random.below(60), h = sha256 ? 32 : 20;
    const Key key(8 * k);
    const Bytes message = random.bytes(random.below(8)),
                salt = random.bytes(random.below(static_cast<std::uint32_t>(k - h - 1)));
    const Bytes valid = pss(k, sha256, message, salt);
    Bytes block = valid;
    for (std::uint32_t edits = random.below(3); edits != 0; --edits) {
        block[random.below(static_cast<std::uint32_t>(k))] ^= static_cast<std::uint8_t>(random.below(256));
    }
    const int other_salt = random.below(8) == 0 ? 1 : 0;
    const std::int32_t hash = sha256 ? 6 : 0;
    EXPECT_EQ(E_RSASSA_PSS_Verify(hash, hash, message.data(), static_cast<std::int32_t>(message.size()), block.data(),
                                  static_cast<std::int32_t>(k), static_cast<std::int32_t>(salt.size()) + other_salt, &key),
              block == valid && other_salt == 0 ? 1 : -1)
        << to_hex(block);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Random random = choices_of(data, size);
    const std::uint32_t format = random.below(7);
    const bool sha256 = random.below(2) != 0;
    if (format == 6) return try_pss(random, sha256), 0;
    const std::size_t slack = random.below(8);
    Bytes block(random.left().begin(), random.left().end());
    block.resize(std::min<std::size_t>(block.size(), 130));
    if (block.size() < 2) return 0;
    const Key key(8 * block.size() - slack);
    block[0] &= static_cast<std::uint8_t>(0xff >> slack);
    if (std::count(block.begin() + 1, block.end(), 0xff) + 1 == static_cast<std::ptrdiff_t>(block.size())) return 0;  // n
    const Bytes label = {0x6c};
    switch (format) {
        case 0:
            expect_opened(pkcs1(block, 1), block,
                          [&](auto* out, auto* in, auto len) { return E_RSA_Public_Decrypt(out, in, len, &key); });
            break;
        case 1:
            expect_opened(pkcs1(block, 2), block,
                          [&](auto* out, auto* in, auto len) { return E_RSA_Private_Decrypt(out, in, len, &key); });
            break;
        case 2: {
            Opened opened = pkcs1(block, 1);
            const bool readable = opened.status >= 0;
            Bytes expected = opened.message;
            expected.resize(
                random.below(102));  // a comparison with nothing succeeds, with more than 100 octets it does not
            const bool none = expected.empty(), long_one = expected.size() > 100;
            if (!none && random.below(2) != 0)
                expected[random.below(size32(expected))] ^= static_cast<std::uint8_t>(random.below(256));
            opened.message.resize(std::max(opened.message.size(), expected.size()));
            const bool same = readable && std::equal(expected.begin(), expected.end(), opened.message.begin());
            EXPECT_EQ(E_RSA_Verify(expected.data(), static_cast<std::int32_t>(expected.size()), block.data(),
                                   static_cast<std::int32_t>(block.size()), &key),
                      none || (same && !long_one) ? 1 : 0);
            break;
        }
        default:
            const bool older = format == 3;
            const Opened opened = oaep(block, sha256 && !older, older, label);
            const std::int32_t hash = sha256 ? 6 : 0;
            expect_opened(opened, block, [&](auto* out, auto* in, auto len) {
                return older ? E_RSA_Private_Decrypt_OAEP(out, in, len, label.data(), 1, &key)
                             : E_RSAES_OAEP_Decrypt(hash, hash, out, in, len, label.data(), 1, &key);
            });
    }
    return 0;
}
