// K_GenMac and K_VerifyMac.
#include "toolkit/secret_key.h"

#include <cstring>
#include <iterator>

namespace {

using namespace morvane::toolkit;

constexpr std::uint32_t kAlgorithms[] = {CSP_ALG_DES, CSP_ALG_DES3, CSP_ALG_MD5};

// 0, which the provider refuses, for an unknown selector. Keys are made for more selectors than there are MACs.
std::uint32_t algorithm_of(std::uint32_t selector) noexcept {
    return selector < std::size(kAlgorithms) ? kAlgorithms[selector] : 0;
}

// What both operations prepare, all of it in the context's memory.
class MacRequest {
public:
    MacRequest(K_CONTEXT* context, std::uint32_t selector, const CSSM_DATA& message, std::uint32_t extra) noexcept
        : selector_(selector),
          key_(context),
          request_(context, CSP_CONTEXT_MAC, algorithm_of(selector)),
          message_(context, message, extra) {}

    explicit operator bool() const noexcept { return key_ && request_ && message_; }
    CspHandle handle() const noexcept { return request_.handle(); }
    const CSSM_DATA* message() noexcept { return &message_.data(); }

    // 0 or KERR_KEY_SETUP.
    std::uint32_t set_key(const CSSM_DATA* bytes) noexcept {
        request_.set(0, CSP_ATTR_KEY, key_.get());
        return key_.make(selector_, bytes);
    }

private:
    std::uint32_t selector_;
    SecretKey key_;
    Request<1> request_;
    Buffer message_;
};

constexpr std::uint32_t kMacRoom = 1000;

// What lies behind the copies of message and expected MAC is zero: a DES MAC is compared over 8 bytes, however few the
// caller has.
constexpr std::uint32_t kExtra = 16;

std::uint32_t generate(K_CONTEXT* context, std::uint32_t selector, const CSSM_DATA* key, const CSSM_DATA& message,
                       CSSM_DATA& output) noexcept {
    MacRequest request(context, selector, message, kExtra);
    if (!request) return KERR_MEMORY;
    Buffer staging(context, kMacRoom, 1);
    if (!staging) return KERR_MEMORY;
    if (const std::uint32_t code = request.set_key(key); code != 0) return code;
    if (CSP_GenerateMacInit(kProvider, request.handle(), nullptr) != 0) return KERR_MAC_INIT;
    if (CSP_GenerateMacUpdate(kProvider, request.handle(), request.message(), 1) != 0) return KERR_MAC_FINAL;
    if (CSP_GenerateMacFinal(kProvider, request.handle(), &staging.data()) != 0) return KERR_MAC_FINAL;
    Buffer mac(context, staging.data(), 1);
    if (!mac) return KERR_MEMORY;
    mac.hand_out(output);
    return 0;
}

std::uint32_t verify(K_CONTEXT* context, std::uint32_t selector, const CSSM_DATA* key, const CSSM_DATA& message,
                     const CSSM_DATA& expected) noexcept {
    constexpr auto kRefused = static_cast<std::uint32_t>(-1);
    MacRequest request(context, selector, message, kExtra);
    if (!request) return KERR_MEMORY;
    Buffer copy(context, expected, kExtra);
    if (!copy) return KERR_MEMORY;
    if (const std::uint32_t code = request.set_key(key); code != 0) return code;
    if (CSP_VerifyMacInit(kProvider, request.handle(), nullptr) != 0) return kRefused;
    // CSP_VerifyMacUpdate by its first name.
    if (CSP_GenerateMacUpdate(kProvider, request.handle(), request.message(), 1) != 0) return kRefused;
    if (CSP_VerifyMacFinal(kProvider, request.handle(), &copy.data()) != 0) return KERR_MAC_VERIFY;
    return 0;
}

}  // namespace

int32_t K_GenMac(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key, const CSSM_DATA* message, CSSM_DATA* output) {
    if (context == nullptr) return kNoContext;
    if (output == nullptr) return finish(context, KERR_NOT_READY);
    CSSM_DATA mac = {0, nullptr};
    std::uint32_t code = KERR_NOT_READY;
    if (has_data(message)) code = generate(context, selector, key, *message, mac);
    *output = mac;
    return finish(context, code);
}

int32_t K_VerifyMac(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* key, const CSSM_DATA* message,
                    const CSSM_DATA* expected) {
    if (context == nullptr) return kNoContext;
    if (!has_data(message) || !has_data(expected)) return finish(context, KERR_NOT_READY);
    return finish(context, verify(context, selector, key, *message, *expected));
}
