#include "rows.h"

#include <gcrypt.h>
#include <cstring>
#include <memory>

namespace morvane::bench {

void add_gcrypt(Rows& all, bool portable) {
    if (portable) gcry_control(GCRYCTL_DISABLE_HWF, "all", nullptr);
    gcry_check_version(nullptr);
    gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);

    constexpr struct {
        const char* primitive;
        gcry_md_algos algorithm;
    } kDigests[] = {{"md4", GCRY_MD_MD4},      {"md5", GCRY_MD_MD5},       {"ripemd160", GCRY_MD_RMD160},
                    {"sha1", GCRY_MD_SHA1},    {"sha256", GCRY_MD_SHA256}, {"sha384", GCRY_MD_SHA384},
                    {"sha512", GCRY_MD_SHA512}};
    for (const auto& row : kDigests) {
        all.push_back({row.primitive, "gcrypt",
                       [algorithm = row.algorithm](std::uint8_t* digest, const std::uint8_t* message, std::size_t size) {
                           gcry_md_hash_buffer(algorithm, digest, message, size);
                       }});
    }
    // Opened once: the call for a whole MAC, gcry_md_hash_buffers, would open a handle each time.
    gcry_md_hd_t opened = nullptr;
    if (gcry_md_open(&opened, GCRY_MD_SHA1, GCRY_MD_FLAG_HMAC) != 0) return;
    const std::shared_ptr<gcry_md_handle> hmac(opened, gcry_md_close);
    all.push_back({"hmac-sha1", "gcrypt", [hmac](std::uint8_t* mac, const std::uint8_t* message, std::size_t size) {
                       gcry_md_setkey(hmac.get(), kMacKey, kMacKeyBytes);
                       gcry_md_write(hmac.get(), message, size);
                       std::memcpy(mac, gcry_md_read(hmac.get(), GCRY_MD_SHA1), kMacBytes);
                   }});
}

}  // namespace morvane::bench
