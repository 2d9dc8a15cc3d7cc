// The generator named after ANSI X9.31, which has the form of FIPS 186-2, appendix 3: XKEY moves on by G(XKEY + XSEED)
// modulo a prime q.
#include "base/wipe.h"
#include "bignum/record.h"
#include "bignum/work_record.h"
#include "random/random_integer.h"

#include <morvane/hash.h>
#include <morvane/prime.h>
#include <morvane/random.h>

#include <algorithm>

namespace {

using namespace morvane;
using namespace morvane::bignum;

constexpr std::int32_t kBits = 160;
constexpr std::int32_t kWords = kBits / 32;
constexpr std::int32_t kBytes = kBits / 8;
constexpr std::size_t kBlockBytes = 64;

// Where the parameters of a run are to be reported, or null.
struct Report {
    std::uint8_t* xkey;
    std::uint8_t* xseeds;
    std::uint8_t* q;
};

void run(std::uint8_t* out, std::int32_t n, const Report& report) noexcept {
    WorkRecord xkey(kWords + 2), xseed(kWords), sum(kWords + 1), q(kWords + 1), x(kWords);
    EN_Random(xkey.get(), kBits, 1, 1);
    EN_GeneratePrimeRSA(q.get(), kBits);
    if (report.xkey != nullptr) EN_ENUMToU8(report.xkey, xkey.get());
    if (report.q != nullptr) EN_ENUMToU8(report.q, q.get());

    std::uint8_t* xseeds = report.xseeds;
    for (std::int32_t left = n; left > 0; left -= kBytes) {
        EN_Random(xseed.get(), kBits, 1, 1);
        if (xseeds != nullptr) xseeds += EN_ENUMToU8(xseeds, xseed.get());

        // A sum with zeros at the top has fewer octets; they stand at the start of the block all the same, and so do those
        // of XKEY in the output.
        EN_Add(sum.get(), xkey.get(), xseed.get());
        sum->length = kWords;
        SecretArray<std::uint8_t, kBlockBytes> block;
        EN_ENUMToU8(block.items.data(), sum.get());
        SecretArray<std::uint8_t, kBytes> digest;
        E_MySHA1(digest.items.data(), block.items.data());
        EN_U8ToENUM(x.get(), digest.items.data(), kBytes);
        EN_Mod(x.get(), x.get(), q.get());
        EN_Add(xkey.get(), xkey.get(), x.get());
        EN_AddU32(xkey.get(), xkey.get(), 1);
        xkey->length = kWords;

        if (left >= kBytes) {
            EN_ENUMToU8(out, xkey.get());
            out += kBytes;
        } else {
            SecretArray<std::uint8_t, kBytes> last;
            EN_ENUMToU8(last.items.data(), xkey.get());
            std::copy_n(last.items.data(), left, out);
        }
    }
}

}  // namespace

void E_X9_31RandomBytes(std::uint8_t* out, std::int32_t n) { run(out, n, {nullptr, nullptr, nullptr}); }

void E_X9_31RandomBytes2(std::uint8_t* out, std::int32_t n, std::uint8_t* xkey, std::uint8_t* xseeds, std::uint8_t* q) {
    run(out, n, {xkey, xseeds, q});
}

void EN_X9_31Random(ENUM* x, std::int32_t bits, std::int32_t top, std::int32_t bottom) {
    random::random_integer(*x, bits, top != 0, bottom != 0, E_X9_31RandomBytes);
}
