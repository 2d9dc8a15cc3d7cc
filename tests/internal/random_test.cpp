// The random sources from states that are known. What they give then was computed by models of them in Python, over its own
// MD5 and DES.
#include "random/des_generator.h"
#include "random/digest_chain.h"
#include "random/pool.h"
#include "random/random_integer.h"

#include "bignum/record.h"
#include "support/bytes.h"

#include <gtest/gtest.h>
#include <morvane/hash.h>

namespace {

using namespace morvane::random;
using namespace morvane::test;

Bytes pattern(std::int32_t size) {
    Bytes bytes;
    for (std::int32_t i = 0; i < size; ++i) bytes.push_back(static_cast<std::uint8_t>(7 * i));
    return bytes;
}

// A pool that the system does not seed, and a record of what it gives.
struct KnownPool {
    Pool pool{};
    Bytes given;

    KnownPool() { pool.was_drawn = true; }
    void seed(std::int32_t count) { pool.seed(pattern(count).data(), count); }
    void draw(Bytes buffer) {
        pool.draw(buffer.data(), static_cast<std::int32_t>(buffer.size()));
        given.insert(given.end(), buffer.begin(), buffer.end());
    }
    std::string digest() const {
        Bytes all = given, digest(20);
        all.insert(all.end(), std::begin(pool.ring), std::end(pool.ring));
        all.insert(all.end(), std::begin(pool.digest), std::end(pool.digest));
        E_SHA1(digest.data(), all.data(), size32(all));
        return to_hex(digest);
    }
};

TEST(RandomPool, EqualsItsModel) {
    KnownPool known;
    known.seed(92);
    known.draw(Bytes(300, 0xee));  // the few octets seeded, three times around
    known.seed(5);
    known.pool.seed(nullptr, -5);
    known.pool.draw(nullptr, -5);  // one of none
    known.draw(pattern(41));
    EXPECT_EQ(known.digest(), "224baa308c2c1a6019fb65de7fa79722164a2989");
    EXPECT_EQ(known.pool.fill, 92);

    known.seed(kPoolOctets - known.pool.index);  // to the very end
    EXPECT_EQ(known.pool.index, kPoolOctets);
    known.draw(Bytes(20));
    known.seed(1500);
    known.draw(pattern(2500));
    known.seed(700);
    known.draw(pattern(9));
    EXPECT_EQ(known.digest(), "828c85f31e9335225191dd305d11c5c873511727");
    EXPECT_EQ(known.pool.index, 637);
}

TEST(RandomPool, FirstDrawSeedsFromTheSystem) {
    Pool one{}, other{};
    Bytes first(32), second(32);
    one.draw(first.data(), 32);
    other.draw(second.data(), 32);
    EXPECT_NE(first, second);
    EXPECT_EQ(one.fill, 92);
}

TEST(RandomDes, EqualsItsModel) {
    DesGenerator generator{};
    generator.start(0x5f5e1000, 4711, 250);
    Bytes octets(38 + 1, 0xee);
    constexpr std::uint32_t kCounts[] = {20, 0, 8, 1, 9};
    std::uint8_t* at = octets.data();
    for (const std::uint32_t count : kCounts) {
        generator.draw(at, count);
        at += count;
    }
    EXPECT_EQ(to_hex(octets), "5d5a4e31b8f90055c841056249fbbf50342a550adaf2ee18cb1666f290037a4228c53b54b263ee");
}

TEST(RandomChain, EqualsItsModel) {
    DigestChain chain{};
    chain.start(0x12345678, {1920, 1080}, 4711);
    Bytes octets(32);
    chain.draw(octets.data(), 17);
    EXPECT_EQ(to_hex(octets), "ac32ccdb55e28b196988a0dbff22541952" + std::string(30, '0'));
}

TEST(RandomInteger, HasItsBitsOfAnySource) {
    constexpr Source* kZeros = [](std::uint8_t*, std::int32_t) {};
    constexpr Source* kOnes = [](std::uint8_t* octets, std::int32_t count) { std::fill(octets, octets + count, 0xff); };
    constexpr Source* kCount = [](std::uint8_t* octets, std::int32_t count) {
        while (count-- > 0) octets[count] = static_cast<std::uint8_t>(count + 1);
    };
    constexpr std::uint32_t kGuard = 0xeeeeeeee;
    for (std::int32_t bits = -9; bits <= 70; ++bits) {
        for (const int flags : {0, 1, 2, 3, 4}) {  // 4: of ones
            SCOPED_TRACE(testing::Message() << bits << " bits, flags " << flags);
            std::uint32_t words[4] = {kGuard, kGuard, kGuard, kGuard};
            ENUM x = {1, 7, words};
            random_integer(x, bits, (flags & 1) != 0, (flags & 2) != 0, flags == 4 ? kOnes : kZeros);
            ASSERT_EQ(x.length, bits > 0 ? (bits + 31) / 32 : 0);
            EXPECT_TRUE(words[x.length] == kGuard && x.sign == 0);
            EXPECT_EQ(static_cast<std::int32_t>(EN_GetFilledBitNum(&x)), std::max(bits, 0));
            for (std::int32_t i = 0; i < bits; ++i) {
                const bool is_set =
                    flags == 4 || i == bits - 1 || (i == bits - 2 && (flags & 1) != 0) || (i == 0 && (flags & 2) != 0);
                EXPECT_EQ(EN_IsBitSet(&x, i) != 0, is_set) << i;
            }
        }
    }
    std::uint32_t words[2];
    ENUM x = {0, 0, words};
    random_integer(x, 44, false, false, kCount);
    EXPECT_EQ(words[1], 0x902U);  // bit 43 is added
    EXPECT_EQ(words[0], 0x03040506U);
}

}  // namespace
