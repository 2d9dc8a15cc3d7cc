// A stream through the provider, cut anywhere into buffers of any shape, some of them bad: data, lengths, codes and what is
// kept are those of the model.
#include "fuzz.h"

#include "csp/encrypt_model.h"

using namespace morvane::test;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Random random = choices_of(data, size);
    static const std::vector<Kind> kinds = kinds_with_key();
    const Kind& kind = kinds[random.below(static_cast<std::uint32_t>(kinds.size()))];
    try_calls(kind, random.below(2) != 0, 12, random);
    return 0;
}
