// Primitives on numbers so long that they need the heap, while each of their allocations fails in turn: they refuse, or get
// along without. No signature is valid for want of memory.
#include "pk/rsa_key.h"
#include "support/failing_heap.h"

#include <morvane/dh.h>
#include <morvane/kcdsa.h>
#include <morvane/prime.h>

namespace {

using namespace morvane::test;

struct Given {
    RsaKey rsa;
    E_KCDSA_KEY group{};
    E_DH_KEY dh{};
    std::uint32_t words[140];
    ENUM prime = {0, 139, words};
    Bytes hash = Bytes(20, 0x61), out = Bytes(2000);
    std::int32_t size = 0;

    // No primes but q: the equations hold under g = y = 1.
    Given() {
        std::fill_n(words, 139, 0xffffffff);  // 2^4423 - 1
        words[138] = 0x7f;
        for (ENUM* const member : {&rsa->n, &rsa->d}) RsaKey::set(*member, Bytes(600, 0xd5));
        E_DSA_Init(&group), E_DH_Init(&dh);
        RsaKey::set(group.p, Bytes(600, 0xd5)), EN_Copy(&group.q, &prime), RsaKey::set(group.x, Bytes(500, 3));
        EN_U32ToENUM(&group.g, 1), EN_U32ToENUM(&group.y, 1);
        EN_Copy(&dh.p, &group.p), EN_Copy(&dh.x, &group.x), EN_U32ToENUM(&dh.g, 3);
    }
};

struct Row {
    const char* name;
    std::int32_t done, refused;
    std::int32_t (*call)(Given&);
};
constexpr Row kRows[] = {
    {"RSA", 600, 0, [](Given& g) { return E_RSA_Private_Encrypt(g.out.data(), g.hash.data(), 20, g.rsa); }},
    {"RSA in public", 600, -1,
     [](Given& g) { return EN_U32ToENUM(&g.rsa->e, 3), E_RSA_Public_Encrypt(g.out.data(), g.hash.data(), 20, g.rsa); }},
    {"DSA", 1, 0, [](Given& g) { return E_DSA_Sign(g.hash.data(), 20, g.out.data(), &g.size, &g.group); }},
    {"DSA, verification", 1, 0, [](Given& g) { return E_DSA_Verify(g.hash.data(), 20, g.out.data(), g.size, &g.group); }},
    {"KCDSA", 1, 0, [](Given& g) { return E_KCDSA_Sign(g.hash.data(), 20, g.out.data(), &g.size, &g.group); }},
    {"KCDSA, verification", 1, 0,
     [](Given& g) { return E_KCDSA_Verify(g.hash.data(), 20, g.out.data(), g.size, &g.group); }},
    {"Diffie-Hellman", 600, -1, [](Given& g) { return E_DH_ComputeKey(g.out.data(), &g.dh.g, &g.dh); }},
    {"a prime", 1, 0, [](Given& g) { return EN_IsPrime(&g.prime); }},
};

TEST(ShortMemory, NeitherSignsNorVerifiesWrongly) {
    Given given;
    for (const Row& row : kRows) {
        for (int n = 0;; ++n) {
            SCOPED_TRACE(testing::Message() << row.name << ", allocation " << n);
            const std::size_t live = FailingHeap::live();
            const FailingHeap heap(n, FailingHeap::Then::kWorks);
            const std::int32_t result = row.call(given);
            EXPECT_EQ(heap.dirty(), 0);
            EXPECT_EQ(FailingHeap::live(), live);
            if (!heap.has_failed()) {
                EXPECT_EQ(result, row.done);
                EXPECT_GT(n, 0);
                break;
            }
            EXPECT_TRUE(result == row.refused || result == row.done) << result;
        }
    }
}

TEST(ShortMemory, OfARecordThatGrows) {
    for (const int good : {0, 1, 2, 3}) {
        const std::size_t live = FailingHeap::live();
        const FailingHeap heap(good);
        ENUM* const x = EN_Create(4);
        ASSERT_EQ(x != nullptr, good >= 2);
        if (x != nullptr) {
            std::fill_n(x->words, 4, 7U);
            EXPECT_EQ(EN_Expand(x, 5000), good == 3 ? 0 : UINT32_MAX);
            EXPECT_EQ(std::count(x->words, x->words + 4, 7U), 4);
        }
        EN_Destroy(x);
        EXPECT_EQ(heap.dirty(), good == 0 ? 0 : 1) << "but for the record itself";
        EXPECT_EQ(FailingHeap::live(), live);
    }
}

}  // namespace
