// The toolkit's whole operations, as the verbs use them.
//
// A verb runs through the toolkit wherever that has a call which does what the options ask. The rest stays with the
// primitives and the provider layer:
//   digest            files that do not fit the buffer, which go in pieces, with progress; SHA-2, which K_GenHash has not
//   encrypt, decrypt  everything: files of any length go in pieces, and most modes and keys are not the toolkit's
//   random            pool and key-pool, which the toolkit does not draw from
//   genkey            dh, dsa in a given domain, and the exponents, kinds and orders that the toolkit does not choose
//   sign, verify      with dsa keys, for which the toolkit has no signature
//   derive            with dh keys
//   rsa               oaep and pss with other hashes than the calls take; oaep-sha1-old; and pkcs1 to decipher, because
//                     K_RSAPrivateDecrypt does not tell an empty message from a failure
//   prime             everything
// pkcs1 signs by K_RSAPrivateEncrypt, not by K_RSASign, which wants the message in memory: the digest goes in pieces.
#pragma once

#include "secret.h"

#include <morvane/toolkit.h>

#include <optional>
#include <utility>

namespace morvane::tool::toolkit {

// The one context of the program, made ready at the first call. Throws std::bad_alloc.
K_CONTEXT* context();

// An input of a call. An empty one has an address, too: the toolkit takes no null pointer.
class In {
public:
    explicit In(std::span<const std::uint8_t> bytes);
    operator const CSSM_DATA*() const { return &data_; }

private:
    CSSM_DATA data_;
};

// What a call hands out.
class Out {
public:
    Out() = default;
    Out(const Out&) = delete;
    Out& operator=(const Out&) = delete;
    ~Out() { K_free(context(), data_.Data); }

    CSSM_DATA* get() { return &data_; }
    Secret take() const { return Secret(std::vector<std::uint8_t>(data_.Data, data_.Data + data_.Length)); }

private:
    CSSM_DATA data_ = {0, nullptr};
};

// Whether a call succeeded. False for `refusal`, the code by which it refuses a key or an input. For any other throws
// std::bad_alloc where memory was short, otherwise std::runtime_error, whose text has the code and the provider layer's.
bool accepted(std::int32_t code, std::int32_t refusal);

inline constexpr std::int32_t kNoRefusal = 0;

// call(context, inputs...) as a question.
template <typename Call, typename... Inputs>
bool check(std::int32_t refusal, Call call, const Inputs&... inputs) {
    return accepted(call(context(), inputs...), refusal);
}

// What call(context, inputs..., output) hands out; nothing when it refuses.
template <typename Call, typename... Inputs>
std::optional<Secret> make(std::int32_t refusal, Call call, const Inputs&... inputs) {
    Out out;
    if (!accepted(call(context(), inputs..., out.get()), refusal)) return std::nullopt;
    return out.take();
}

// The public and the private key of call(context, inputs..., public, private).
template <typename Call, typename... Inputs>
std::pair<Secret, Secret> make_pair(Call call, const Inputs&... inputs) {
    Out open, secret;
    accepted(call(context(), inputs..., open.get(), secret.get()), kNoRefusal);
    return {open.take(), secret.take()};
}

}  // namespace morvane::tool::toolkit
