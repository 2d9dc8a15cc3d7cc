// What every operation of the toolkit is made of: a request to the provider layer, and the code that is its result.
#pragma once

#include "base/bytes.h"
#include "toolkit/memory.h"

#include <morvane/csp.h>
#include <morvane/toolkit.h>

namespace morvane::toolkit {

// The provider handle of every call.
inline constexpr std::uint32_t kProvider = 100;

inline constexpr std::int32_t kNoContext = -1;

// Stores the code of an operation in the context and returns it.
inline std::int32_t finish(K_CONTEXT* context, std::uint32_t code) noexcept {
    context->last_error = code;
    return static_cast<std::int32_t>(code);
}

inline bool has_data(const CSSM_DATA* buffer) noexcept { return buffer != nullptr && buffer->Data != nullptr; }

// An operation on a context that is ready: body() gives its code, which is stored and returned.
template <typename Body>
std::int32_t operate(K_CONTEXT* context, bool has_inputs, Body body) noexcept {
    if (context == nullptr) return kNoContext;
    if (context->crypto == nullptr || !has_inputs) return finish(context, KERR_NOT_READY);
    return finish(context, body());
}

// The record of a request: its session, and the attributes that the session's record names.
template <std::size_t Attributes>
struct KRequest {
    CspSession* session;
    CSSM_CONTEXT_ATTRIBUTE attributes[Attributes == 0 ? 1 : Attributes];
};

// A request with a session of its own, both in the context's memory.
template <std::size_t Attributes>
class Request {
public:
    Request(K_CONTEXT* context, std::uint32_t context_type, std::uint32_t algorithm) noexcept
        : record_(context), session_(context) {
        if (!*this) return;
        record_->session = session_.get();
        session_->context_type = context_type;
        session_->algorithm = algorithm;
        session_->number_of_attributes = Attributes;
        session_->attributes = record_->attributes;
    }

    explicit operator bool() const noexcept { return record_ && session_; }
    CspHandle handle() const noexcept { return reinterpret_cast<CspHandle>(session_.get()); }

    void set_algorithm(std::uint32_t algorithm) noexcept { session_->algorithm = algorithm; }
    void set(std::size_t i, std::uint32_t type, std::uint32_t value) noexcept {
        record_->attributes[i].AttributeType = type;
        record_->attributes[i].Attribute.Uint32 = value;
    }
    void set(std::size_t i, std::uint32_t type, CSSM_KEY* key) noexcept {
        record_->attributes[i].AttributeType = type;
        record_->attributes[i].Attribute.Key = key;
    }
    void set(std::size_t i, std::uint32_t type, CSSM_DATA* data) noexcept {
        record_->attributes[i].AttributeType = type;
        record_->attributes[i].Attribute.Data = data;
    }

private:
    Block<KRequest<Attributes>> record_;
    Block<CspSession> session_;
};

// Bytes in the context's memory that a provider call reads or fills. `extra` bytes behind them are zero.
class Buffer {
public:
    Buffer(K_CONTEXT* context, std::uint32_t size, std::uint32_t extra) noexcept
        : bytes_(context, size, extra), data_{size, bytes_.get()} {}
    // A copy of what the caller has.
    Buffer(K_CONTEXT* context, const CSSM_DATA& source, std::uint32_t extra) noexcept
        : Buffer(context, source.Length, extra) {
        if (bytes_) copy_bytes(data_.Data, source.Data, source.Length);
    }

    explicit operator bool() const noexcept { return static_cast<bool>(bytes_); }
    CSSM_DATA& data() noexcept { return data_; }
    std::uint8_t* get() noexcept { return data_.Data; }
    void set_length(std::uint32_t length) noexcept { data_.Length = length; }

    // Leaves the bytes to the caller's record.
    void hand_out(CSSM_DATA& to) noexcept {
        to = data_;
        bytes_.release();
    }

private:
    Block<std::uint8_t> bytes_;
    CSSM_DATA data_;
};

}  // namespace morvane::toolkit
