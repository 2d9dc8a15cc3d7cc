#include "csp/cipher_table.h"

namespace morvane::csp {
namespace {

constexpr CspCipherTable kNullCipher = {0, 0, 0, 0};  // serves every mode

}  // namespace

CipherChoice find_cipher_table(std::uint32_t algorithm, std::uint32_t /*mode*/) noexcept {
    if (algorithm == CSP_ALG_NULL_CIPHER) return {&kNullCipher, 0};
    return {nullptr, CSP_ERR_UNKNOWN_ALGORITHM};
}

}  // namespace morvane::csp
