#include "toolkit.h"

#include <morvane/csp.h>

#include <cstdio>
#include <memory>
#include <new>
#include <stdexcept>

namespace morvane::tool::toolkit {
namespace {

struct End {
    void operator()(K_CONTEXT* context) const {
        K_KCCTerm(context);
        K_EndContext(context);
    }
};

std::unique_ptr<K_CONTEXT, End> begin() {
    std::unique_ptr<K_CONTEXT, End> context(K_NewContext(nullptr));
    if (K_KCCInit(context.get()) != 0) throw std::bad_alloc();
    return context;
}

}  // namespace

K_CONTEXT* context() {
    static const std::unique_ptr<K_CONTEXT, End> the_one = begin();
    return the_one.get();
}

In::In(std::span<const std::uint8_t> bytes) {
    static std::uint8_t nothing = 0;
    data_ = {static_cast<std::uint32_t>(bytes.size()), bytes.empty() ? &nothing : const_cast<std::uint8_t*>(bytes.data())};
}

bool accepted(std::int32_t code, std::int32_t refusal) {
    if (code == 0) return true;
    if (code == refusal) return false;
    // Sizes, domains and curves have been looked at before a pair is asked for.
    if (code == KERR_MEMORY || code == KERR_OUTPUT_ALLOC || code == KERR_KEYGEN) throw std::bad_alloc();
    char text[80];
    static_cast<void>(std::snprintf(text, sizeof text, "the library failed with code 0x%x, its provider layer with %u",
                                    static_cast<unsigned>(code), static_cast<unsigned>(GetError())));
    throw std::runtime_error(text);
}

}  // namespace morvane::tool::toolkit
