#include "random/digest_chain.h"

#include "random/step_digest.h"

#include <morvane/random.h>

#include <algorithm>
#include <utility>

namespace morvane::random {

void DigestChain::start(std::uint32_t ticks, const platform::ScreenSize& screen, std::uint32_t process_id) noexcept {
    const std::uint16_t words[] = {static_cast<std::uint16_t>(ticks ^ screen.width ^ process_id),
                                   static_cast<std::uint16_t>(ticks >> 16 ^ screen.height ^ process_id)};
    StepDigest().add(words, sizeof words).write(state);
}

void DigestChain::draw(std::uint8_t* octets, std::uint32_t count) noexcept {
    while (count > 0) {
        const std::uint32_t step = std::min<std::uint32_t>(count, sizeof state);
        StepDigest().add(state, sizeof state).write(state);
        std::copy(state, state + step, octets);
        octets += step;
        count -= step;
    }
}

}  // namespace morvane::random

using namespace morvane;
using namespace morvane::random;

namespace {

constinit DigestChain chain{};
constinit bool is_started = false;

}  // namespace

void E_GenerateRandom_MD5(std::uint8_t* octets, std::uint32_t count) {
    if (!std::exchange(is_started, true)) {
        chain.start(platform::tick_count(), platform::screen_size(), platform::process_id());
    }
    chain.draw(octets, count);
}
