// What every operation on numbers gives, by GMP: values, and lengths, signs and room as morvane/bignum.h states them. For
// the differential test and the fuzzer, which draw the operands.
#pragma once

#include "bignum/calls.h"

#include <gmpxx.h>
#include <gtest/gtest.h>
#include <algorithm>

namespace morvane::test {

struct Result {
    Value value;
    std::size_t room;
};

inline mpz_class magnitude(const Value& x) {
    mpz_class z;
    mpz_import(z.get_mpz_t(), x.words.size(), -1, 4, 0, 0, x.words.data());
    return z;
}

inline std::size_t bits_of(const mpz_class& z) { return z == 0 ? 0 : mpz_sizeinbase(z.get_mpz_t(), 2); }
inline std::size_t words_of(const mpz_class& z) { return (bits_of(z) + 31) / 32; }

// The magnitude of z in `length` words, or in its own.
inline Value value_of(std::uint32_t sign, const mpz_class& z, std::size_t length = 0) {
    Value value(sign, Words(std::max(length, words_of(z))));
    mpz_export(value.words.data(), nullptr, -1, 4, 0, 0, z.get_mpz_t());
    return value;
}

inline Value negated(Value x) { return {x.sign ^ 1, x.words}; }

inline Result sum(const Value& a, const Value& b) {
    const std::size_t words = std::max(a.words.size(), b.words.size());
    mpz_class z = magnitude(a);
    if (a.sign == b.sign) {
        z += magnitude(b);
        const Value value = value_of(z != 0 ? a.sign : 0, z, words);
        return {value, value.words.size()};
    }
    z = a.sign != 0 ? magnitude(b) - z : z - magnitude(b);
    return {value_of(z < 0 ? 1 : 0, z), words};
}

inline Result product(const Value& a, const Value& b) {
    const std::size_t words = a.words.size() + b.words.size();
    const mpz_class z = magnitude(a) * magnitude(b);
    const bool none = a.words.empty() || b.words.empty();
    return {value_of(a.sign ^ b.sign, z, none ? 0 : words - 1), words};
}

inline Result remainder(const Value& a, const Value& m) {
    const std::size_t room = std::min(a.words.size(), m.words.size());
    if (magnitude(a) < magnitude(m)) return {a.words.size() == 1 ? a : value_of(a.sign, magnitude(a)), room};
    const mpz_class z = magnitude(a) % magnitude(m);
    return {value_of(z != 0 ? a.sign : 0, z), room};
}

inline Result quotient(const Value& a, const Value& d, std::size_t room) {
    const mpz_class z = magnitude(a) / magnitude(d);
    return {z == 0 ? Value("0") : value_of(a.sign ^ d.sign, z), room};
}

inline std::int32_t order(const Value& a, const Value& b) {
    const auto words = static_cast<std::int32_t>(a.words.size()) - static_cast<std::int32_t>(b.words.size());
    return words != 0 ? words : sgn(mpz_class(magnitude(a) - magnitude(b)));
}

inline Value reduced(const Value& a, const Value& m) { return remainder(a, m).value; }
inline Result product_mod(const Value& a, const Value& b, const Value& m) { return remainder(product(a, b).value, m); }

inline Result in_words(const Value& a, const mpz_class& z, std::size_t length) {
    const Value value = value_of(a.sign, z, length);
    return {value, value.words.size()};
}
inline Result shifted(const Value& a, const mpz_class& z, std::size_t room) { return {value_of(a.sign, z), room}; }

inline Result answer(std::int64_t number) { return {value_of(number < 0 ? 1 : 0, mpz_class(std::abs(number)), 1), 1}; }

inline Result divisor(const Value& a, const Value& b) {
    const std::size_t x = words_of(magnitude(a)), y = words_of(magnitude(b));
    const std::size_t room = std::max<std::size_t>(1, y == 0 ? x : x == 0 ? y : std::min(x, y));
    if (x == 0 && y == 0) return {a.words.empty() && b.words.empty() ? Value("") : Value("0"), room};
    return {value_of(0, gcd(magnitude(a), magnitude(b))), room};
}

inline Result inverse(const Value& a, const Value& m) {
    mpz_class z;
    const bool exists = gcd(magnitude(a), magnitude(m)) == 1;
    if (exists) mpz_invert(z.get_mpz_t(), magnitude(a).get_mpz_t(), magnitude(m).get_mpz_t());
    return {exists ? value_of(0, magnitude(m) == 1 ? 0 : z) : Value("0"), m.words.size()};
}

inline Result difference(const Value& a, const Value& b, const Value& m) {
    const bool at_least = a.sign != b.sign ? a.sign == 0 : (a.sign == 0 ? order(a, b) : order(b, a)) >= 0;
    return at_least ? sum(a, negated(b)) : sum(m, negated(sum(b, negated(a)).value));
}

inline Result power(const Value& a, const Value& e, const Value& m) {
    mpz_class z;
    if (magnitude(e) == 0) return answer(magnitude(m) == 1 ? 0 : 1);
    mpz_powm(z.get_mpz_t(), magnitude(a).get_mpz_t(), magnitude(e).get_mpz_t(), magnitude(m).get_mpz_t());
    return {value_of(0, z), m.words.size()};
}

struct Operands {
    Value a, b, c;
    bool same;
    std::uint32_t word() const { return b.words[0]; }  // of a second operand that is no record
};

using In = const Operands&;

// What the last operand is.
enum class Last { kAny, kDivisor, kModulusOfInverse, kBits, kBitsWithin, kWord };

struct Operation {
    const char* name;
    std::size_t operands;
    Last last;
    Result (*expected)(In x);
};

inline const Operation kOperations[] = {
    {"EN_UComp", 2, Last::kAny, [](In x) { return answer(order(x.a, x.b)); }},
    {"EN_GetFilledBitNum", 1, Last::kAny, [](In x) { return answer(static_cast<std::int64_t>(bits_of(magnitude(x.a)))); }},
    {"EN_IsBitSet", 2, Last::kBits, [](In x) { return answer(mpz_tstbit(magnitude(x.a).get_mpz_t(), x.word())); }},
    {"EN_MaskBit", 2, Last::kBitsWithin,
     [](In x) {
         return in_words(x.a, magnitude(x.a) % (mpz_class(1) << x.word()), x.word() % 32 == 0 ? x.word() / 32 : 0);
     }},
    {"EN_Add", 2, Last::kAny, [](In x) { return sum(x.a, x.b); }},
    {"EN_Sub", 2, Last::kAny, [](In x) { return sum(x.a, negated(x.b)); }},
    {"EN_SubU32", 2, Last::kWord, [](In x) { return shifted(x.a, magnitude(x.a) - x.word(), x.a.words.size()); }},
    {"EN_LShift1", 1, Last::kAny, [](In x) { return in_words(x.a, magnitude(x.a) * 2, x.a.words.size()); }},
    {"EN_RShift1", 1, Last::kAny, [](In x) { return shifted(x.a, magnitude(x.a) / 2, x.a.words.size()); }},
    {"EN_LShift", 2, Last::kBits,
     [](In x) { return shifted(x.a, magnitude(x.a) << x.word(), x.a.words.size() + x.word() / 32 + 1); }},
    {"EN_RShift", 2, Last::kBits,
     [](In x) {
         const std::size_t whole = x.word() / 32, words = x.a.words.size();
         if (whole > words) return answer(0);
         return shifted(x.a, magnitude(x.a) >> x.word(), std::max<std::size_t>(1, words - whole));
     }},
    {"EN_Mul", 2, Last::kAny, [](In x) { return product(x.a, x.b); }},
    {"EN_Sqr", 1, Last::kAny,
     [](In x) {
         return x.a.words.empty() ? Result{"-", 0} : product(x.a, x.a);
     }},
    {"quotient", 2, Last::kDivisor,
     [](In x) {
         return quotient(x.a, x.b,
                         std::max<std::size_t>(1, x.a.words.size() + 1 - std::min(x.a.words.size(), x.b.words.size())));
     }},
    {"remainder", 2, Last::kDivisor, [](In x) { return remainder(x.a, x.b); }},
    {"EN_Mod", 2, Last::kDivisor,
     [](In x) { return shifted(reduced(x.a, x.b), magnitude(reduced(x.a, x.b)), remainder(x.a, x.b).room); }},
    {"EN_Mod_Add", 3, Last::kDivisor, [](In x) { return remainder(sum(x.a, x.b).value, x.c); }},
    {"EN_Mod_Sub", 3, Last::kAny, [](In x) { return difference(x.a, x.b, x.c); }},
    {"EN_Mod_Mul", 3, Last::kDivisor, [](In x) { return product_mod(x.a, x.b, x.c); }},
    {"EN_Mod_MulA", 3, Last::kDivisor,
     [](In x) { return product_mod(reduced(x.a, x.c), x.same ? reduced(x.a, x.c) : x.b, x.c); }},
    {"EN_Mod_MulB", 3, Last::kDivisor,
     [](In x) { return product_mod(x.same ? reduced(x.b, x.c) : x.a, reduced(x.b, x.c), x.c); }},
    {"EN_Mod_MulAB", 3, Last::kDivisor, [](In x) { return product_mod(reduced(x.a, x.c), reduced(x.b, x.c), x.c); }},
    {"EN_Mod_Sqr", 2, Last::kDivisor, [](In x) { return product_mod(x.a, x.a, x.b); }},
    {"EN_Mod_SqrA", 2, Last::kDivisor, [](In x) { return product_mod(reduced(x.a, x.b), reduced(x.a, x.b), x.b); }},
    {"EN_Mod_Inv", 2, Last::kModulusOfInverse, [](In x) { return inverse(x.a, x.b); }},
    {"EN_GCD", 2, Last::kAny, [](In x) { return divisor(x.a, x.b); }},
    {"EN_LCM", 2, Last::kDivisor,
     [](In x) { return quotient(product(x.a, x.b).value, divisor(x.a, x.b).value, product(x.a, x.b).room); }},
    {"EN_ModU32", 2, Last::kWord,
     [](In x) { return answer(x.word() == 0 ? 0 : mpz_class(magnitude(x.a) % x.word()).get_si()); }}};

class Source {
public:
    explicit Source(Random from) : random(from) {}

    std::size_t length() {
        const std::uint32_t range = random.below(40);
        return random.below(range == 0 ? 401 : range < 4 ? 161 : range < 15 ? 40 : 6);
    }
    Value number(std::size_t words) {
        const std::uint32_t sign = random.below(2);
        return words == 0 && random.below(2) != 0 ? Value(sign, {0}) : Value(sign, shaped_words(random, words));
    }
    // A near-multiple of b, a number that differs from it low down, one with a factor in common (which b gets), or any.
    Value relative(Value& b) {
        const Value any = number(length());
        const mpz_class x = magnitude(any);
        const std::uint32_t relation = random.below(6);
        if (relation == 0) return value_of(any.sign, abs(magnitude(b) * x + random.below(3) - 1));
        if (relation == 1) return value_of(any.sign, magnitude(b) ^ (x >> random.below(200)));
        if (relation != 2) return any;
        if (x != 0) b = value_of(b.sign, magnitude(b) * x);
        return value_of(any.sign, magnitude(number(length())) * x);
    }
    Operands operands(std::size_t count, Last kind) {
        Operands x{};
        Value& last = count == 1 ? x.a : count == 2 ? x.b : x.c;
        last = number(length());
        if (kind != Last::kAny && magnitude(last) == 0) last = "1";
        if (count > 1) x.a = relative(last);
        if (count > 2) x.b = relative(last);
        if (kind == Last::kModulusOfInverse) x.a.sign = last.sign = 0;
        if (kind == Last::kBitsWithin || kind == Last::kWord) x.a = {x.a.sign, shaped_words(random, 1 + length())};
        const auto bits = static_cast<std::uint32_t>(32 * x.a.words.size());
        if (kind == Last::kBits) last = {0, {random.below(bits + 100)}};
        if (kind == Last::kBitsWithin)
            last = {0, {random.below(2) != 0 ? random.below(bits) : random.below(bits / 32) * 32}};
        if (kind == Last::kWord) last = {0, {random.below(2) != 0 ? 1 : x.a.words[0]}};
        x.same = count == 3 && random.below(8) == 0;
        if (x.same) x.b = x.a;
        return x;
    }
    // Base, exponent and a modulus of so many words.
    Operands of_power(std::uint32_t words, std::uint32_t longest_exponent) {
        Operands x = {{}, number(random.below(longest_exponent)), number(words), false};
        x.a = random.below(4) == 0 ? relative(x.c) : number(random.below(words + 2));
        if (x.c.words.size() > 80) x.c = number(words);
        if (random.below(3) != 0) x.c.words[0] |= 1;
        return x;
    }

    Random random;
};

inline void check(const char* name, std::size_t count, In x, const Result& expected) {
    std::vector<Value> operands = {x.a, x.b, x.c};
    operands.resize(count);
    expect_result(name, operands, x.same, expected.room, expected.value);
}

}  // namespace morvane::test
