#include "rows.h"

#include <botan/cpuid.h>
#include <botan/hash.h>
#include <botan/mac.h>
#include <memory>

namespace morvane::bench {

void add_botan(Rows& all, bool portable) {
    if (portable) {
        for (const auto bit : {Botan::CPUID::CPUID_SSSE3_BIT, Botan::CPUID::CPUID_SSE41_BIT, Botan::CPUID::CPUID_SSE42_BIT,
                               Botan::CPUID::CPUID_AVX2_BIT, Botan::CPUID::CPUID_AVX512F_BIT, Botan::CPUID::CPUID_BMI1_BIT,
                               Botan::CPUID::CPUID_BMI2_BIT, Botan::CPUID::CPUID_SHA_BIT}) {
            Botan::CPUID::clear_cpuid_bit(bit);
        }
        if (sizeof(void*) == 4) Botan::CPUID::clear_cpuid_bit(Botan::CPUID::CPUID_SSE2_BIT);
    }
    constexpr struct {
        const char* primitive;
        const char* name;
    } kDigests[] = {{"md4", "MD4"},        {"md5", "MD5"},        {"ripemd160", "RIPEMD-160"}, {"sha1", "SHA-1"},
                    {"sha256", "SHA-256"}, {"sha384", "SHA-384"}, {"sha512", "SHA-512"}};
    for (const auto& row : kDigests) {
        const std::shared_ptr<Botan::HashFunction> hash = Botan::HashFunction::create(row.name);
        if (!hash) continue;
        all.push_back({row.primitive, "botan", [hash](std::uint8_t* digest, const std::uint8_t* message, std::size_t size) {
                           hash->update(message, size);
                           hash->final(digest);
                       }});
    }
    const std::shared_ptr<Botan::MessageAuthenticationCode> hmac = Botan::MessageAuthenticationCode::create("HMAC(SHA-1)");
    if (!hmac) return;
    all.push_back({"hmac-sha1", "botan", [hmac](std::uint8_t* mac, const std::uint8_t* message, std::size_t size) {
                       hmac->set_key(kMacKey, kMacKeyBytes);
                       hmac->update(message, size);
                       hmac->final(mac);
                   }});
}

}  // namespace morvane::bench
