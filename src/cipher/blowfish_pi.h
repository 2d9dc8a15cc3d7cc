// Blowfish before its key.
#pragma once

#include <morvane/cipher.h>

namespace morvane::cipher::blowfish {

extern const E_BF_KEY_SCHEDULE kPi;

}  // namespace morvane::cipher::blowfish
