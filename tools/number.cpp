#include "number.h"

#include "hex.h"
#include "secret.h"

#include <morvane/bignum.h>

#include <algorithm>
#include <new>

namespace morvane::tool {
namespace {

constexpr std::uint32_t kDigitsAtOnce = 9;
constexpr std::uint32_t kPowerOfTen = 1000000000;

// x = x * factor + digits
void append(ENUM* x, std::uint32_t factor, std::uint32_t digits) {
    std::uint64_t carry = digits;
    for (std::int32_t i = 0; i < x->length; ++i) {
        carry += std::uint64_t{x->words[i]} * factor;
        x->words[i] = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    if (carry != 0) x->words[x->length++] = static_cast<std::uint32_t>(carry);
}

}  // namespace

Number::Number(std::uint32_t words) : record_(EN_Create(words)) {
    if (record_ == nullptr) throw std::bad_alloc();
    record_->length = 0;
}

void Number::Destroy::operator()(ENUM* x) const {
    wipe({reinterpret_cast<std::uint8_t*>(x->words), 4 * static_cast<std::size_t>(std::max(x->length, 0))});
    EN_Destroy(x);
}

std::uint32_t Number::bits() const { return EN_GetFilledBitNum(get()); }

std::optional<Number> read_number(std::string_view text) {
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (hexadecimal) text.remove_prefix(2);
    if (text.empty() || text.size() > kMostDigits) return std::nullopt;
    Number x(static_cast<std::uint32_t>(text.size() / 8 + 1));
    if (hexadecimal) {
        const auto bytes = from_hex(std::string(text.size() % 2, '0') + std::string(text));
        if (!bytes) return std::nullopt;
        EN_U8ToENUM(x.get(), bytes->data(), static_cast<std::uint32_t>(bytes->size()));
        return x;
    }
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        append(x.get(), 10, static_cast<std::uint32_t>(c - '0'));
    }
    return x;
}

std::string to_hexadecimal(const Number& x) {
    std::vector<std::uint8_t> bytes((x.bits() + 7) / 8);
    EN_ENUMToU8(bytes.data(), x.get());
    std::string digits = to_hex(bytes);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return "0x" + (digits.empty() ? "0" : digits);
}

std::string to_decimal(const Number& x) {
    const auto words = static_cast<std::uint32_t>(x.get()->length) + 1;
    Number rest(words), power(1);
    EN_Copy(rest.get(), x.get());
    EN_U32ToENUM(power.get(), kPowerOfTen);
    std::string digits;  // least significant first
    while (rest.bits() != 0) {
        std::uint32_t nine = EN_ModU32(rest.get(), kPowerOfTen);
        EN_Div(rest.get(), nullptr, rest.get(), power.get());
        for (std::uint32_t i = 0; i < kDigitsAtOnce; ++i, nine /= 10) digits += static_cast<char>('0' + nine % 10);
    }
    digits.erase(digits.find_last_not_of('0') + 1);
    std::ranges::reverse(digits);
    return digits.empty() ? "0" : digits;
}

}  // namespace morvane::tool
