#include "bignum/lasting_base.h"

#include <atomic>

namespace morvane::bignum {
namespace {

constexpr std::size_t kMostWords = 64;
constexpr std::size_t kMostBytes = 640;  // of an element: digits of 28 bits in 64 are the widest

// How many are at a slot: readers, or somebody who writes.
constexpr int kNobody = 0;
constexpr int kWriter = -1;

}  // namespace

// What a table is for, and the table.
struct Slot {
    bool is_for(const Power& power, const void* kind) const noexcept {
        return ring == kind && exponent_words == power.exponent.size() && std::ranges::equal(power.modulus, key(modulus)) &&
               std::ranges::equal(power.base, key(base));
    }
    void set(const Power& power, const void* kind) noexcept {
        ring = kind;
        exponent_words = power.exponent.size();
        modulus.set(power.modulus);
        base.set(power.base);
        is_made = false;
    }
    bool try_read() noexcept {
        int at = users.load(std::memory_order_relaxed);
        while (at != kWriter) {
            if (users.compare_exchange_weak(at, at + 1, std::memory_order_acquire)) return true;
        }
        return false;
    }
    bool try_write() noexcept {
        int at = kNobody;
        return users.compare_exchange_strong(at, kWriter, std::memory_order_acquire);
    }
    // A writer goes on as a reader.
    void end_write() noexcept { users.store(1, std::memory_order_release); }
    void end_read() noexcept { users.fetch_sub(1, std::memory_order_release); }

    struct Number {
        void set(std::span<const Word> value) noexcept {
            size = value.size();
            std::ranges::copy(value, words);
        }

        std::size_t size;
        Word words[kMostWords];
    };
    static std::span<const Word> key(const Number& number) noexcept { return {number.words, number.size}; }

    std::atomic<int> users{kNobody};
    bool is_made = false;
    const void* ring = nullptr;
    std::size_t exponent_words = 0;
    Number modulus{};
    Number base{};
    alignas(64) unsigned char elements[kTableEntries * kMostBytes]{};
};

namespace {

// As many groups as a program may work in by turns; the one that came in first makes room for a further one.
constinit std::array<Slot, 4> slots;
constinit std::atomic<unsigned> oldest{0};

}  // namespace

BaseTable::BaseTable(const Power& power, const void* ring, std::size_t element_bytes) noexcept {
    if (power.modulus.size() > kMostWords || power.base.size() > kMostWords || element_bytes > kMostBytes) return;
    for (Slot& slot : slots) {
        if (!slot.try_read()) continue;
        const bool is_it = slot.is_for(power, ring);
        if (is_it && slot.is_made) {
            slot_ = &slot;
            is_made_ = true;
            return;
        }
        slot.end_read();
        if (!is_it) continue;
        // In between, it may have become another base's.
        if (slot.try_write()) {
            if (slot.is_for(power, ring) && !slot.is_made) {
                slot_ = &slot;
            } else {
                slot.end_write();
                slot.end_read();
            }
        }
        return;
    }
    Slot& slot = slots[oldest.fetch_add(1, std::memory_order_relaxed) % slots.size()];
    if (!slot.try_write()) return;
    slot.set(power, ring);
    slot.end_write();
    slot.end_read();
}

BaseTable::~BaseTable() {
    if (slot_ == nullptr) return;
    if (!is_made_) slot_->end_write();
    slot_->end_read();
}

void* BaseTable::elements() const noexcept { return slot_->elements; }

void BaseTable::publish() noexcept {
    slot_->is_made = true;
    is_made_ = true;
    slot_->end_write();
}

}  // namespace morvane::bignum
