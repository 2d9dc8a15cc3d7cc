// The expressions in which libgcrypt takes keys and data.
#pragma once

#include <gcrypt.h>

#include <cstddef>
#include <memory>

namespace morvane::bench {

using Expression = std::unique_ptr<gcry_sexp, decltype(&gcry_sexp_release)>;

// With a buffer for each %b.
template <typename... Numbers>
Expression build(const char* format, const Numbers&... numbers) {
    gcry_sexp_t expression = nullptr;
    void* arguments[2 * sizeof...(numbers) + 1];
    int sizes[sizeof...(numbers) + 1];
    const unsigned char* octets[sizeof...(numbers) + 1];
    std::size_t count = 0;
    ((sizes[count] = static_cast<int>(numbers.size()), octets[count] = numbers.data(), ++count), ...);
    for (std::size_t i = 0; i < count; ++i) {
        arguments[2 * i] = &sizes[i];
        arguments[2 * i + 1] = &octets[i];
    }
    gcry_sexp_build_array(&expression, nullptr, format, arguments);
    return {expression, gcry_sexp_release};
}

// The number after that token, with zeros in front.
inline void get(gcry_sexp_t from, const char* token, std::uint8_t* out, std::size_t size) {
    const Expression value(gcry_sexp_find_token(from, token, 1), gcry_sexp_release);
    std::size_t length = 0;
    const char* octets = gcry_sexp_nth_data(value.get(), 1, &length);
    for (; length > size; --length) ++octets;
    std::fill_n(out, size - length, 0);
    std::copy_n(octets, length, out + size - length);
}

}  // namespace morvane::bench
