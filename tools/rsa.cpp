// morvane rsa: enciphers, deciphers, signs and verifies files with an RSA key.
#include "command_line.h"
#include "file_digest.h"
#include "input.h"
#include "output.h"
#include "rsa_schemes.h"
#include "target.h"

#include <algorithm>

namespace morvane::tool {
namespace {

constexpr std::size_t kReadBytes = 1 << 20;
constexpr std::int64_t kMostSaltBytes = std::int64_t{4} * E_RSA_MODULUS_WORDS;
constexpr std::size_t kMostBytes = INT32_MAX;  // of what the library takes in one call

struct Options {
    std::string operation;
    std::string key, input = kStandardInput, output = kStandardOutput;
    std::optional<std::string> scheme, hash, mask_hash, label, signature;
    std::optional<std::int64_t> salt;
    bool force = false;
};

// What was wrong is the data or the key for it. Its text is a complete message.
struct MismatchError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void refuse_input(const std::string& name, const std::string& why) {
    throw InputError(display_name(name) + ": " + why);
}

// At most limit bytes and, of a longer file, one more.
Secret read_short(const std::string& name, std::size_t limit) {
    Secret bytes(std::vector<std::uint8_t>(limit + 1));
    const std::size_t size = Input(name).read(*bytes);
    (*bytes).resize(size);
    return bytes;
}

std::vector<std::uint8_t> read_whole(const std::string& name) {
    Input input(name);
    std::vector<std::uint8_t> bytes;
    for (std::size_t size = 0;;) {
        bytes.resize(size + kReadBytes);
        const std::size_t more = input.read(std::span(bytes).subspan(size));
        size += more;
        if (size > kMostBytes) refuse_input(name, "is too long for pss");
        if (more == kReadBytes) continue;
        bytes.resize(size);
        return bytes;
    }
}

void write(const Options& options, std::span<const std::uint8_t> bytes) {
    Target target(options.output, options.force);
    target.write(bytes);
    target.keep();
}

[[noreturn]] void refuse_short_key(const Options& options) {
    refuse_input(options.key, "the key is too short for this scheme, hash and salt");
}

void encrypt(const Options& options, const RsaJob& job) {
    const std::optional<std::size_t> most = most_plain_bytes(job);
    if (!most) refuse_short_key(options);
    const Secret plain = read_short(options.input, *most);
    if ((*plain).size() > *most) {
        refuse_input(options.input, "is too long: key and scheme have room for " + std::to_string(*most) + " bytes");
    }
    write(options, rsa_encrypt(job, *plain));
}

void decrypt(const Options& options, const RsaJob& job) {
    if (!most_plain_bytes(job)) refuse_short_key(options);
    const Secret cipher = read_short(options.input, job.key.bytes());
    const std::optional<Secret> plain = rsa_decrypt(job, *cipher);
    if (!plain) throw MismatchError(display_name(options.input) + ": wrong key, scheme or label, or damaged data");
    write(options, **plain);
}

std::vector<std::uint8_t> data_to_sign(const Options& options, const RsaJob& job) {
    if (job.padding == Padding::kPss) return read_whole(options.input);
    return FileDigester(*find_algorithm(Kind::kDigest, job.hash->name))(options.input);
}

void sign(const Options& options, const RsaJob& job) {
    if (job.padding == Padding::kPss && job.key.bits() % 8 != 0) {
        // The library makes signatures then that others, or even itself, may refuse.
        refuse_input(options.key, "pss signs only under a modulus of a multiple of 8 bits");
    }
    const std::optional<std::vector<std::uint8_t>> signature = rsa_sign(job, data_to_sign(options, job));
    if (!signature) refuse_short_key(options);
    write(options, *signature);
}

void verify(const Options& options, const RsaJob& job) {
    const Secret signature = read_short(*options.signature, job.key.bytes());
    const bool good = rsa_verify(job, data_to_sign(options, job), *signature);
    print(good ? "good signature\n" : "bad signature\n");
    if (!good) throw MismatchError(display_name(options.input) + ": does not go with the signature and the key");
}

struct Operation {
    std::string_view name;
    bool signs;
    KeyPart key;
    void (*run)(const Options& options, const RsaJob& job);
};

constexpr Operation kOperations[] = {
    {"encrypt", false, KeyPart::kPublic, encrypt},
    {"decrypt", false, KeyPart::kPrivate, decrypt},
    {"sign", true, KeyPart::kPrivate, sign},
    {"verify", true, KeyPart::kPublic, verify},
};

RsaJob make_job(const Options& options, const Operation& operation) {
    const std::string default_scheme = operation.signs ? "pss" : "oaep";
    const RsaScheme& scheme = find_row(kRsaSchemes, "--scheme", options.scheme.value_or(default_scheme));
    const std::string name(scheme.name);
    if (operation.signs ? !scheme.signs : !scheme.enciphers) {
        throw UsageError(name + " does not " + std::string(operation.name));
    }
    const bool hashes = scheme.padding == Padding::kOaep || operation.signs;
    const bool masks = scheme.padding == Padding::kOaep || scheme.padding == Padding::kPss;
    const bool labels = scheme.padding == Padding::kOaep || scheme.padding == Padding::kOldOaep;
    if (options.hash && !hashes) throw UsageError("--hash is for oaep and signatures");
    if (options.mask_hash && !masks) throw UsageError("--mgf-hash is for oaep and pss");
    if (options.label && !labels) throw UsageError("--label is for oaep and oaep-sha1-old");
    if (options.salt && scheme.padding != Padding::kPss) throw UsageError("--salt is for pss");
    if (options.salt && (*options.salt < 0 || *options.salt > kMostSaltBytes)) {
        throw UsageError("--salt is from 0 to " + std::to_string(kMostSaltBytes));
    }
    const bool verifies = operation.run == verify;
    if (verifies != options.signature.has_value()) throw UsageError("verify, and nothing else, takes a --signature");
    if (verifies && options.output != kStandardOutput) throw UsageError("verify writes no OUTPUT");
    const std::string* const inputs[] = {&options.key, &options.input, verifies ? &*options.signature : nullptr};
    if (std::ranges::count_if(inputs, [](const auto* file) { return file != nullptr && *file == kStandardInput; }) > 1) {
        throw UsageError("standard input cannot be several files at once");
    }

    RsaJob job;
    job.padding = scheme.padding;
    job.hash = &find_row(kRsaHashes, "--hash", options.hash.value_or("sha256"));
    job.mask_hash = options.mask_hash ? &find_row(kRsaHashes, "--mgf-hash", *options.mask_hash) : job.hash;
    const std::string label = options.label.value_or("");
    job.label.assign(label.begin(), label.end());
    job.salt_bytes = static_cast<std::int32_t>(options.salt.value_or(static_cast<std::int64_t>(job.hash->field_bytes)));
    job.key = read_rsa_key(options.key, operation.key);
    return job;
}

}  // namespace

ExitCode run_rsa(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    line.add_option("OPERATION", options.operation, "encrypt, decrypt, sign or verify")->required()->type_name("");
    const CLI::Option* const input = line.add_file("INPUT", "What to read; standard input for - and when it is missing");
    const CLI::Option* const output =
        line.add_file("OUTPUT", "What to write; standard output for - and when it is missing");
    const CLI::Option* const key = line.add_file("--key", "Read the key from FILE")->required()->type_name("FILE");
    const CLI::Option* const signature =
        line.add_file("--signature", "verify: read the signature from FILE")->type_name("FILE");
    line.add_option("--scheme", options.scheme,
                    "pkcs1, oaep or oaep-sha1-old, default is oaep; to sign pkcs1 or pss, default is pss")
        ->type_name("NAME");
    line.add_option("--hash", options.hash, "md5, sha1, has160, sha256, sha384 or sha512; default is sha256")
        ->type_name("NAME");
    line.add_option("--mgf-hash", options.mask_hash, "oaep and pss: the hash of the mask; default is that of --hash")
        ->type_name("NAME");
    line.add_option("--label", options.label, "oaep: a text that must be the same for both sides")->type_name("TEXT");
    line.add_option("--salt", options.salt, "pss: bytes of salt, exactly so many to verify; default is the hash's")
        ->type_name("N");
    line.add_flag("--force", options.force, "Replace OUTPUT if it exists; it may be INPUT");
    line.footer(
        "The key is in PEM or DER, as PKCS #1, PKCS #8 or, a public one, X.509 has it, and not enciphered. A\n"
        "private key serves where a public one is needed. Only short inputs can be enciphered. pkcs1 signs a\n"
        "DigestInfo, as other programs do; md5 in oaep and pss has this library's own form. md5, sha1\n"
        "and has160 are for existing formats.\n"
        "\n"
        "Exit codes: 0 good, 1 wrong key, damaged data or bad signature, 2 wrong usage, 3 a file cannot be read\n"
        "or written or is no such key.");
    if (const auto code = line.read(arguments)) return *code;
    options.key = key->results().front();
    if (!input->empty()) options.input = input->results().front();
    if (!output->empty()) options.output = output->results().front();
    if (!signature->empty()) options.signature = signature->results().front();

    try {
        const Operation& operation = find_row(kOperations, "OPERATION", options.operation);
        operation.run(options, make_job(options, operation));
        return kSuccess;
    } catch (const UsageError& error) {
        return usage_error(verb.name, error.what());
    } catch (const MismatchError& error) {
        complain(error.what());
        return kMismatch;
    }
}

}  // namespace morvane::tool
