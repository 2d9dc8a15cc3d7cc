// The lines that failures print.
#pragma once

#include <cstdio>

namespace morvane::pk {

// To standard output, the text as it is: most of them have never had a newline.
inline void print_message(const char* text) noexcept { static_cast<void>(std::fputs(text, stdout)); }

}  // namespace morvane::pk
