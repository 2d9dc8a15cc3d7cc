// The XOR of the modes. 32-bit code may count on no vector registers, and without them it would take longer than some
// ciphers.
#include "cipher/xor_into.h"

#include "base/bytes.h"

namespace morvane::cipher {
namespace {

// The compiler makes the most of the registers that the function around it may use.
[[gnu::always_inline]] inline void xor_words(std::uint8_t* __restrict to, const std::uint8_t* __restrict with,
                                             std::size_t size) noexcept {
    for (std::size_t i = 0; i < size; i += 8) {
        store_le(to + i, load_le<std::uint64_t>(to + i) ^ load_le<std::uint64_t>(with + i));
    }
}

void xor_portable(std::uint8_t* to, const std::uint8_t* with, std::size_t size) { xor_words(to, with, size); }
[[gnu::target("sse2")]] void xor_sse2(std::uint8_t* to, const std::uint8_t* with, std::size_t size) {
    xor_words(to, with, size);
}

}  // namespace

constinit cpu::Dispatch<XorFn, 2> xor_into{{{{cpu::kSse2, xor_sse2}, {cpu::kNone, xor_portable}}}};

}  // namespace morvane::cipher
