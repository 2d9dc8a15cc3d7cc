// morvane prime: searches for a prime, or tells whether a number is one.
#include "command_line.h"
#include "json.h"
#include "number.h"
#include "output.h"
#include "waiting.h"

#include <morvane/bignum.h>
#include <morvane/prime.h>

#include <algorithm>

namespace morvane::tool {
namespace {

constexpr std::int32_t kMostBits = 16384;

struct Options {
    std::optional<std::int32_t> bits;
    std::string kind = "rsa";
    std::optional<std::string> tested, step, remainder;
    std::string format = "hex";
    bool quiet = false, as_json = false;
};

struct Kind {
    std::string_view name;
    std::int32_t (*generate)(ENUM* p, std::int32_t bits);
    std::int32_t (*generate_stepped)(ENUM* p, std::int32_t bits, const ENUM* step, const ENUM* remainder);
};

constexpr Kind kKinds[] = {
    {"rsa", EN_GeneratePrimeRSA, nullptr}, {"strong", EN_GeneratePrimeStrongRSA, nullptr},
    {"x9", EN_GenerateX9Prime, nullptr},   {"strong-x9", EN_GenerateStrongX9Prime, nullptr},
    {"dh", nullptr, EN_GeneratePrimeDH},   {"strong-dh", nullptr, EN_GeneratePrimeStrongDH},
};

struct Format {
    std::string_view name;
    std::string (*write)(const Number& x);
};

constexpr Format kFormats[] = {{"hex", to_hexadecimal}, {"dec", to_decimal}};

Number number_of(const std::string& option, const std::string& text) {
    std::optional<Number> number = read_number(text);
    if (!number) throw UsageError(option + " is no number in decimal digits, or hexadecimal ones after 0x");
    return std::move(*number);
}

ExitCode test(const Options& options) {
    if (options.bits || options.step || options.remainder) throw UsageError("--test takes a number and nothing else");
    const Number n = number_of("--test", *options.tested);
    bool prime = false, safe = false;
    {
        const Waiting waiting("testing", options.quiet);
        prime = EN_IsPrime(n.get()) != 0;
        safe = prime && EN_IsStrongPrime(n.get()) != 0;
    }
    if (options.as_json) {
        Json()
            .open_object()
            .member("number", to_hexadecimal(n))
            .member("prime", prime)
            .member("safe", safe)
            .close_object()
            .print();
    } else {
        print(safe ? "safe prime\n" : prime ? "prime\n" : "not prime\n");
    }
    return prime ? kSuccess : kMismatch;
}

ExitCode generate(const Options& options) {
    if (!options.bits) throw UsageError("a number of bits or --test is needed");
    if (*options.bits < 2 || *options.bits > kMostBits) {
        throw UsageError("BITS is from 2 to " + std::to_string(kMostBits));
    }
    const Kind& kind = find_row(kKinds, "--kind", options.kind);
    const Format& format = find_row(kFormats, "--format", options.format);
    if (kind.generate != nullptr && (options.step || options.remainder)) {
        throw UsageError("--step and --remainder are for dh and strong-dh");
    }
    if (kind.generate == nullptr && !options.step) throw UsageError(std::string(kind.name) + " takes a --step");
    const Number step = number_of("--step", options.step.value_or("1"));
    const Number remainder = number_of("--remainder", options.remainder.value_or("1"));

    const Number p(std::max(static_cast<std::uint32_t>(*options.bits), step.bits()) / 32 + 2);
    {
        const Waiting waiting("searching", options.quiet);
        const std::int32_t found =
            kind.generate != nullptr
                ? kind.generate(p.get(), *options.bits)
                : kind.generate_stepped(p.get(), *options.bits, step.get(), options.remainder ? remainder.get() : nullptr);
        if (found == 0) throw std::bad_alloc();
    }
    if (options.as_json) {
        Json().open_object().member("prime", format.write(p)).member("bits", p.bits()).close_object().print();
    } else {
        print(format.write(p) + "\n");
    }
    return kSuccess;
}

}  // namespace

ExitCode run_prime(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    line.add_option("BITS", options.bits, "Search for a prime of so many bits, from 2 to 16384")->type_name("");
    line.add_option("--kind", options.kind, "rsa, strong, x9, strong-x9, dh or strong-dh; default is rsa")
        ->type_name("KIND");
    line.add_option("--step", options.step, "dh and strong-dh: the prime leaves a remainder modulo A")->type_name("A");
    line.add_option("--remainder", options.remainder, "The remainder; default is 1, of strong-dh 3")->type_name("R");
    line.add_option("--format", options.format, "hex or dec; default is hex")->type_name("NAME");
    line.add_option("--test", options.tested, "Tell whether NUMBER is prime")->type_name("NUMBER");
    line.add_flag("--quiet", options.quiet, "Do not show on a terminal how long a search has taken");
    line.add_json(options.as_json);
    line.offer("--kind", names_of(kKinds));
    line.offer("--format", names_of(kFormats));
    line.footer(
        "Strong kinds make safe primes p = 2 q + 1, with q prime. x9 draws its numbers from the generator named\n"
        "after X9.31. The two highest bits are set, for dh the highest. Where a remainder allows no prime, the\n"
        "nearest that does is taken. Numbers are given in decimal digits, or in hexadecimal ones after 0x.\n"
        "\n"
        "Examples:\n"
        "  morvane prime 512 --format dec\n"
        "  morvane prime --test 0x17\n"
        "\n"
        "Exit codes: 0 good, or the tested number is prime; 1 it is not; 2 wrong usage, 3 no memory or standard\n"
        "output cannot be written.");
    if (const auto code = line.read(arguments)) return *code;
    try {
        return options.tested ? test(options) : generate(options);
    } catch (const UsageError& error) {
        return usage_error(verb.name, error.what());
    }
}

}  // namespace morvane::tool
