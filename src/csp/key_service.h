// What the key services share: their contexts' attributes, headers, and handing out what they make.
#pragma once

#include "base/wipe.h"
#include "csp/key_record.h"
#include "csp/session.h"

#include <cstdint>

namespace morvane::csp {

inline constexpr std::uint32_t kDerBlob = 1;
inline constexpr std::uint32_t kWrappedBlob = 3;
inline constexpr std::uint32_t kPublicKeyClass = 0;
inline constexpr std::uint32_t kPrivateKeyClass = 1;
inline constexpr std::uint32_t kBitsPerByte = 8;

std::uint32_t integer_attribute(const CspSession& session, std::uint32_t type, std::uint32_t otherwise) noexcept;

// A header of zeros but for what is given here, the session's algorithm and its dates.
struct KeyKind {
    std::uint32_t blob;
    std::uint32_t key_class;
    std::uint32_t bits;
    std::uint32_t usage;
    std::uint32_t attributes;
};
CSSM_KEYHEADER make_header(const CspSession& session, const KeyKind& kind) noexcept;

// Bytes on their way to a caller's buffer: into the memory that it has, or into memory from the heap if it has none. Wiped
// if nothing comes of it.
class Output {
public:
    Output() = default;
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Gets ready for `size` bytes, which are zero. 0, CSP_ERR_BAD_DATA (of Length and Data exactly one is zero),
    // CSP_ERR_OUTPUT_TOO_SHORT or CSP_ERR_MEMORY.
    std::uint32_t prepare(const CSSM_DATA& buffer, std::uint32_t size) noexcept;

    std::uint8_t* get() noexcept { return bytes_; }

    // The first `size` bytes go out.
    void hand_out(CSSM_DATA& buffer, std::uint32_t size) noexcept;

private:
    std::uint8_t* bytes_ = nullptr;
    std::uint32_t size_ = 0;
};

// Makes a secret key of an algorithm as CSP_GenerateKey does, and writes its header. 0 or the code of the failure, which
// leaves `key` as it was.
std::uint32_t make_secret_key(CSSM_KEY& key, const CspSession& session, std::uint32_t algorithm, const std::uint8_t* bytes,
                              std::uint32_t count, std::uint32_t usage, std::uint32_t attributes) noexcept;

}  // namespace morvane::csp
