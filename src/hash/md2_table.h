// The substitution table of MD2 (RFC 1319): a permutation of the 256 bytes, shuffled by the decimal digits of pi.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace morvane::hash {

// The first 722 decimal digits of pi, as many as the shuffle uses.
inline constexpr std::string_view kPiDigits =
    "3141592653589793238462643383279502884197169399375105820974944592307816406286208998628034825342117067"
    "9821480865132823066470938446095505822317253594081284811174502841027019385211055596446229489549303819"
    "6442881097566593344612847564823378678316527120190914564856692346034861045432664821339360726024914127"
    "3724587006606315588174881520920962829254091715364367892590360011330530548820466521384146951941511609"
    "4330572703657595919530921861173819326117931051185480744623799627495673518857527248912279381830119491"
    "2983367336244065664308602139494639522473719070217986094370277053921717629317675238467481846766940513"
    "2000568127145263560827785771342757789609173637178721468440901224953430146549585371050792279689258923"
    "5420199561121290219608";

constexpr std::array<std::uint8_t, 256> make_md2_table() {
    std::size_t next = 0;
    // A number below n, from as many digits as its range needs; what would favour the low numbers is read afresh.
    const auto random_below = [&](unsigned n) {
        const int digits = n <= 10 ? 1 : n <= 100 ? 2 : 3;
        for (;;) {
            unsigned number = 0;
            unsigned range = 1;
            for (int i = 0; i < digits; ++i) {
                number = 10 * number + static_cast<unsigned>(kPiDigits[next++] - '0');
                range *= 10;
            }
            if (number < n * (range / n)) return number % n;
        }
    };
    std::array<std::uint8_t, 256> table{};
    for (unsigned i = 0; i < 256; ++i) table[i] = static_cast<std::uint8_t>(i);
    for (unsigned i = 2; i <= 256; ++i) std::swap(table[random_below(i)], table[i - 1]);
    return table;
}

inline constexpr std::array<std::uint8_t, 256> kMd2Table = make_md2_table();
static_assert(kMd2Table[0] == 0x29 && kMd2Table[1] == 0x2e && kMd2Table[128] == 0x45 && kMd2Table[255] == 0x14);

}  // namespace morvane::hash
