// Octet string records for tests: inputs that are exactly as long as they say, outputs with as much room as is promised.
#pragma once

#include <morvane/ecc_schemes.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <memory>

namespace morvane::test {

class In {
public:
    In(const Bytes& bytes) : octets_(new std::uint8_t[bytes.size() + 1]), record_{0, octets_.get()} {
        std::copy(bytes.begin(), bytes.end(), octets_.get());
        record_.count = static_cast<std::int32_t>(bytes.size());
    }
    operator const TORVA_V1_OPAQUE8*() const { return &record_; }

private:
    std::unique_ptr<std::uint8_t[]> octets_;
    TORVA_V1_OPAQUE8 record_;
};

// Its count is junk before, as programs leave it. Its end is a failure if anything beyond the room was written.
class Out {
public:
    explicit Out(std::size_t room) : octets_(room + kGuard, kUntouched) {}
    ~Out() { EXPECT_TRUE(is_untouched(octets_.size() - kGuard)); }
    Out(const Out&) = delete;
    Out& operator=(const Out&) = delete;

    operator TORVA_V1_OPAQUE8*() { return &record_; }
    Bytes bytes() const {
        const bool fits = record_.count >= 0 && static_cast<std::size_t>(record_.count) <= octets_.size() - kGuard;
        EXPECT_TRUE(fits) << record_.count;
        return {octets_.begin(), octets_.begin() + (fits ? record_.count : 0)};
    }
    bool is_untouched(std::size_t from = 0) const {
        return std::all_of(octets_.begin() + static_cast<std::ptrdiff_t>(from), octets_.end(),
                           [](std::uint8_t octet) { return octet == kUntouched; });
    }

private:
    static constexpr std::size_t kGuard = 8;
    static constexpr std::uint8_t kUntouched = 0xee;
    Bytes octets_;
    TORVA_V1_OPAQUE8 record_{-77, octets_.data()};
};

// A call's status, and what it wrote: nothing unless the status is 0.
struct Written {
    std::int32_t status;
    Bytes bytes;
    bool operator==(const Written&) const = default;
    friend std::ostream& operator<<(std::ostream& text, const Written& written) {
        return text << written.status << " " << to_hex(written.bytes);
    }
};

template <typename Call>
Written written_by(std::size_t room, Call call) {
    Out out(room);
    const std::int32_t status = call(out);
    return {status, status == 0 ? out.bytes() : Bytes()};
}

struct KeyPair {
    Bytes private_key, public_key;
};

using Generate = decltype(E_ECC_GenerateKeyPair);

class Curve {
public:
    explicit Curve(std::int32_t curve_id) : id(curve_id) { EXPECT_GE(E_ECParams_Init(id, &params), 0); }

    std::size_t size() const { return id == 7 ? 20 : 21; }  // L
    KeyPair generate(Generate* how = E_ECC_GenerateKeyPair) const {
        Out private_key(E_EC_PRIVATE_KEY_OCTETS), public_key(E_EC_POINT_OCTETS);
        EXPECT_EQ(how(id, &params, private_key, public_key), 0);
        return {private_key.bytes(), public_key.bytes()};
    }
    // Signature blocks.
    Bytes ecdsa(const Bytes& message, const Bytes& key) const {
        return written_by(E_ECDSA_SIGNATURE_OCTETS,
                          [&](auto& out) { return E_ECDSA_Sign(id, &params, In(message), out, In(key)); })
            .bytes;
    }
    Bytes eckcdsa(const Bytes& message, const KeyPair& keys) const {
        return written_by(E_ECKCDSA_SIGNATURE_OCTETS,
                          [&](auto& out) {
                              return E_ECKCDSA_Sign(id, &params, In(message), out, In(keys.private_key),
                                                    In(keys.public_key));
                          })
            .bytes;
    }
    std::int32_t verify_ecdsa(const Bytes& message, const Bytes& block, const Bytes& key) const {
        return E_ECDSA_Verify(id, &params, In(message), In(block), In(key));
    }
    std::int32_t verify_eckcdsa(const Bytes& message, const Bytes& block, const Bytes& key) const {
        return E_ECKCDSA_Verify(id, &params, In(message), In(block), In(key));
    }
    Written ecdh(const Bytes& private_key, const Bytes& public_key) const {
        return written_by(E_EC_SHARED_OCTETS, [&](auto& out) {
            return TORVA_V1_ECDHPrimitive(id, &params, In(private_key), In(public_key), out);
        });
    }
    Written encrypt(const Bytes& message, const Bytes& key) const {
        const auto room = TORVA_V1_ECC_getLengthOfMessageToBeEncrypted(&params, static_cast<std::int32_t>(message.size()));
        return written_by(static_cast<std::size_t>(room),
                          [&](auto& out) { return E_ECC_Encryption(id, &params, In(message), out, In(key)); });
    }
    Written decrypt(const Bytes& ciphertext, const Bytes& key) const {
        const auto room = TORVA_V1_ECC_getLengthOfOriginalMessage(&params, In(ciphertext));
        Out out(static_cast<std::size_t>(std::max(room, 0)));
        const std::int32_t status = E_ECC_Decryption(id, &params, In(ciphertext), out, In(key));
        EXPECT_TRUE(status == 0 || out.is_untouched());
        return {status, status == 0 ? out.bytes() : Bytes()};
    }

    std::int32_t id;
    E_EC_PARAMS params{};
};

constexpr std::int32_t kCurves[] = {3, 5, 7};

inline TORVA_V1_POINT base_of(const E_EC_PARAMS& params) {
    TORVA_V1_POINT point = {};
    std::copy_n(params.x.words, params.x.length, point.x);
    std::copy_n(params.y.words, params.y.length, point.y);
    return point;
}

// Big-endian numbers in 21 octets.
inline Bytes order_of(std::int32_t curve) {
    return from_hex(curve == 3   ? "04000000000000000000020108a2e0cc0d99f8a5ef"
                    : curve == 5 ? "0400000000000000000001e60fc8821cc74daeafc1"
                                 : "0100000000000000000001f4c8f927aed3ca752257");
}

inline Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline Bytes flipped(Bytes bytes, std::size_t at) {
    bytes[at] ^= 1;
    return bytes;
}

}  // namespace morvane::test
