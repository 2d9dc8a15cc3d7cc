// What every block cipher must do: meet its published vectors, and follow the modes as the header words them.
#include "cipher/mode_model.h"
#include "support/seeded.h"
#include "support/vectors.h"

namespace {

using namespace morvane::test;

TEST(Ciphers, MeetPublishedVectors) {
    Seeded random(20280);
    for (const Cipher& cipher : kCiphers) {
        std::size_t met = 0;
        for (const Vector& vector : load_vectors(cipher.vectors)) {
            Bytes key = vector.bytes("key");
            if (cipher.key != 0) {
                // A case of triple DES serves a cipher with fewer keys when the others repeat these.
                if (!std::equal(key.data() + cipher.key, key.data() + key.size(), key.data())) continue;
                key.resize(cipher.key);
            }
            const std::int32_t number = vector.has("rounds")           ? std::stoi(vector.text("rounds"))
                                        : vector.has("effective_bits") ? std::stoi(vector.text("effective_bits"))
                                                                       : 0;
            const std::string& name = vector.text("mode");
            const Mode mode = name == "ecb" ? kEcb : name == "cbc" ? kCbc : name == "ofb" ? kOfb : kCfb;
            const auto width = name == "cfb8" ? 8 : static_cast<std::int32_t>(8 * cipher.block);
            Bytes iv = vector.has("iv") ? vector.bytes("iv") : Bytes(cipher.block);
            if (mode == kCbc) iv = cipher.cbc_iv(iv);
            for (const bool decrypting : {false, true}) {
                const Job job = {cipher, cipher.scheduled(key, number), mode, decrypting, width};
                const Bytes in = vector.bytes(decrypting ? "out" : "in"), out = vector.bytes(decrypting ? "in" : "out");
                Bytes iv_after = iv;
                ASSERT_EQ(to_hex(model(job, in, in.size(), iv_after)), to_hex(out)) << job;
                if (job.exists()) expect_of_calls(job, random, in, in.size(), iv, out, iv_after);
                ASSERT_FALSE(HasFatalFailure());
            }
            ++met;
        }
        EXPECT_GE(met, 8U) << cipher.name;
    }
}

// Every length up to three blocks and more, and one beyond what the library may hold back at a time.
TEST(Ciphers, FollowTheirModesForEveryLengthAndWidth) {
    Seeded random(20281);
    const auto expect_model = [&](const Job& job, std::size_t len) { expect_mode(job, random, len); };
    for (const Cipher& cipher : kCiphers) {
        Bytes key = random.bytes(cipher.key != 0 ? cipher.key : 13);
        key[0] = key[1] = 0;  // which IDEA takes for 2^16
        for (const bool decrypting : {false, true}) {
            for (const Mode mode : {kEcb, kCbc, kNoPad}) {
                const Job job = {cipher, cipher.scheduled(key, 12), mode, decrypting};
                if (!job.exists()) continue;
                for (std::size_t len = 0; len <= 3 * cipher.block + 1; ++len) expect_model(job, len);
                expect_model(job, 9999);
                job.call(nullptr, nullptr, 0, nullptr);
                ASSERT_FALSE(HasFatalFailure());
            }
            for (const Mode mode : {kCfb, kOfb}) {
                Job job = {cipher, cipher.scheduled(key, 12), mode, decrypting};
                if (!job.exists()) continue;
                const auto bits = static_cast<std::int32_t>(8 * cipher.block);
                for (job.width_bits = -1; job.width_bits <= bits + 1; ++job.width_bits) {
                    const std::size_t steps = job.width_bits % 32 == 3 || job.width_bits == bits ? 530 : random.below(20);
                    expect_model(job, steps * job.step() + random.below(static_cast<std::uint32_t>(job.step())));
                }
                job.width_bits = INT32_MIN;
                expect_model(job, 20);
                ASSERT_FALSE(HasFatalFailure());
            }
        }
    }
}

}  // namespace
