// morvane ec: enciphers and deciphers files with a key on a curve.
#include "command_line.h"
#include "ec_key.h"
#include "input.h"
#include "target.h"

namespace morvane::tool {
namespace {

constexpr std::size_t kMostPlainBytes = std::size_t{64} << 20;  // they are in memory, and the ciphertext beside them

struct Options {
    std::string operation, key, input = kStandardInput, output = kStandardOutput;
    bool force = false;
};

std::unique_ptr<Key> read(const Options& options, KeyPart wanted) {
    require_one_standard_input({options.key, options.input});
    return read_key(options.key, wanted, &find_key_kind("", "ec"));
}

void write(const Options& options, Bytes bytes) {
    Target target(options.output, options.force);
    target.write(bytes);
    target.keep();
}

void encrypt(const Options& options) {
    const std::unique_ptr<Key> key = read(options, KeyPart::kPublic);
    const Secret plain(read_whole(options.input, kMostPlainBytes));
    if ((*plain).empty()) throw InputError(display_name(options.input) + ": is empty, and there is nothing to encipher");
    const std::optional<Secret> cipher = static_cast<const EcKey&>(*key).encrypt(*plain);
    if (!cipher) throw InputError(display_name(options.key) + ": the library does not encipher with it");
    write(options, **cipher);
}

void decrypt(const Options& options) {
    const std::unique_ptr<Key> key = read(options, KeyPart::kPrivate);
    const auto& own = static_cast<const EcKey&>(*key);
    const std::optional<Secret> plain = own.decrypt(read_whole(options.input, kMostPlainBytes + own.overhead()));
    if (!plain) throw MismatchError(display_name(options.input) + ": wrong key or damaged data");
    write(options, **plain);
}

struct Operation {
    std::string_view name;
    void (*run)(const Options& options);
};

constexpr Operation kOperations[] = {{"encrypt", encrypt}, {"decrypt", decrypt}};

}  // namespace

ExitCode run_ec(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    line.add_option("OPERATION", options.operation, "encrypt or decrypt")->required()->type_name("");
    line.offer("OPERATION", names_of(kOperations));
    const CLI::Option* const input = line.add_input("What to read; standard input for - and when it is missing");
    const CLI::Option* const output = line.add_output("What to write; standard output for - and when it is missing");
    const CLI::Option* const key = line.add_key_file("Read the key from FILE");
    line.add_flag("--force", options.force, "Replace OUTPUT if it exists; it may be INPUT");
    line.footer(
        "The key is one that 'morvane genkey ec' makes, or OpenSSL on the same curves, and not enciphered. A private\n"
        "key serves where a public one is needed. The scheme is that of ANSI X9.63 with SHA-1: 61 or 63 bytes are added,\n"
        "and a change of any is noticed. An input has from 1 byte to 64 MiB. EC-KCDSA keys only sign.\n"
        "\n"
        "Examples:\n"
        "  morvane ec encrypt --key ec-public.pem letter.txt letter.ec\n"
        "  morvane ec decrypt --key ec.pem letter.ec letter.3\n"
        "\n"
        "Exit codes: 0 good, 1 wrong key or damaged data, 2 wrong usage, 3 a file cannot be read or written or is no\n"
        "such key.");
    if (const auto code = line.read(arguments)) return *code;
    options.key = key->results().front();
    if (!input->empty()) options.input = input->results().front();
    if (!output->empty()) options.output = output->results().front();
    return carry_out(verb, [&] { find_row(kOperations, "OPERATION", options.operation).run(options); });
}

}  // namespace morvane::tool
