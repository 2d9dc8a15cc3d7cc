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

// A key, and the table for it.
struct Slot {
    bool is_for(const TableKey& key) const noexcept {
        return ring == key.ring && exponent_words == key.exponent_words && modulus.is(key.modulus) && base.is(key.base);
    }
    void set(const TableKey& key) noexcept {
        ring = key.ring;
        exponent_words = key.exponent_words;
        modulus.set(key.modulus);
        base.set(key.base);
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
        bool is(std::span<const Word> value) const noexcept { return std::ranges::equal(value, std::span(words, size)); }
        void set(std::span<const Word> value) noexcept {
            size = value.size();
            std::ranges::copy(value, words);
        }

        std::size_t size;
        Word words[kMostWords];
    };

    std::atomic<int> users{kNobody};
    std::atomic<unsigned> last_use{0};
    bool is_made = false;
    const void* ring = nullptr;
    std::size_t exponent_words = 0;
    Number modulus{};
    Number base{};
    alignas(64) unsigned char elements[kTableEntries * kMostBytes]{};
};

namespace {

constinit std::array<Slot, 4> slots;
constinit std::atomic<unsigned> uses{0};

void use(Slot& slot) noexcept {
    slot.last_use.store(uses.fetch_add(1, std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

// A new base takes the place of the one that has not been used for longest.
Slot& longest_unused() noexcept {
    const unsigned now = uses.load(std::memory_order_relaxed);
    return *std::ranges::max_element(
        slots, {}, [now](const Slot& slot) { return now - slot.last_use.load(std::memory_order_relaxed); });
}

}  // namespace

BaseTable::BaseTable(const TableKey& key) noexcept {
    if (key.modulus.size() > kMostWords || key.base.size() > kMostWords || key.element_bytes > kMostBytes) return;
    for (Slot& slot : slots) {
        if (!slot.try_read()) continue;
        const bool is_it = slot.is_for(key);
        is_made_ = is_it && slot.is_made;
        if (!is_made_) slot.end_read();
        if (!is_it) continue;
        use(slot);
        if (is_made_) {
            slot_ = &slot;
        } else if (slot.try_write()) {
            // In between, it may have been made, or have become another base's.
            if (slot.is_for(key) && !slot.is_made) {
                slot_ = &slot;
            } else {
                slot.end_write();
                slot.end_read();
            }
        }
        return;
    }
    Slot& slot = longest_unused();
    if (!slot.try_write()) return;
    slot.set(key);
    use(slot);
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
