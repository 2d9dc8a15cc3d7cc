// The records of the primitives on elliptic curves, around octets of our own.
#pragma once

#include "octets.h"

#include <morvane/ecc_schemes.h>

#include <utility>

namespace morvane::tool {

// Of an output: as long as its room, and the value is what was written.
class OctetRecord {
public:
    explicit OctetRecord(Octets bytes) : bytes_(std::move(bytes)), record_{signed_size(bytes_), bytes_.data()} {}
    OctetRecord(const OctetRecord&) = delete;
    OctetRecord& operator=(const OctetRecord&) = delete;
    ~OctetRecord() = default;
    operator TORVA_V1_OPAQUE8*() { return &record_; }
    Octets value() const { return {bytes_.begin(), bytes_.begin() + record_.count}; }

private:
    Octets bytes_;
    TORVA_V1_OPAQUE8 record_;
};

struct CurveRecord {
    explicit CurveRecord(std::int32_t curve) : id(curve) { E_ECParams_Init(id, &params); }
    std::int32_t id;
    E_EC_PARAMS params{};
};

}  // namespace morvane::tool
