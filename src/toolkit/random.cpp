// K_GenRandom.
#include "toolkit/request.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace morvane::toolkit;

constexpr std::uint32_t algorithm_of(std::uint32_t selector) noexcept {
    return selector == 0 ? CSP_ALG_RANDOM_ALT : selector == 1 ? CSP_ALG_RANDOM : 0;
}

constexpr std::uint32_t kUsualRoom = 1000;

}  // namespace

int32_t K_GenRandom(K_CONTEXT* context, uint32_t selector, uint32_t count, uint8_t** bytes) {
    if (context == nullptr) return kNoContext;
    if (bytes == nullptr) return finish(context, KERR_NOT_READY);
    *bytes = nullptr;
    if (count == UINT32_MAX) return finish(context, KERR_MEMORY);
    Request<1> request(context, CSP_CONTEXT_RANDOM, algorithm_of(selector));
    if (!request) return finish(context, KERR_MEMORY);
    request.set(0, CSP_ATTR_OUTPUT_SIZE, count);
    Buffer staging(context, std::max(count, kUsualRoom), 1);
    if (!staging) return finish(context, KERR_MEMORY);
    staging.data().Length = count;
    if (CSP_GenerateRandom(kProvider, request.handle(), nullptr, &staging.data()) != 0) return -1;
    Block<std::uint8_t> result(context, count + 1);
    if (!result) return finish(context, KERR_MEMORY);
    std::memcpy(result.get(), staging.data().Data, count);
    *bytes = result.release();
    return 0;
}
