#include "random/des_generator.h"

#include "base/bytes.h"
#include "platform/platform.h"

#include <morvane/random.h>

#include <utility>

namespace morvane::random {
namespace {

constexpr std::uint32_t kBlock = E_DES_BLOCK_BYTES;

// Any keys and masks would do. These are the fraction of pi in binary, from its first bit on, so that they hide nothing.
constexpr std::uint8_t kFirstKey[kBlock] = {0x24, 0x3F, 0x6A, 0x88, 0x85, 0xA3, 0x08, 0xD3};
constexpr std::uint8_t kSecondKey[kBlock] = {0x13, 0x19, 0x8A, 0x2E, 0x03, 0x70, 0x73, 0x44};
constexpr std::uint32_t kLowMask = 0xA4093822;
constexpr std::uint32_t kHighMask = 0x299F31D0;

}  // namespace

void DesGenerator::start(std::uint32_t seconds, std::uint32_t process_id, std::uint32_t clock) noexcept {
    E_DES_KeySchedule(&first_key, kFirstKey);
    E_DES_KeySchedule(&second_key, kSecondKey);
    a[0] = seconds ^ kLowMask;
    a[1] = seconds ^ kHighMask;
    b[0] = process_id;
    b[1] = clock;
}

void DesGenerator::encipher() noexcept {
    a[0] ^= b[0];
    a[1] ^= b[1];
    E_DES_Encrypt(a, &first_key);
    E_DES_Encrypt(b, &second_key);
}

void DesGenerator::draw(std::uint8_t* octets, std::uint32_t count) noexcept {
    if (count == 0) return;
    for (; count > kBlock; count -= kBlock, octets += kBlock) {
        const Register before = {b[0], b[1]};
        encipher();
        b[1] ^= a[1];
        const Register output = {b[0] ^ a[0], b[1]};
        copy_bytes(octets, output, kBlock);
        copy_bytes(b, a, kBlock);
        copy_bytes(a, before, kBlock);
    }
    // The last block, whole or not, leaves the registers in their places.
    encipher();
    b[0] ^= a[0];
    b[1] ^= a[1];
    copy_bytes(octets, b, count);
}

}  // namespace morvane::random

using namespace morvane;
using namespace morvane::random;

namespace {

constinit DesGenerator generator{};
constinit bool is_started = false;

}  // namespace

void E_GenerateRandom_DES(std::uint8_t* octets, std::uint32_t count) {
    if (!std::exchange(is_started, true)) {
        generator.start(platform::seconds(), platform::process_id(), platform::process_clock());
    }
    generator.draw(octets, count);
}
