#include "numbers.h"

#include <random>

namespace morvane::bench {
namespace {

// The two bits at the top are 1 0, of a modulus 1 1.
Octets odd_number(std::mt19937& generator, std::size_t bits, std::uint8_t second_bit) {
    Octets number(bits / 8);
    for (std::uint8_t& octet : number) octet = static_cast<std::uint8_t>(generator());
    number.front() = static_cast<std::uint8_t>(0x80 | second_bit | (number.front() & 0x3f));
    number.back() |= 1;
    return number;
}

}  // namespace

Operands operands_of(const Operation& operation, std::size_t bits) {
    // With these seeds every inverse exists.
    std::mt19937 generator(static_cast<std::uint32_t>(bits));
    Operands operands;
    operands.m = odd_number(generator, bits, 0x40);
    operands.b = odd_number(generator, bits, 0);
    operands.a = odd_number(generator, operation.lengths_of_a * bits, 0);
    return operands;
}

}  // namespace morvane::bench
