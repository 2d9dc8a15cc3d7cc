#include "bignum/record.h"

#include "base/wipe.h"

#include <algorithm>
#include <cstdlib>

using namespace morvane;
using namespace morvane::bignum;

namespace {

ENUM* create(std::size_t words) noexcept {
    if (words > INT32_MAX) return nullptr;
    auto* const x = static_cast<ENUM*>(std::malloc(sizeof(ENUM)));
    if (x == nullptr) return nullptr;
    *x = {0, static_cast<std::int32_t>(words),
          static_cast<Word*>(std::calloc(std::max<std::size_t>(words, 1), sizeof(Word)))};
    if (x->words == nullptr) {
        std::free(x);
        return nullptr;
    }
    return x;
}

}  // namespace

ENUM* EN_Create(std::uint32_t n) { return create(n); }

void EN_Destroy(ENUM* x) {
    if (x == nullptr) return;
    if (x->words != nullptr) wipe(x->words, words_in(*x) * sizeof(Word));
    std::free(x->words);
    std::free(x);
}

std::uint32_t EN_Expand(ENUM* x, std::uint32_t n) {
    const std::size_t used = words_in(*x);
    if (used >= n) return n;
    constexpr std::uint32_t kNoMemory = UINT32_MAX;
    auto* const words = static_cast<Word*>(std::calloc(n, sizeof(Word)));
    if (words == nullptr) return kNoMemory;
    std::copy_n(x->words, used, words);
    if (used != 0) wipe(x->words, used * sizeof(Word));  // which realloc() would leave behind
    std::free(x->words);
    x->words = words;
    return 0;
}

ENUM* EN_Clone(const ENUM* a) {
    ENUM* const r = create(words_in(*a));
    if (r != nullptr) set(*r, a->sign, magnitude(*a));
    return r;
}

void EN_Copy(ENUM* r, const ENUM* a) { set(*r, a->sign, magnitude(*a)); }
