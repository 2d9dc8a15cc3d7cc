#include "random/pool.h"

#include "base/wipe.h"
#include "platform/platform.h"
#include "random/step_digest.h"

#include <morvane/random.h>

#include <algorithm>

namespace morvane::random {
namespace {

constexpr std::int32_t kDigestSize = kDigestOctets;
constexpr std::int32_t kDrawStep = 8;

// Adds `count` octets of a ring of `size`, from `at` on.
StepDigest& add_ring(StepDigest& digest, const std::uint8_t* ring, std::int32_t size, std::int32_t at,
                     std::int32_t count) noexcept {
    const std::int32_t to_end = std::min(count, size - at);
    return digest.add(ring + at, to_end).add(ring, count - to_end);
}

// Where the octet after `at` is, and so also where one stands that ended at the end.
std::int32_t wrapped(std::int32_t at, std::int32_t size) noexcept { return at < size ? at : 0; }

}  // namespace

void Pool::seed(const std::uint8_t* octets, std::int32_t count) noexcept {
    if (count <= 0) return;
    std::int32_t at = wrapped(index, kPoolOctets);
    const std::int64_t end = std::int64_t{index} + count;
    if (end > kPoolOctets) {
        index = static_cast<std::int32_t>(end % kPoolOctets);
        fill = kPoolOctets;
    } else {
        index = static_cast<std::int32_t>(end);
        fill = std::max(fill, index);
    }
    while (count > 0) {
        const std::int32_t step = std::min(count, kDigestSize);
        StepDigest next;
        next.add(digest, kDigestSize);
        add_ring(next, ring, kPoolOctets, at, step).add(octets, step).write(digest);
        for (std::int32_t k = 0; k < step; ++k) {
            ring[at] ^= digest[k];
            at = wrapped(at + 1, kPoolOctets);
        }
        octets += step;
        count -= step;
    }
}

// Of old, 88 octets of memory as it was found. What lies there is the system's own random octets now, and where there are
// none the time must do, as it always had to.
void Pool::seed_first() noexcept {
    constexpr std::int32_t kFoundOctets = 88;
    SecretArray<std::uint8_t, kFoundOctets> found;
    platform::system_random(found.items.data(), found.items.size());
    seed(found.items.data(), kFoundOctets);
    const std::uint32_t now = platform::seconds();
    seed(reinterpret_cast<const std::uint8_t*>(&now), sizeof now);
}

void Pool::draw(std::uint8_t* octets, std::int32_t count) noexcept {
    if (!was_drawn) {
        was_drawn = true;
        seed_first();
    }
    count = std::max(count, 0);
    const std::int32_t size = fill;  // not 0: something was seeded just now
    std::int32_t at = wrapped(index, size);
    const std::int64_t end = std::int64_t{index} + count;
    index = static_cast<std::int32_t>(end > size ? end % size : end);
    while (count > 0) {
        const std::int32_t step = std::min(count, kDrawStep);
        StepDigest next;
        next.add(digest + kDrawStep, kDrawStep).add(octets, step);
        add_ring(next, ring, size, at, step).write(digest);
        for (std::int32_t k = 0; k < step; ++k) {
            ring[at] ^= digest[k];
            at = wrapped(at + 1, size);
            octets[k] = digest[kDrawStep + k];
        }
        octets += step;
        count -= step;
    }
    StepDigest().add(&counter, sizeof counter).add(digest, kDigestSize).write(digest);
    ++counter;
}

namespace {

constinit Pool general_pool{};
constinit Pool key_pool{};

}  // namespace

void copy_general_pool(Pool& copy) noexcept { copy = general_pool; }

// Each draw and each seed make another digest.
void restore_general_pool(const Pool& earlier, const Pool& latest) noexcept {
    if (std::ranges::equal(general_pool.digest, latest.digest)) general_pool = earlier;
}

}  // namespace morvane::random

using namespace morvane::random;

void RAND_Seed(const std::uint8_t* octets, std::int32_t count) noexcept { general_pool.seed(octets, count); }

void RAND_Bytes(std::uint8_t* octets, std::int32_t count) { general_pool.draw(octets, count); }

void E_GenerateSeed_RSA(const std::uint8_t* octets, std::int32_t count) { key_pool.seed(octets, count); }

void E_GenerateRandom_RSA(std::uint8_t* octets, std::int32_t count) { key_pool.draw(octets, count); }
