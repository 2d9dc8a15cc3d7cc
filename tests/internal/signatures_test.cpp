// DSA and KCDSA with numbers k that are given: examples of RFC 6979 and TTAS.KO-12.0001.
#include "pk/domain.h"
#include "pk/dsa.h"
#include "pk/kcdsa.h"
#include "pk/kcdsa_x9.h"
#include "pk/signature.h"

#include "bignum/record.h"
#include "support/integer.h"

#include <gtest/gtest.h>
#include <morvane/hash.h>

namespace {

using namespace morvane;
using namespace morvane::pk;
using namespace morvane::test;
using bignum::magnitude;

constexpr char kDsaP[] =
    "86f5ca03dcfeb225063ff830a0c769b9dd9d6153ad91d7ce27f787c43278b447e6533b86b18bed6e8a48b784a14c252c5be0"
    "dbf60b86d6385bd2f12fb763ed8873abfd3f5ba2e0a8c0a59082eac056935e529daf7c610467899c77adedfc846c881870b7"
    "b19b2b58f9be0521a17002e3bdd6b86685ee90b3d9a1b02b782b1779";
constexpr char kDsaG[] =
    "07b0f92546150b62514bb771e2a0c0ce387f03bda6c56b505209ff25fd3c133d89bbcd97e904e09114d9a7defdeadfc9078e"
    "a544d2e401aeecc40bb9fbbf78fd87995a10a1c27cb7789b594ba7efb5c4326a9fe59a070e136db77175464adca417be5dce"
    "2f40d10a46a3a3943f26ab7fd9c0398ff8c76ee0a56826a8a88f1dbd";
constexpr char kKcdsaH[] =
    "1711797ecf9bc4b81c5ad487b2d9f3d4f4de8616c47bb030355ea4bf2ab071040ee59c95453119d768af7a7995133c2da1e3"
    "02c69128afba129e698dc7982f56064c70c18fb523ba826b76f81efa58a91226e6afc96e2010975899408e785fe4a338b398"
    "065ffd222fd1e1b7a1da01a090b84168e3522241d2855a4efe87611a";
constexpr char kKcdsaY[] =
    "96dce0e7b2f170093d9b51d2ba78202733b62c406d3769758b3e0cbba1ff6c78727a35703cb6bc2476c3c293743dfee94aa4"
    "b9efa9a17fa6bf790ac25a82c61523f50abaac7b64647eb15c957b07f5ed7d467243089f74695cd58fbf57920cc0c05d4582"
    "9c0a8161b943f18451845760ed096540e78aa9750b03d02448cbf8de";

std::string hex_of(const Scalars& scalars, const Scalar& a) {
    Integer number;
    EN_Copy(number, &*ScalarNumber(scalars, a));
    return number.hex();
}

TEST(Dsa, SignsTheExampleOfRfc6979) {
    WorkKey work;
    E_DSA_KEY& key = work.key;
    EN_Copy(&key.p, Integer(kDsaP));
    EN_Copy(&key.g, Integer(kDsaG));
    EN_Copy(&key.q, Integer("996f967f6c8e388d9e28d01e205fba957a5698b1"));
    const Group group(key);
    Scalars scalars(group);
    Scalar x, m, k, r, s;
    scalars.load(x, magnitude(*Integer("411602cb19a6ccc34494d79d98ef1e7ed5af25f7")));
    scalars.load(k, magnitude(*Integer("7bdb6b0ff756e1bb5d53583ef979082f9ad5bd5b")));
    const Bytes message = from_text("sample");
    std::uint8_t hash[20];
    E_SHA1(hash, message.data(), size32(message));
    scalars.load_octets(m, hash);
    ASSERT_TRUE(dsa_signature(r, s, group, scalars, x, m, k));
    EXPECT_EQ(hex_of(scalars, r), "2e1a0c2562b2912caaf89186fb0f42001585da55");
    EXPECT_EQ(hex_of(scalars, s), "29efb6b0aff2d7a68eb70ca313022253b9a88df5");
}

TEST(Kcdsa, FollowsTheExampleOfItsStandard) {
    // The domain, from its seed.
    WorkKey fixed, made;
    E_KCDSA_GenerateKey_fixParam(&fixed.key, 0, 160);
    E_KCDSA_KEY& key = made.key;
    Integer twice_j;
    std::uint32_t count = 0;
    SeedOctets seed;
    const Bytes octets = from_hex("68adb0d1b6aef144a950f3e784c9893d3604090e");
    std::copy(octets.begin(), octets.end(), seed);
    ASSERT_EQ(domain_of_seed(key, *twice_j, count, seed, 1024, 160), Seeded::kDone);
    EXPECT_EQ(count, 5189U);
    EN_Mod_Exp(&key.g, Integer(kKcdsaH), twice_j, &key.p);
    EXPECT_EQ(EN_UComp(&key.p, &fixed.key.p), 0);
    EXPECT_EQ(EN_UComp(&key.q, &fixed.key.q), 0);
    EXPECT_EQ(EN_UComp(&key.g, &fixed.key.g), 0);
    seed[19] ^= 1;
    EXPECT_EQ(domain_of_seed(fixed.key, *twice_j, count, seed, 1024, 160), Seeded::kUnfit);

    ASSERT_TRUE(set_pair(key, *Integer("68c4ef355d8b6f53eff1df6f243f98563896c58"), PublicKey::kOfInverse));
    EXPECT_TRUE(Integer(kKcdsaY) == [&] {
        Integer y;
        EN_Copy(y, &key.y);
        return y;
    }());

    // z has 64 octets here and W 128, so that their leading zeros make no difference.
    const Bytes message = from_text("This is a test message for KCDSA usage!");
    RBytes hash, r;
    ASSERT_TRUE(kcdsa_hash_message(hash, E_KCDSA_HAS160, magnitude(key.y), message));
    EXPECT_EQ(to_hex(Bytes(hash, hash + sizeof hash)), "af3fb04b0703c6ea5608d89b38c33b359cbca2b0");
    KcdsaSigner signer(key);
    signer.set_k(magnitude(*Integer("4b037e4b573bb7e334cad0a70bed6b5881df9e8e")));
    Scalar s;
    ASSERT_EQ(kcdsa_sign_hash(r, s, E_KCDSA_HAS160, signer, hash), Signing::kDone);
    EXPECT_EQ(to_hex(Bytes(r, r + sizeof r)), "8f996a98eda57cc8d88aa6ffdfaea22f39d7fa8a");
    EXPECT_EQ(hex_of(signer.scalars(), s), "541f7dc4f92c65eb7f63b6b4f22177f1ee2cf339");
}

}  // namespace
