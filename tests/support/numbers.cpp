#include "support/numbers.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <sstream>

namespace morvane::test {
namespace {

constexpr std::uint32_t kGuard = 0x5aa55aa5;
constexpr std::size_t kBefore = 5;  // odd: the words need not be aligned for limbs
#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kAfter = 0;  // the end of the heap block is a better guard: it sees reads, too
#else
constexpr std::size_t kAfter = 8;
#endif

}  // namespace

Value::Value(const char* text) : sign(*text == '-' ? 1 : 0) {
    std::istringstream in(text + sign);
    for (std::uint32_t word = 0; in >> std::hex >> word;) words.insert(words.begin(), word);
}

std::ostream& operator<<(std::ostream& out, const Value& value) {
    out << '"' << (value.sign == 0 ? "" : value.sign == 1 ? "-" : "(bad sign)") << std::hex;
    for (std::size_t i = value.words.size(); i-- > 0;) out << value.words[i] << (i != 0 ? " " : "");
    return out << std::dec << '"';
}

Number::Number(const Value& value, std::size_t room)
    : room_(std::max(room, value.words.size())),
      block_(new std::uint32_t[kBefore + room_ + kAfter]),
      record_{value.sign, static_cast<std::int32_t>(value.words.size()), block_.get() + kBefore} {
    std::fill_n(block_.get(), kBefore + room_ + kAfter, kGuard);
    std::copy(value.words.begin(), value.words.end(), record_.words);
}

Number::~Number() {
    EXPECT_EQ(record_.words, block_.get() + kBefore);
    const auto intact = [](const std::uint32_t* from, std::size_t count) {
        return std::count(from, from + count, kGuard) == static_cast<std::ptrdiff_t>(count);
    };
    EXPECT_TRUE(intact(block_.get(), kBefore)) << "written before the array";
    EXPECT_TRUE(intact(block_.get() + kBefore + room_, kAfter)) << "written beyond " << room_ << " words";
}

Value Number::value() const {
    EXPECT_TRUE(record_.length >= 0 && record_.length <= static_cast<std::int64_t>(room_)) << "length " << record_.length;
    const auto length = std::clamp<std::size_t>(static_cast<std::size_t>(record_.length), 0, room_);
    return {record_.sign, Words(record_.words, record_.words + length)};
}

Words shaped_words(Random& random, std::size_t count) {
    Words words(count);
    const auto bits = static_cast<std::uint32_t>(32 * count);
    const std::uint32_t shape = random.below(4);
    if (count == 0) return words;
    if (shape == 0) {
        for (std::uint32_t& word : words) word = random.below(UINT32_MAX);
    } else if (shape == 1) {
        std::fill(words.begin(), words.end(), random.below(2) - 1);
        for (std::uint32_t flips = random.below(4); flips != 0; --flips) {
            const std::uint32_t bit = random.below(bits);
            words[bit / 32] ^= 1U << bit % 32;
        }
    } else {
        const std::uint32_t longest = shape == 2 ? 100 : bits;
        std::uint32_t left = 0;
        std::uint32_t value = random.below(2);
        for (std::uint32_t i = 0; i < bits; ++i) {
            if (left-- == 0) {
                value ^= 1;
                left = random.below(longest);
            }
            words[i / 32] |= value << i % 32;
        }
    }
    if (words.back() == 0) words.back() = random.below(2) != 0 ? 1 : 0x80000000;
    return words;
}

}  // namespace morvane::test
