// What private operations leave behind: on a stack that was painted before, and in the heap blocks that they give back.
#include <morvane/ecc_schemes.h>
#include <morvane/kcdsa.h>

#include "pk/rsa_key.h"
#include "support/failing_heap.h"

#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__)

#include <pthread.h>
#include <cstring>
#include <functional>
#include <limits>

namespace {

using namespace morvane::test;

std::vector<Bytes> secrets;  // what is looked for: pieces of eight octets

int count_in(const std::uint8_t* octets, std::size_t size) {
    int found = 0;
    for (const Bytes& secret : secrets) {
        for (std::size_t at = 0; at + secret.size() <= size; ++at) {
            found +=
                static_cast<int>(octets[at] == secret[0] && std::memcmp(octets + at, secret.data(), secret.size()) == 0);
        }
    }
    return found;
}

void look_for(const void* octets, std::size_t size) {
    const auto* const from = static_cast<const std::uint8_t*>(octets);
    for (std::size_t at = 0; at + 8 <= size; at += 8) {
        secrets.emplace_back(from + at, from + at + 8);
        secrets.emplace_back(std::make_reverse_iterator(from + at + 8), std::make_reverse_iterator(from + at));
    }
}
void look_for(const ENUM& number) { look_for(number.words, 4 * static_cast<std::size_t>(number.length)); }

// Runs a call on a stack of its own; how often pieces of secrets lie there afterwards.
int left_on_stack(std::function<void()> call) {
    constexpr std::size_t kSize = 1 << 18;
    alignas(4096) static std::uint8_t stack[kSize];
    std::memset(stack, 0xa5, kSize);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstack(&attributes, stack, kSize);
    pthread_t thread;
    const auto run = [](void* work) -> void* {
        (*static_cast<std::function<void()>*>(work))();
        return nullptr;
    };
    EXPECT_EQ(pthread_create(&thread, &attributes, run, &call), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    return count_in(stack, kSize);
}

class Wiping : public testing::Test {
protected:
    void TearDown() override { secrets.clear(); }
    void expect_nothing_left(const char* name, const std::function<void()>& call) {
        const FailingHeap heap(std::numeric_limits<int>::max());
        EXPECT_EQ(left_on_stack(call), 0) << name;
        EXPECT_EQ(heap.dirty(), 0) << name << ": blocks that were freed as they were";
    }
};

TEST_F(Wiping, OfRsaAndGroups) {
    RsaKey key(load_vectors("rsa_pss.txt").front());
    const Bytes message(20, 0x61);
    std::uint8_t out[600], opened[600];
    std::int32_t size = 0;
    // What the C library does once, with blocks in which the test's own copy of the key was.
    E_RSASSA_PSS_Sign(0, 0, out, &size, message.data(), 20, 20, key);
    for (const ENUM* const member : {&key->d, &key->p, &key->q, &key->dP, &key->dQ, &key->qInv}) look_for(*member);
    expect_nothing_left("remainders", [&] { E_RSA_Private_Encrypt(out, message.data(), 20, key); });
    expect_nothing_left("PSS", [&] { E_RSASSA_PSS_Sign(0, 0, out, &size, message.data(), 20, 20, key); });
    key->qInv.length = 0;
    expect_nothing_left("d", [&] { E_RSA_Private_Encrypt(out, message.data(), 20, key); });
    const Bytes text = Random(5).bytes(80);
    ASSERT_EQ(E_RSA_Public_Encrypt(out, text.data(), 80, key), 128);
    look_for(text.data(), text.size());
    std::memset(opened, 0, sizeof opened);
    expect_nothing_left("deciphering", [&] { E_RSA_Private_Decrypt(opened, out, 128, key); });
    EXPECT_EQ(std::memcmp(opened, text.data(), 80), 0);

    secrets.clear();
    static E_KCDSA_KEY group{};
    E_DSA_Init(&group);
    E_KCDSA_GenerateKey_fixParam(&group, 0, 160);
    look_for(group.x);
    expect_nothing_left("dsa", [&] { E_DSA_Sign(message.data(), 20, out, &size, &group); });
    expect_nothing_left("kcdsa, older", [&] { E_KCDSA_Sign(message.data(), 20, out, &size, &group); });
    expect_nothing_left("kcdsa", [&] { E_KCDSA_Sign_New(E_KCDSA_SHA1, message.data(), 20, out, &size, &group); });
}

TEST_F(Wiping, OfCurves) {
    for (const std::int32_t curve : {3, 5, 7}) {
        SCOPED_TRACE(curve);
        secrets.clear();
        E_EC_PARAMS params;
        ASSERT_EQ(E_ECParams_Init(curve, &params), 0);
        std::uint8_t octets[7][60];
        TORVA_V1_OPAQUE8 d{0, octets[0]}, q{0, octets[1]}, e{0, octets[2]}, r{0, octets[3]}, out{0, octets[4]};
        TORVA_V1_OPAQUE8 message{20, octets[5]}, shared{0, octets[6]};
        E_ECC_GenerateKeyPair(curve, &params, &d, &q), E_ECC_GenerateKeyPair(curve, &params, &e, &r);
        look_for(d.octets + 2, static_cast<std::size_t>(d.count - 2));
        expect_nothing_left("ecdsa", [&] { E_ECDSA_Sign(curve, &params, &message, &out, &d); });
        expect_nothing_left("ec-kcdsa", [&] { E_ECKCDSA_Sign(curve, &params, &message, &out, &d, &q); });
        ASSERT_EQ(TORVA_V1_ECDHPrimitive(curve, &params, &d, &r, &shared), 0);
        look_for(shared.octets, static_cast<std::size_t>(shared.count));
        std::memset(octets[6], 0, sizeof octets[6]);
        expect_nothing_left("agreement", [&] { TORVA_V1_ECDHPrimitive(curve, &params, &d, &r, &shared); });
    }
}

}  // namespace

#endif
