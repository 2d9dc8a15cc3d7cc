#include "rows.h"

#include <rhash.h>

namespace morvane::bench {

void add_rhash(Rows& all) {
    rhash_set_openssl_mask(0);  // as packaged, it would call OpenSSL's routines where it finds them
    rhash_library_init();
    constexpr struct {
        const char* primitive;
        unsigned id;
    } kDigests[] = {{"has160", RHASH_HAS160},       {"md4", RHASH_MD4},      {"md5", RHASH_MD5},
                    {"ripemd160", RHASH_RIPEMD160}, {"sha1", RHASH_SHA1},    {"sha256", RHASH_SHA256},
                    {"sha384", RHASH_SHA384},       {"sha512", RHASH_SHA512}};
    for (const auto& row : kDigests) {
        // A context of its own, reset for each message: rhash_msg would allocate one each time.
        const rhash context = rhash_init(row.id);
        all.push_back(
            {row.primitive, "rhash", [context](std::uint8_t* digest, const std::uint8_t* message, std::size_t size) {
                 rhash_reset(context);
                 rhash_update(context, message, size);
                 rhash_final(context, digest);
             }});
    }
}

}  // namespace morvane::bench
