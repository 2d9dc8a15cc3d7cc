// Key records of the primitives, read from the caller's DER.
#pragma once

#include "base/wipe.h"
#include "toolkit/request.h"

namespace morvane::toolkit {

// Wiped at the end of its life.
template <typename Key>
class KeyRecord {
public:
    explicit KeyRecord(void (*init)(Key*)) noexcept { init(&key_); }
    ~KeyRecord() { wipe(&key_, sizeof key_); }
    KeyRecord(const KeyRecord&) = delete;
    KeyRecord& operator=(const KeyRecord&) = delete;

    // Whether the whole of it is such an encoding.
    bool read(void (*reader)(Key*, const std::uint8_t**, std::uint32_t), const CSSM_DATA& der) noexcept {
        const std::uint8_t* position = der.Data;
        reader(&key_, &position, der.Length);
        return der.Length != 0 && position == der.Data + der.Length;
    }

    Key* get() noexcept { return &key_; }
    Key* operator->() noexcept { return &key_; }

private:
    Key key_{};
};

// Lengths of the primitives are signed.
inline bool is_length(const CSSM_DATA& buffer) noexcept { return buffer.Length <= INT32_MAX; }
inline std::int32_t length_of(const CSSM_DATA& buffer) noexcept { return static_cast<std::int32_t>(buffer.Length); }

}  // namespace morvane::toolkit
