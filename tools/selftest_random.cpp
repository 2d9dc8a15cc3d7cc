// Self-tests of the random sources: those that can be computed, by published examples, and that all others answer.
#include "selftest.h"

#include "sources.h"

#include <morvane/csp.h>
#include <morvane/random.h>

#include <algorithm>

namespace morvane::tool {
namespace {

constexpr std::size_t kDrawn = 64;

// All octets are written, no two draws are alike, and no octet has most of a draw.
bool answers(const RandomSource& source) {
    Octets first(kDrawn, 0), second(kDrawn, 0);
    source.fill(first.data(), kDrawn);
    source.fill(second.data(), kDrawn);
    return std::ranges::all_of(first, [&](std::uint8_t octet) { return std::ranges::count(first, octet) < 16; }) &&
           first != second;
}

// Of 13 octets, 51 are left.
bool keeps_to_its_room(const RandomSource& source) {
    Octets room(kDrawn, 0xee);
    source.fill(room.data(), 13);
    return std::all_of(room.begin() + 13, room.end(), [](std::uint8_t octet) { return octet == 0xee; });
}

// FIPS 186-2, appendix 5: XKEY, and the x it gives, which the library returns increased by 1.
bool x962_of(Octets xkey) {
    std::uint32_t xkey_len = size32(xkey), k_len = 0;
    Octets k(20), order(26);
    order[0] = 1;  // 2^200: x is not reduced
    E_X9_62RandomBytes(k.data(), &k_len, 160, xkey.data(), &xkey_len, order.data(), size32(order));
    return k_len == 20 && k == octets("2070b3223dba372fde1c0ffc7b2e3b498b260615");
}

// The example of TTAS.KO-12.0001 with HAS-160: user input, XKEY, q, and the private key x.
bool eckcdsa_of(Octets xkey) {
    constexpr std::string_view kInput =
        "saldjfawp399u374r098u98^%^%hkrgn;lwkrp47t93c%$89439859kjdmnvcm cvk o4u09r 4j oj2out209xfqw;l*&!^#@U#*#$)(# z "
        "xo957tc-95 5 v5oiuv9876 6 vj o5iuv-053,mcvlrkfworet";
    const Octets input = text_octets(kInput), q = octets("c3ddd3717bf05b8f8dd725c162f0b9432c6f77fb");
    std::uint32_t xkey_len = size32(xkey), k_len = 0;
    Octets k(20);
    E_ECKCDSA_RandomBytes(k.data(), &k_len, input.data(), size32(input), xkey.data(), &xkey_len, q.data(), size32(q));
    return k_len == 20 && k == octets("068c4ef355d8b6f53eff1df6f243f98563896c58");
}

}  // namespace

void add_random_tests(SelfTests& all) {
    for (const RandomSource& source : all_random_sources()) {
        all.push_back({"random-" + std::string(source.name), [&source] { return answers(source); },
                       [&source] { return keeps_to_its_room(source); }});
    }
    const Octets x962 = octets("bd029bbe7f51960bcf9edb2b61f06f0feb5a38b6");
    const Octets eckcdsa = octets("f2072ce30a0176568324564bfdbd7077173b7e3f");
    all.push_back({"scalars-x962", [=] { return x962_of(x962); }, [=] { return !x962_of(with_changed_bit(x962, 0)); }});
    all.push_back({"scalars-eckcdsa", [=] { return eckcdsa_of(eckcdsa); },
                   [=] { return !eckcdsa_of(with_changed_bit(eckcdsa, 19)); }});
}

}  // namespace morvane::tool
