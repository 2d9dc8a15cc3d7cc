// K_GenHash.
#include "toolkit/digest_info.h"

#include <iterator>

namespace {

using namespace morvane::toolkit;

constexpr std::uint32_t kAlgorithms[] = {CSP_ALG_MD2, CSP_ALG_MD5,       CSP_ALG_SHA1,
                                         CSP_ALG_MD4, CSP_ALG_RIPEMD160, CSP_ALG_HAS160};

// 0, which the provider refuses, for an unknown selector.
std::uint32_t algorithm_of(std::uint32_t selector) noexcept {
    return selector < std::size(kAlgorithms) ? kAlgorithms[selector] : 0;
}

// Longer than any digest; the provider says how long it is.
constexpr std::uint32_t kDigestRoom = 30;

}  // namespace

std::uint32_t morvane::toolkit::hash_message(K_CONTEXT* context, std::uint32_t selector, const CSSM_DATA& input,
                                             CSSM_DATA& output) noexcept {
    const Request<0> request(context, CSP_CONTEXT_DIGEST, algorithm_of(selector));
    if (!request) return KERR_MEMORY;
    Buffer digest(context, kDigestRoom, 1);
    if (!digest) return KERR_OUTPUT_ALLOC;
    if (CSP_DigestDataInit(kProvider, request.handle(), nullptr) != 0) return KERR_DIGEST_INIT;
    if (CSP_DigestDataUpdate(kProvider, request.handle(), &input, 1) != 0) return KERR_DIGEST_UPDATE;
    if (CSP_DigestDataFinal(kProvider, request.handle(), &digest.data()) != 0) return KERR_DIGEST_FINAL;
    digest.hand_out(output);
    return 0;
}

int32_t K_GenHash(K_CONTEXT* context, uint32_t selector, const CSSM_DATA* input, CSSM_DATA* output) {
    if (context == nullptr) return kNoContext;
    const auto* const crypto = static_cast<const KccContext*>(context->crypto);
    if (crypto == nullptr || !has_data(input) || output == nullptr) return finish(context, KERR_NOT_READY);
    return finish(context, hash_message(crypto->context, selector, *input, *output));
}
