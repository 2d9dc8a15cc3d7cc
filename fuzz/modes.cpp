// Any mode of any cipher under any key, at once and in two calls, apart and in place, is that of the slow model.
#include "fuzz.h"

#include "cipher/mode_model.h"

using namespace morvane::test;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Random random = choices_of(data, size);
    const Cipher& cipher = kCiphers[random.below(static_cast<std::uint32_t>(kCiphers.size()))];
    const auto mode = static_cast<Mode>(random.below(5));
    const bool decrypting = random.below(2) != 0;
    const auto width = static_cast<std::int32_t>(random.below(256)) - 2;
    const auto number = static_cast<std::int32_t>(random.below(1100)) - 10;  // effective bits, or rounds
    const Bytes key = random.bytes(cipher.key != 0 ? cipher.key : 1 + random.below(300));
    const Job job = {cipher, cipher.scheduled(key, number), mode, decrypting, width};
    if (job.exists()) expect_mode(job, random, random.below(random.below(8) == 0 ? 2000 : 100));
    return 0;
}
