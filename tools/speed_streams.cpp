// What is measured of digests and ciphers.
#include "speed.h"

#include "ciphers.h"
#include "digest_calls.h"
#include "octets.h"

#include <morvane/hash.h>

#include <memory>

namespace morvane::tool {
namespace {

constexpr std::size_t kSizes[] = {64, 16384};
constexpr std::size_t kMostDigestBytes = 64;
constexpr std::size_t kMacKeyBytes = 20;

// Shared by the copies of a std::function.
std::shared_ptr<Octets> room(std::size_t bytes) { return std::make_shared<Octets>(bytes, std::uint8_t{0x5a}); }

void add_digest(SpeedRows& all, const DigestCalls& calls, std::size_t bytes) {
    all.push_back({std::string(calls.name), bytes, [&calls, bytes]() -> Operation {
                       return [&calls, message = room(bytes), digest = room(kMostDigestBytes)] {
                           calls.once(digest->data(), *message);
                       };
                   }});
}

void add_mac(SpeedRows& all, std::size_t bytes) {
    all.push_back({"hmac-sha1", bytes, [bytes]() -> Operation {
                       return [message = room(bytes), key = room(kMacKeyBytes), mac = room(kMacKeyBytes)] {
                           E_HMAC_SHA1(message->data(), size32(*message), key->data(), signed_size(*key), mac->data());
                       };
                   }});
}

// In place, block after block of the cipher's own output.
Operation prepare_cipher(const Cipher& cipher, Transform transform, std::size_t bytes) {
    const auto schedule = room(cipher.keying.schedule_bytes);
    constexpr int kRounds = 12;
    const Octets key(std::min(cipher.max_key_bytes, std::max(cipher.min_key_bytes, std::size_t{16})), 0x3c);
    cipher.keying.set_key(schedule->data(), key,
                          cipher.parameter == Parameter::kRounds ? kRounds : static_cast<int>(8 * key.size()));
    return [=, data = room(bytes), chain = room(kMaxBlockBytes)] { transform(schedule->data(), *data, chain->data(), 0); };
}

void add_cipher(SpeedRows& all, const Cipher& cipher, Mode mode, std::size_t bytes) {
    const Directions& directions = cipher.in(mode);
    if (directions.encrypt == nullptr) return;
    std::string name(cipher.name);
    if (mode != Mode::kStream) name.append("-").append(name_of(mode));
    if (cipher.min_key_bytes == 24) name += "-3-keys";
    const auto add = [&](const char* direction, Transform transform) {
        all.push_back(
            {name + direction, bytes, [&cipher, transform, bytes] { return prepare_cipher(cipher, transform, bytes); }});
    };
    add("-encrypt", directions.encrypt);
    if (mode != Mode::kStream) add("-decrypt", directions.decrypt);
}

}  // namespace

void add_stream_speeds(SpeedRows& all) {
    for (const DigestCalls& calls : all_digest_calls()) {
        for (const std::size_t bytes : kSizes) add_digest(all, calls, bytes);
    }
    for (const std::size_t bytes : kSizes) add_mac(all, bytes);
    for (const Cipher& cipher : all_ciphers()) {
        for (const Mode mode : {Mode::kEcb, Mode::kCbc, Mode::kStream}) {
            for (const std::size_t bytes : kSizes) add_cipher(all, cipher, mode, bytes);
        }
    }
}

}  // namespace morvane::tool
