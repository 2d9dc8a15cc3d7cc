// Where the order of operations is worth more than the compiler knows.
#pragma once

namespace morvane {

// Keeps the optimiser from joining what comes before with what comes after. A chain of XORs whose operands arrive one after
// the other is written in that order and must stay in it; left alone, the compiler sorts it by rules of its own.
template <typename Word>
[[gnu::always_inline]] inline void keep_order(Word& word) noexcept {
    asm("" : "+r"(word));
}

}  // namespace morvane
