// The circuits of DES's S-boxes, all inputs of a box at once: a bit of each word is one of them.
#include "cipher/des_tables.h"

#include <gtest/gtest.h>

#define MORVANE_INLINE inline

namespace morvane::cipher {
namespace {

using Lanes = std::uint64_t;

template <unsigned Table>
Lanes lut(Lanes a, Lanes b, Lanes c) {
    Lanes result = 0;
    for (unsigned i = 0; i < 8; ++i) {
        if ((Table >> i & 1) != 0) result |= ((i & 4) != 0 ? a : ~a) & ((i & 2) != 0 ? b : ~b) & ((i & 1) != 0 ? c : ~c);
    }
    return result;
}
Lanes all32(std::uint32_t word) { return word | Lanes{word} << 32; }
Lanes bits_and(Lanes a, Lanes b) { return a & b; }
Lanes bits_or(Lanes a, Lanes b) { return a | b; }
Lanes bits_xor(Lanes a, Lanes b) { return a ^ b; }
Lanes bits_and_not(Lanes a, Lanes b) { return a & ~b; }

}  // namespace
}  // namespace morvane::cipher

#include "cipher/des_circuits_binary.h"
#include "cipher/des_circuits_ternary.h"

namespace morvane::cipher {
namespace {

template <typename Circuits, std::size_t Box>
void expect_box() {
    Lanes x[6] = {}, y[4] = {};
    for (unsigned input = 0; input < 64; ++input) {
        for (unsigned i = 0; i < 6; ++i) x[i] |= Lanes{input >> (5 - i) & 1} << input;
    }
    Circuits::template run<Box>(x, y);
    for (std::size_t input = 0; input < 64; ++input) {
        Lanes value = 0;
        for (const Lanes bit : y) value = 2 * value + (bit >> input & 1);
        const std::size_t row = (input >> 4 & 2) | (input & 1), column = input >> 1 & 15;
        EXPECT_EQ(value, des::kBoxes[Box][16 * row + column]) << "box " << Box + 1 << ", input " << input;
    }
}

template <typename Circuits, std::size_t... Box>
void expect_boxes(std::index_sequence<Box...> /*boxes*/) {
    (expect_box<Circuits, Box>(), ...);
}

TEST(DesCircuits, AreTheBoxes) {
    expect_boxes<TernaryCircuits>(std::make_index_sequence<8>{});
    expect_boxes<BinaryCircuits>(std::make_index_sequence<8>{});
}

}  // namespace
}  // namespace morvane::cipher
