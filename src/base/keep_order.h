// Where the order of operations is worth more than the compiler knows.
#pragma once

namespace morvane {

// Keeps the optimiser from joining what comes before with what comes after. A chain of XORs whose operands arrive one after
// the other is written in that order and must stay in it; left alone, the compiler sorts it by rules of its own.
template <typename Word>
[[gnu::always_inline]] inline void keep_order(Word& word) noexcept {
    asm("" : "+r"(word));
}

// The same for a vector, which is moreover finished before the next one that is kept is begun.
template <typename Lanes>
[[gnu::always_inline]] inline void keep_lanes(Lanes& lanes) noexcept {
    asm volatile("" : "+x"(lanes));
}

// Keeps a value that is wanted again much later in memory until then. Where registers are few the compiler may otherwise
// put the one aside that is wanted next.
template <typename Value>
[[gnu::always_inline]] inline void set_aside(Value& value) noexcept {
    asm("" : "+m"(value));
}

// A table that is looked up by its address in a register. In position-independent code for i386 the compiler otherwise adds
// up the address of each look-up from three parts, and keeps two registers for it.
template <typename Table>
[[gnu::always_inline]] inline const Table& at_hand(const Table& table) noexcept {
    const Table* address = &table;
#if defined(__i386__) && defined(__PIC__)
    keep_order(address);
#endif
    return *address;
}

}  // namespace morvane
