// Key records and the key schedules inside them.
#pragma once

#include "base/wipe.h"

#include <morvane/types.h>

#include <cstring>

namespace morvane::csp {

inline constexpr std::uint32_t kReferenceBlob = 2;
inline constexpr std::uint32_t kNoFormat = 0;
inline constexpr std::uint32_t kSessionKeyClass = 2;

// Whether this is a key as the key services make it for the algorithm: its data is the expanded key.
inline bool is_expanded_key(const CSSM_KEY* key, std::uint32_t algorithm) noexcept {
    return key != nullptr && key->KeyData.Data != nullptr && key->KeyHeader.BlobType == kReferenceBlob &&
           key->KeyHeader.Format == kNoFormat && key->KeyHeader.AlgorithmId == algorithm;
}

// Calls use(schedule) with the schedule that a key's data holds; what `use` changes in it stays if KeepsChanges. Data at an
// address that does not suit the record is copied for the time of the call. False, without a call, when there is no key or
// too little data.
template <typename Record, bool KeepsChanges = false, typename Use>
bool with_schedule(const CSSM_KEY* key, Use use) noexcept {
    if (key == nullptr || key->KeyData.Data == nullptr || key->KeyData.Length < sizeof(Record)) return false;
    std::uint8_t* const data = key->KeyData.Data;
    if (reinterpret_cast<std::uintptr_t>(data) % alignof(Record) == 0) {
        use(*reinterpret_cast<Record*>(data));
        return true;
    }
    Record copy;
    std::memcpy(&copy, data, sizeof copy);
    use(copy);
    if (KeepsChanges) std::memcpy(data, &copy, sizeof copy);
    wipe(&copy, sizeof copy);
    return true;
}

}  // namespace morvane::csp
