// EC-KCDSA keys, for the table of kinds.
#pragma once

#include "key.h"

namespace morvane::tool {

std::unique_ptr<Key> read_eckcdsa_key(const KeyFile& file);
std::function<std::unique_ptr<Key>()> prepare_eckcdsa_key(const KeyOptions& options, const Key* domain);

}  // namespace morvane::tool
