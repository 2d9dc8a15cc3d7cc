// morvane encrypt and decrypt: one cipher, one key, one file.
#include "command_line.h"
#include "file_cipher.h"
#include "hex.h"
#include "input.h"
#include "output.h"
#include "target.h"

#include <morvane/cipher.h>

#include <optional>

namespace morvane::tool {
namespace {

constexpr int kMostRounds = E_RC5_MAX_ROUNDS;
constexpr int kDefaultRounds = kMostRounds;
constexpr int kMostEffectiveBits = E_RC2_MAX_BITS;
constexpr std::size_t kMostKeyBytes = 256;  // of all ciphers

struct Options {
    std::string algorithm;
    std::optional<std::string> key, key_file, iv;
    std::optional<int> feedback_bits, effective_bits, rounds;
    bool no_padding = false;
    bool force = false;
    std::string input = kStandardInput;
    std::string output = kStandardOutput;
};

// "8", "16 or 24", "1-72"
std::string key_lengths(const std::vector<const Cipher*>& rows) {
    std::string text;
    for (const Cipher* const row : rows) text += (text.empty() ? "" : " or ") + row->key_lengths();
    return text;
}

// "des-ecb", "des-cbc", "des-cfb", "des-ofb", or "rc4"
std::vector<std::string> full_names(const Cipher& cipher) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < kModes; ++i) {
        const auto mode = static_cast<Mode>(i);
        if (cipher.in(mode).encrypt == nullptr) continue;
        names.emplace_back(cipher.name);
        if (mode != Mode::kStream) names.back().append("-").append(name_of(mode));
    }
    return names;
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text.append(text.empty() ? "" : " ").append(word);
    return text;
}

std::optional<Mode> find_mode(const Cipher& cipher, std::string_view name) {
    for (std::size_t i = 0; i < kModes; ++i) {
        const auto mode = static_cast<Mode>(i);
        if (same_name(name_of(mode), name) && cipher.in(mode).encrypt != nullptr) return mode;
    }
    return std::nullopt;
}

std::vector<std::uint8_t> read_hex(const std::string& option, const std::string& digits) {
    std::optional<std::vector<std::uint8_t>> bytes = from_hex(digits);
    // The digits may be a key, so they are not repeated.
    if (!bytes) throw UsageError(option + " is not an even number of hexadecimal digits");
    return std::move(*bytes);
}

std::vector<std::uint8_t> read_key(const Options& options) {
    if (options.key.has_value() == options.key_file.has_value()) {
        throw UsageError("either --key-hex or --key-file is needed");
    }
    if (options.key) return read_hex("--key-hex", *options.key);
    if (*options.key_file == kStandardInput && options.input == kStandardInput) {
        throw UsageError("standard input cannot be both the key and the input");
    }
    Input file(*options.key_file);
    Secret buffer(std::vector<std::uint8_t>(kMostKeyBytes + 1));
    const auto end = (*buffer).begin() + static_cast<std::ptrdiff_t>(file.read(*buffer));
    return {(*buffer).begin(), end};
}

std::vector<std::uint8_t> read_iv(const Options& options, const Cipher& cipher, Mode mode) {
    if (mode == Mode::kEcb || mode == Mode::kStream) {
        if (options.iv) throw UsageError(options.algorithm + " takes no --iv");
        return {};
    }
    const std::string has = options.algorithm + " takes an --iv of " + std::to_string(cipher.block_bytes) + " bytes";
    if (!options.iv) throw UsageError(has);
    std::vector<std::uint8_t> iv = read_hex("--iv", *options.iv);
    if (iv.size() != cipher.block_bytes) throw UsageError(has + ", not " + std::to_string(iv.size()));
    return iv;
}

int read_feedback_bits(const Options& options, const Cipher& cipher, Mode mode) {
    const int block_bits = static_cast<int>(8 * cipher.block_bytes);
    if (mode != Mode::kCfb && mode != Mode::kOfb) {
        if (options.feedback_bits) throw UsageError("--feedback-bits is for cfb and ofb");
        return 0;
    }
    const int bits = options.feedback_bits.value_or(block_bits);
    if (bits < 8 || bits > block_bits || bits % 8 != 0) {
        throw UsageError("--feedback-bits of " + options.algorithm + " is a multiple of 8 from 8 to " +
                         std::to_string(block_bits));
    }
    return bits;
}

int in_range(const std::string& option, int value, int least, int most) {
    if (value >= least && value <= most) return value;
    throw UsageError(option + " is from " + std::to_string(least) + " to " + std::to_string(most));
}

int read_parameter(const Options& options, const Cipher& cipher, std::size_t key_bytes) {
    const bool takes_bits = cipher.parameter == Parameter::kEffectiveBits;
    const bool takes_rounds = cipher.parameter == Parameter::kRounds;
    if (options.effective_bits && !takes_bits) throw UsageError("--effective-bits is for rc2");
    if (options.rounds && !takes_rounds) throw UsageError("--rounds is for rc5");
    const int bits = options.effective_bits.value_or(static_cast<int>(8 * key_bytes));
    if (takes_bits) return in_range("--effective-bits", bits, 1, kMostEffectiveBits);
    return takes_rounds ? in_range("--rounds", options.rounds.value_or(kDefaultRounds), 0, kMostRounds) : 0;
}

CipherJob make_job(const Options& options, bool encrypt) {
    const std::string_view algorithm = options.algorithm;
    const std::size_t dash = algorithm.find('-');
    const std::string_view name = algorithm.substr(0, dash);
    std::vector<const Cipher*> rows;
    for (const Cipher& cipher : all_ciphers()) {
        if (same_name(cipher.name, name)) rows.push_back(&cipher);
    }
    if (rows.empty()) throw UsageError("no cipher is called '" + std::string(name) + "'");
    // The first row of a name has all its modes.
    const std::optional<Mode> mode =
        find_mode(*rows.front(), dash == std::string_view::npos ? "" : algorithm.substr(dash + 1));
    if (!mode) throw UsageError("'" + options.algorithm + "' is none of " + joined(full_names(*rows.front())));

    Secret key(read_key(options));
    const std::size_t key_bytes = (*key).size();
    for (const Cipher* const row : rows) {
        if (!row->takes_key_of(key_bytes)) continue;
        if (row->in(*mode).encrypt == nullptr) {
            throw UsageError(options.algorithm + " takes no key of " + std::to_string(key_bytes) + " bytes, only " +
                             joined(full_names(*row)) + " does");
        }
        return {.cipher = row,
                .mode = *mode,
                .encrypt = encrypt,
                .padding = !options.no_padding,
                .feedback_bits = read_feedback_bits(options, *row, *mode),
                .parameter = read_parameter(options, *row, key_bytes),
                .key = std::move(key),
                .iv = read_iv(options, *row, *mode)};
    }
    throw UsageError("a key of " + std::string(name) + " has " + key_lengths(rows) + " bytes, not " +
                     (key_bytes > kMostKeyBytes ? "more" : std::to_string(key_bytes)));
}

ExitCode run(const Verb& verb, const Arguments& arguments, bool encrypt) {
    CommandLine line(verb);
    Options options;
    line.add_option("CIPHER", options.algorithm, "A cipher of 'morvane list' and its mode: des3-cbc, seed-ofb, rc4")
        ->required()
        ->type_name("");
    std::vector<std::string> names;
    for (const Cipher& cipher : all_ciphers()) {
        for (std::string& name : full_names(cipher)) names.push_back(std::move(name));
    }
    line.offer("CIPHER", std::move(names));
    const CLI::Option* const input = line.add_input("What to read; standard input for - and when it is missing");
    const CLI::Option* const output = line.add_output("What to write; standard output for - and when it is missing");
    const CLI::Option* const key_file =
        line.add_file("--key-file", "Read the key, raw bytes without a line end, from FILE");
    line.add_option("--key-hex,--key", options.key, "The key; other users of the machine may see it here")
        ->type_name("HEX");
    line.add_option("--iv", options.iv, "The iv: a block, for all modes but ecb")->type_name("HEX");
    line.add_flag("--no-padding", options.no_padding, "ecb and cbc: the length is a multiple of the block, and stays");
    line.add_option("--feedback-bits", options.feedback_bits, "cfb and ofb: a multiple of 8; default is the whole block")
        ->type_name("N");
    line.add_option("--effective-bits", options.effective_bits, "rc2: 1 to 1024; default is the length of the key")
        ->type_name("N");
    line.add_option("--rounds", options.rounds, "rc5: 0 to 16; default is 16")->type_name("N");
    line.add_flag("--force", options.force, "Replace OUTPUT if it exists; it may be INPUT");
    line.footer(
        "Modes: ecb, cbc, cfb, ofb; rc4 has none. ecb and cbc pad as in PKCS #5. A des3 key has 16 bytes or,\n"
        "for cbc, 24. --iv is in the usual order of bytes also for blowfish-cbc and idea-cbc, where the\n"
        "library's own functions take each half of it reversed.\n"
        "\n"
        "OUTPUT appears when it is complete, or not at all. Standard output is written as the data comes,\n"
        "so it may have got some when the data turns out to be damaged. No mode notices every change. Public keys\n"
        "encipher with 'morvane rsa' and 'morvane ec'.\n"
        "\n"
        "Examples:\n" +
        std::string(encrypt
                        ? "  morvane encrypt des3-cbc --key-file cipher.key --iv 0011223344556677 letter.txt letter.des3"
                        : "  morvane decrypt des3-cbc --key-file cipher.key --iv 0011223344556677 letter.des3 letter.2") +
        "\n\n"
        "Exit codes: 0 good, 1 wrong key or damaged data, 2 wrong usage, 3 a file cannot be read or written.");
    if (const auto code = line.read(arguments)) return *code;
    if (!input->empty()) options.input = input->results().front();
    if (!output->empty()) options.output = output->results().front();
    if (!key_file->empty()) options.key_file = key_file->results().front();

    try {
        run_cipher(make_job(options, encrypt), options.input, options.output, options.force);
        return kSuccess;
    } catch (const UsageError& error) {
        return usage_error(verb.name, error.what());
    } catch (const DamageError& error) {
        complain(error.what());
        return kMismatch;
    }
}

}  // namespace

ExitCode run_encrypt(const Verb& verb, const Arguments& arguments) { return run(verb, arguments, true); }
ExitCode run_decrypt(const Verb& verb, const Arguments& arguments) { return run(verb, arguments, false); }

}  // namespace morvane::tool
