// ENUM records for tests, each with an array of exactly the room that it is granted, between guards.
#pragma once

#include <morvane/bignum.h>

#include "support/bytes.h"

#include <memory>
#include <ostream>

namespace morvane::test {

using Words = std::vector<std::uint32_t>;

// What a record holds. As text, the words in hex with the top one first: "-1 0" is -2^32, "0" a zero of length 1, "" one of
// length 0.
struct Value {
    Value() = default;
    Value(const char* text);
    Value(std::uint32_t sign_flag, Words magnitude) : sign(sign_flag), words(std::move(magnitude)) {}
    bool operator==(const Value&) const = default;

    std::uint32_t sign = 0;
    Words words;  // as many as the length says, least significant first
};

std::ostream& operator<<(std::ostream& out, const Value& value);

// A record with room for the words of its value, or for `room` if that is more. Its end is a failure if it left its room,
// or if the array was exchanged. Beyond the value lies junk.
class Number {
public:
    explicit Number(const Value& value, std::size_t room = 0);
    ~Number();
    Number(const Number&) = delete;
    Number& operator=(const Number&) = delete;

    // A result not yet written: negative, and all of its room junk.
    static Value junk(std::size_t room) { return {1, Words(room, 0xdeadbeef)}; }

    operator ENUM*() { return &record_; }
    ENUM* operator->() { return &record_; }
    Value value() const;

private:
    std::size_t room_;
    std::unique_ptr<std::uint32_t[]> block_;
    ENUM record_;
};

// `count` words that hurt: long runs of ones and zeros, single bits in them, or simply random ones. The top word is not 0.
Words shaped_words(Random& random, std::size_t count);

}  // namespace morvane::test
