// Also morvane sign and morvane verify.
#include "signature.h"

#include "command_line.h"
#include "input.h"
#include "json.h"
#include "output.h"
#include "rsa_schemes.h"
#include "target.h"

namespace morvane::tool {
namespace {

constexpr std::size_t kMostSignatureBytes = 4096;  // twice the longest, of two numbers of 4800 bits

InputError about_key(const std::string& name, const KeyError& error) {
    return InputError(display_name(name) + ": " + error.what());
}

struct Options {
    SignatureFiles files{"", kStandardInput, kStandardOutput, false};
    SignatureOptions choice;
    std::optional<std::string> kind;

    const KeyKind* wanted() const { return kind ? &find_key_kind("--algorithm", *kind) : nullptr; }
};

void add_options(CommandLine& line, Options& options) {
    line.add_option("--hash", options.choice.hash,
                    "The hash; default is sha256 of RSA, sha1 of DSA and EC, has160 of others")
        ->type_name("NAME");
    line.add_option("--scheme", options.choice.scheme, "RSA: pkcs1 or pss; default is pss")->type_name("NAME");
    line.add_option("--mgf-hash", options.choice.mask_hash, "RSA, pss: the hash of the mask; default is that of --hash")
        ->type_name("NAME");
    line.add_option("--salt", options.choice.salt, "RSA, pss: bytes of salt; default is the hash's")->type_name("N");
    line.add_flag("--old", options.choice.old, "KCDSA: the older generation, which signs a hash value");
    line.add_option("--algorithm,--kind", options.kind,
                    "What the key is, where its file does not tell: rsa, dsa, kcdsa, ec")
        ->type_name("NAME");
    line.offer("--hash", names_of(all_algorithms()));
    line.offer("--mgf-hash", names_of(kRsaHashes));
    line.offer("--scheme", {"pkcs1", "pss"});
    line.offer("--algorithm", names_of(all_key_kinds()));
}

constexpr char kAboutKeys[] =
    "The key is in PEM or DER, not enciphered; its file tells the kind, but for bare DER, which is taken for DSA\n"
    "when it may be KCDSA. DSA takes every hash that is no longer than q. KCDSA takes sha1 and has160, with --old\n"
    "every hash that is no longer than q. EC takes sha1 alone and signs by ECDSA, EC-KCDSA has160 alone.\n"
    "\n";

}  // namespace

void sign_file(const SignatureFiles& files, const SignatureOptions& options, const KeyKind* kind) {
    require_one_standard_input({files.key, files.input});
    const std::unique_ptr<Key> key = read_key(files.key, KeyPart::kPrivate, kind);
    try {
        const std::vector<std::uint8_t> signature = key->sign(options, files.input);
        Target target(files.signature, files.force);
        target.write(signature);
        target.keep();
    } catch (const KeyError& error) {
        throw about_key(files.key, error);
    }
}

void verify_file(const SignatureFiles& files, const SignatureOptions& options, const KeyKind* kind) {
    require_one_standard_input({files.key, files.input, files.signature});
    const std::unique_ptr<Key> key = read_key(files.key, KeyPart::kPublic, kind);
    const Secret signature = read_short(files.signature, kMostSignatureBytes);
    bool good = false;
    try {
        good = key->verify(options, files.input, *signature);
    } catch (const KeyError& error) {
        throw about_key(files.key, error);
    }
    if (files.as_json) {
        Json().open_object().file_member("file", files.input).member("good", good).close_object().print();
    } else {
        print(good ? "good signature\n" : "bad signature\n");
    }
    if (!good) throw MismatchError(display_name(files.input) + ": does not go with the signature and the key");
}

ExitCode run_sign(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    const CLI::Option* const input = line.add_input("What to sign; standard input for - and when it is missing");
    const CLI::Option* const output =
        line.add_output("Where the signature goes; standard output for - and when it is missing");
    const CLI::Option* const key = line.add_key_file("Read the private key from FILE");
    add_options(line, options);
    line.add_flag("--force", options.files.force, "Replace OUTPUT if it exists");
    line.footer(std::string(kAboutKeys) +
                "Examples:\n"
                "  morvane sign --key private.pem letter.txt letter.sig\n"
                "\n"
                "Exit codes: 0 good, 2 wrong usage, 3 a file cannot be read or written or is no such key.");
    if (const auto code = line.read(arguments)) return *code;
    options.files.key = key->results().front();
    if (!input->empty()) options.files.input = input->results().front();
    if (!output->empty()) options.files.signature = output->results().front();
    return carry_out(verb, [&] { sign_file(options.files, options.choice, options.wanted()); });
}

ExitCode run_verify(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    const CLI::Option* const input = line.add_input("What was signed; standard input for - and when it is missing");
    const CLI::Option* const key = line.add_key_file("Read the public or the private key from FILE");
    const CLI::Option* const signature = line.add_file("--signature", "Read the signature from FILE")->required();
    add_options(line, options);
    line.add_json(options.files.as_json);
    line.footer(std::string(kAboutKeys) +
                "Examples:\n"
                "  morvane verify --key public.pem --signature letter.sig letter.txt\n"
                "\n"
                "Exit codes: 0 good, 1 bad signature, 2 wrong usage, 3 a file cannot be read or is no such key.");
    if (const auto code = line.read(arguments)) return *code;
    options.files.key = key->results().front();
    options.files.signature = signature->results().front();
    if (!input->empty()) options.files.input = input->results().front();
    return carry_out(verb, [&] { verify_file(options.files, options.choice, options.wanted()); });
}

}  // namespace morvane::tool
