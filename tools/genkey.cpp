// morvane genkey: makes a key pair.
#include "command_line.h"
#include "key_file.h"
#include "output.h"
#include "target.h"
#include "waiting.h"

#include <array>

namespace morvane::tool {
namespace {

constexpr std::int64_t kMostBits = std::int64_t{32} * E_RSA_MODULUS_WORDS;
constexpr std::size_t kAuxiliaryBytes = 13;

struct Options {
    std::string algorithm;
    std::int64_t bits = 3072;
    std::int64_t exponent = 65537;
    std::string kind = "plain", format = "pem";
    std::string key_file;
    std::optional<std::string> public_file;
    bool force = false;
    bool quiet = false;
};

template <auto Generate>
void generate_plain(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e) {
    Generate(key, bits, e);
}

template <auto Generate>
void generate_x9(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e) {
    std::array<Secret, 4> primes;
    for (Secret& prime : primes) (*prime).resize(kAuxiliaryBytes);
    Generate(key, bits, e, (*primes[0]).data(), (*primes[1]).data(), (*primes[2]).data(), (*primes[3]).data());
}

struct Algorithm {
    std::string_view name;
};

constexpr Algorithm kAlgorithms[] = {{"rsa"}};

struct Kind {
    std::string_view name;
    std::int64_t least_bits;
    void (*generate)(E_RSA_KEY* key, std::int32_t bits, std::uint32_t e);
};

constexpr Kind kKinds[] = {
    {"plain", 32, generate_plain<E_RSA_GenerateKey>},
    {"strong", 32, generate_plain<E_RSA_GenerateStrongKey>},
    {"x9", 200, generate_x9<E_RSA_GenerateX9Key>},
    {"strong-x9", 200, generate_x9<E_RSA_GenerateStrongX9Key>},
};

struct Format {
    std::string_view name;
    Secret (*encode)(const RsaKey& key, KeyPart part);
};

constexpr Format kFormats[] = {{"pem", to_pem}, {"der", to_der}};

void write(const std::string& name, const Options& options, const Secret& bytes, Access access) {
    Target target(name, options.force, access);
    target.write(*bytes);
    target.keep();
}

void generate(const Options& options) {
    find_row(kAlgorithms, "ALGORITHM", options.algorithm);
    const Kind& kind = find_row(kKinds, "--kind", options.kind);
    const Format& format = find_row(kFormats, "--format", options.format);
    if (options.bits < kind.least_bits || options.bits > kMostBits) {
        throw UsageError("--bits of " + std::string(kind.name) + " is from " + std::to_string(kind.least_bits) + " to " +
                         std::to_string(kMostBits));
    }
    if (options.exponent < 3 || options.exponent > UINT32_MAX || options.exponent % 2 == 0) {
        throw UsageError("--exponent is an odd number from 3 to " + std::to_string(UINT32_MAX));
    }
    if (options.public_file == options.key_file) throw UsageError("--out and --public are the same");
    // Before a search that may take minutes.
    Target::require_free(options.key_file, options.force);
    if (options.public_file) Target::require_free(*options.public_file, options.force);

    const RsaKey key;
    {
        const LibraryQuiet quiet;
        const Waiting waiting("searching", options.quiet);
        kind.generate(key.get(), static_cast<std::int32_t>(options.bits), static_cast<std::uint32_t>(options.exponent));
    }
    if (key.bits() == 0) throw std::bad_alloc();
    // The private key comes last: should both names lead to one file after all, it is the one that stays.
    if (options.public_file) {
        write(*options.public_file, options, format.encode(key, KeyPart::kPublic), Access::kUsual);
    }
    write(options.key_file, options, format.encode(key, KeyPart::kPrivate), Access::kOwner);
}

}  // namespace

ExitCode run_genkey(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    line.add_option("ALGORITHM", options.algorithm, "rsa")->required()->type_name("");
    line.add_option("--bits", options.bits, "Length of the modulus; default is 3072")->type_name("N");
    line.add_option("--exponent", options.exponent, "The public exponent; default is 65537")->type_name("E");
    line.add_option("--kind", options.kind, "plain, strong, x9 or strong-x9; default is plain")->type_name("KIND");
    const CLI::Option* const key = line.add_file("--out", "Write the private key to KEY, - for standard output");
    line.get_option("--out")->required()->type_name("KEY");
    const CLI::Option* const public_key = line.add_file("--public", "Write the public key to PUBLIC")->type_name("PUBLIC");
    line.add_option("--format", options.format, "pem or der; default is pem")->type_name("NAME");
    line.add_flag("--force", options.force, "Replace files that exist");
    line.add_flag("--quiet", options.quiet, "Do not show on a terminal how long the search has taken");
    line.footer(
        "Keys are written in the forms of PKCS #1, the private one, where the system has such permissions, for\n"
        "nobody but the owner to read. strong has safe primes, which takes minutes for 2048 bits. x9 has primes in\n"
        "the manner of ANSI X9.31, and strong-x9 builds these on safe primes.\n"
        "\n"
        "Exit codes: 0 good, 2 wrong usage, 3 no memory or a file cannot be written.");
    if (const auto code = line.read(arguments)) return *code;
    options.key_file = key->results().front();
    if (!public_key->empty()) options.public_file = public_key->results().front();
    try {
        generate(options);
        return kSuccess;
    } catch (const UsageError& error) {
        return usage_error(verb.name, error.what());
    }
}

}  // namespace morvane::tool
