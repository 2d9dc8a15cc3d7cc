// The Diffie-Hellman parameters that were generated last.
#pragma once

#include <morvane/dh.h>

namespace morvane::csp {

// p.words is null before the first ones.
extern E_DH_KEY dh_parameters;

}  // namespace morvane::csp
