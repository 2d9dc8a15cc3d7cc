// morvane rsa: enciphers, deciphers, signs and verifies files with an RSA key.
#include "command_line.h"
#include "input.h"
#include "output.h"
#include "rsa_schemes.h"
#include "signature.h"
#include "target.h"

#include <algorithm>

namespace morvane::tool {
namespace {

struct Options {
    std::string operation;
    std::string key, input = kStandardInput, output = kStandardOutput;
    std::optional<std::string> label, signature;
    SignatureOptions choice;
    bool force = false, as_json = false;
};

const KeyKind& rsa() { return find_key_kind("", "rsa"); }

[[noreturn]] void refuse_input(const std::string& name, const std::string& why) {
    throw InputError(display_name(name) + ": " + why);
}

void write(const Options& options, std::span<const std::uint8_t> bytes) {
    Target target(options.output, options.force);
    target.write(bytes);
    target.keep();
}

[[noreturn]] void refuse_short_key(const Options& options) {
    refuse_input(options.key, "the key is too short for this scheme and hash");
}

// With what the options say of it, once its key is read.
template <typename Work>
void with_job(const Options& options, KeyPart wanted, Work work) {
    const SignatureOptions& choice = options.choice;
    const RsaScheme& scheme = find_row(kRsaSchemes, "--scheme", choice.scheme.value_or("oaep"));
    if (!scheme.enciphers) throw UsageError(std::string(scheme.name) + " does not encipher");
    if (scheme.padding != Padding::kOaep && (choice.hash || choice.mask_hash)) {
        throw UsageError("--hash and --mgf-hash are for oaep and signatures");
    }
    if (scheme.padding == Padding::kPkcs1 && options.label) throw UsageError("--label is for oaep and oaep-sha1-old");
    if (choice.salt) throw UsageError("--salt is for pss");
    if (options.signature) throw UsageError("verify, and nothing else, takes a --signature");
    require_one_standard_input({options.key, options.input});
    const RsaHash& hash = find_row(kRsaHashes, "--hash", choice.hash.value_or("sha256"));
    const RsaHash& mask_hash = choice.mask_hash ? find_row(kRsaHashes, "--mgf-hash", *choice.mask_hash) : hash;

    const std::unique_ptr<Key> key = read_key(options.key, wanted, &rsa());
    RsaJob job(static_cast<const RsaKey&>(*key));
    job.padding = scheme.padding;
    job.hash = &hash;
    job.mask_hash = &mask_hash;
    const std::string label = options.label.value_or("");
    job.label.assign(label.begin(), label.end());
    work(job);
}

void encrypt(const Options& options) {
    with_job(options, KeyPart::kPublic, [&](const RsaJob& job) {
        const std::optional<std::size_t> most = most_plain_bytes(job);
        if (!most) refuse_short_key(options);
        const Secret plain = read_short(options.input, *most);
        if ((*plain).size() > *most) {
            refuse_input(options.input, "is too long: key and scheme have room for " + std::to_string(*most) + " bytes");
        }
        write(options, *rsa_encrypt(job, *plain));
    });
}

void decrypt(const Options& options) {
    with_job(options, KeyPart::kPrivate, [&](const RsaJob& job) {
        if (!most_plain_bytes(job)) refuse_short_key(options);
        const Secret cipher = read_short(options.input, job.key.bytes());
        const std::optional<Secret> plain = rsa_decrypt(job, *cipher);
        if (!plain) throw MismatchError(display_name(options.input) + ": wrong key, scheme or label, or damaged data");
        write(options, **plain);
    });
}

void sign(const Options& options) {
    if (options.label) throw UsageError("--label is for oaep and oaep-sha1-old");
    if (options.signature) throw UsageError("verify, and nothing else, takes a --signature");
    sign_file({options.key, options.input, options.output, options.force}, options.choice, &rsa());
}

void verify(const Options& options) {
    if (options.label) throw UsageError("--label is for oaep and oaep-sha1-old");
    if (!options.signature) throw UsageError("verify takes a --signature");
    if (options.output != kStandardOutput) throw UsageError("verify writes no OUTPUT");
    verify_file({options.key, options.input, *options.signature, false, options.as_json}, options.choice, &rsa());
}

struct Operation {
    std::string_view name;
    void (*run)(const Options& options);
};

constexpr Operation kOperations[] = {{"encrypt", encrypt}, {"decrypt", decrypt}, {"sign", sign}, {"verify", verify}};

}  // namespace

ExitCode run_rsa(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    line.add_option("OPERATION", options.operation, "encrypt, decrypt, sign or verify")->required()->type_name("");
    line.offer("OPERATION", names_of(kOperations));
    const CLI::Option* const input = line.add_input("What to read; standard input for - and when it is missing");
    const CLI::Option* const output = line.add_output("What to write; standard output for - and when it is missing");
    const CLI::Option* const key = line.add_key_file("Read the key from FILE");
    const CLI::Option* const signature = line.add_file("--signature", "verify: read the signature from FILE");
    line.add_option("--scheme", options.choice.scheme,
                    "pkcs1, oaep or oaep-sha1-old, default is oaep; to sign pkcs1 or pss, default is pss")
        ->type_name("NAME");
    line.add_option("--hash", options.choice.hash, "md5, sha1, has160, sha256, sha384 or sha512; default is sha256")
        ->type_name("NAME");
    line.add_option("--mgf-hash", options.choice.mask_hash, "oaep and pss: the hash of the mask; default is that of --hash")
        ->type_name("NAME");
    line.add_option("--label", options.label, "oaep: a text that must be the same for both sides")->type_name("TEXT");
    line.add_option("--salt", options.choice.salt, "pss: bytes of salt, exactly so many to verify; default is the hash's")
        ->type_name("N");
    line.add_flag("--force", options.force, "Replace OUTPUT if it exists; it may be INPUT");
    line.add_json(options.as_json);
    line.offer("--scheme", {"pkcs1", "oaep", "oaep-sha1-old", "pss"});
    line.offer("--hash", names_of(kRsaHashes));
    line.offer("--mgf-hash", names_of(kRsaHashes));
    line.footer(
        "The key is in PEM or DER, as PKCS #1, PKCS #8 or, a public one, X.509 has it, and not enciphered. A\n"
        "private key serves where a public one is needed. Only short inputs can be enciphered. pkcs1 signs a\n"
        "DigestInfo, as other programs do; md5 in oaep and pss has this library's own form. md5, sha1\n"
        "and has160 are for existing formats.\n"
        "\n"
        "Examples:\n"
        "  morvane rsa encrypt --key public.pem cipher.key cipher.key.rsa\n"
        "  morvane rsa decrypt --key private.pem cipher.key.rsa cipher.key.2\n"
        "\n"
        "Exit codes: 0 good, 1 wrong key, damaged data or bad signature, 2 wrong usage, 3 a file cannot be read\n"
        "or written or is no such key.");
    if (const auto code = line.read(arguments)) return *code;
    options.key = key->results().front();
    if (!input->empty()) options.input = input->results().front();
    if (!output->empty()) options.output = output->results().front();
    if (!signature->empty()) options.signature = signature->results().front();

    return carry_out(verb, [&] {
        if (options.as_json && !same_name(options.operation, "verify")) throw UsageError("--json is for verify");
        find_row(kOperations, "OPERATION", options.operation).run(options);
    });
}

}  // namespace morvane::tool
