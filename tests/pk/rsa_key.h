// RSA keys for tests, and the calls on them with guarded buffers.
#pragma once

#include <morvane/pk.h>

#include "support/integer.h"
#include "support/vectors.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <initializer_list>

namespace morvane::test {

class RsaKey {
public:
    RsaKey() { E_RSA_Init(&record_); }
    RsaKey(const RsaKey& other) : record_(other.record_) { E_RSA_Init(&record_); }
    RsaKey& operator=(const RsaKey& other) {
        record_ = other.record_;
        E_RSA_Init(&record_);
        return *this;
    }
    // From the fields n, e, d, p, q, dP, dQ, qInv, as far as there are.
    explicit RsaKey(const Vector& fields) : RsaKey() {
        for (const auto& [name, member] : {std::pair{"n", &record_.n},
                                           {"e", &record_.e},
                                           {"d", &record_.d},
                                           {"p", &record_.p},
                                           {"q", &record_.q},
                                           {"dP", &record_.dP},
                                           {"dQ", &record_.dQ},
                                           {"qInv", &record_.qInv}}) {
            if (fields.has(name)) set(*member, fields.bytes(name));
        }
    }
    static void set(ENUM& member, const Bytes& octets) { EN_U8ToENUM(&member, octets.data(), size32(octets)); }

    operator E_RSA_KEY*() { return &record_; }
    operator const E_RSA_KEY*() const { return &record_; }
    E_RSA_KEY* operator->() { return &record_; }
    std::int32_t size() const { return static_cast<std::int32_t>((EN_GetFilledBitNum(&record_.n) + 7) / 8); }

    // x^exponent mod n in the octets of the modulus, by nothing of what is tested.
    Bytes raised(const Bytes& x, const ENUM& exponent) const {
        const Bytes power = test::power(Integer(x), Integer(exponent), Integer(record_.n)).octets();
        Bytes octets(static_cast<std::size_t>(size()) - power.size());
        octets.insert(octets.end(), power.begin(), power.end());
        return octets;
    }
    Bytes enciphered(const Bytes& x) const { return raised(x, record_.e); }
    Bytes deciphered(const Bytes& x) const { return raised(x, record_.d); }

private:
    E_RSA_KEY record_{};
};

inline std::int32_t length_of(const Bytes& bytes) { return static_cast<std::int32_t>(bytes.size()); }

// A status, and what was written: as many octets as the status says, none for one below 1. Nothing else may be touched.
struct Outcome {
    std::int32_t status;
    Bytes out;

    bool operator==(const Outcome& other) const { return status == other.status && out == other.out; }
    friend std::ostream& operator<<(std::ostream& text, const Outcome& outcome) {
        return text << outcome.status << " " << to_hex(outcome.out);
    }
};

// Calls with the output buffer, whose beginning is `before`: an input, where both are the same.
template <typename Call>
Outcome outcome_of(Call call, Bytes before = {}) {
    before.resize(700, 0xee);
    Bytes out = before;
    const std::int32_t status = call(out.data());
    const auto written = std::max(status, 0);
    EXPECT_TRUE(std::equal(before.begin() + written, before.end(), out.begin() + written))
        << "written beyond the answer, " << status;
    out.resize(static_cast<std::size_t>(written));
    return {status, out};
}

// What was printed as the files of vectors have it: after a quote, with \n for a newline.
inline std::string printed_text(std::string text) {
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos;) text.replace(at, 1, "\\n");
    return "'" + text;
}

inline Outcome message_outcome(const Bytes& message) { return {length_of(message), message}; }

}  // namespace morvane::test
