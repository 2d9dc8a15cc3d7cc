// Secret keys for the provider, made from the caller's bytes.
#pragma once

#include "toolkit/request.h"

namespace morvane::toolkit {

// The cipher of a key type; 0, which the provider refuses, for an unknown one.
std::uint32_t cipher_of(std::uint32_t selector) noexcept;

// A key record in the context's memory. Its data is the expanded key.
class SecretKey {
public:
    explicit SecretKey(K_CONTEXT* context) noexcept;

    // 0, KERR_MEMORY or KERR_KEY_SETUP. The selector is one of the toolkit's key types.
    std::uint32_t make(std::uint32_t selector, const CSSM_DATA* bytes) noexcept;

    explicit operator bool() const noexcept { return request_ && key_ && expanded_; }
    CSSM_KEY* get() noexcept { return key_.get(); }

private:
    Request<2> request_;
    Block<CSSM_KEY> key_;
    Buffer expanded_;
};

}  // namespace morvane::toolkit
