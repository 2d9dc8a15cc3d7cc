// morvane genkey: makes a key pair, or parameters.
#include "command_line.h"
#include "input.h"
#include "json.h"
#include "key.h"
#include "output.h"
#include "pem.h"
#include "target.h"
#include "waiting.h"

namespace morvane::tool {
namespace {

struct Options {
    std::string algorithm, format = "pem";
    KeyOptions choice;
    std::string out;
    std::optional<std::string> public_file, parameters;
    bool parameters_only = false, force = false, quiet = false, as_json = false;
};

struct Format {
    std::string_view name;
    Secret (*encode)(EncodedKey key);
};

constexpr Format kFormats[] = {
    {"pem", [](EncodedKey key) { return write_pem(key.label, *key.der); }},
    {"der", [](EncodedKey key) { return std::move(key.der); }},
};

void write(const std::string& name, const Options& options, const Secret& bytes, Access access) {
    Target target(name, options.force, access);
    target.write(*bytes);
    target.keep();
}

std::unique_ptr<Key> make(const Options& options, const std::function<std::unique_ptr<Key>()>& maker) {
    const LibraryQuiet quiet;
    const Waiting waiting("searching", options.quiet);
    try {
        return maker();
    } catch (const KeyError& error) {
        throw InputError(display_name(*options.parameters) + ": " + error.what());
    }
}

void write_files(const Options& options, const Format& format, const Key& key) {
    if (options.parameters_only) {
        return write(options.out, options, format.encode(key.encode(KeyPart::kParameters)), Access::kUsual);
    }
    // The private key comes last: should both names lead to one file after all, it is the one that stays.
    if (options.public_file) {
        write(*options.public_file, options, format.encode(key.encode(KeyPart::kPublic)), Access::kUsual);
    }
    write(options.out, options, format.encode(key.encode(KeyPart::kPrivate)), Access::kOwner);
}

void tell(const Options& options, const KeyKind& kind, const Key& key) {
    Json json;
    json.open_object().member("algorithm", kind.name);
    key.tell(json);
    json.member("format", options.format).file_member(options.parameters_only ? "parameters" : "private", options.out);
    if (options.public_file) json.file_member("public", *options.public_file);
    json.close_object().print();
}

void generate(const Options& options) {
    const KeyKind& kind = find_key_kind("ALGORITHM", options.algorithm);
    const Format& format = find_row(kFormats, "--format", options.format);
    if (options.public_file == options.out && options.out != kStandardOutput) {
        throw UsageError("--out and --public are the same");
    }
    if (options.parameters_only && options.public_file) throw UsageError("parameters have no public key");
    std::unique_ptr<Key> domain;
    if (options.parameters) domain = read_key(*options.parameters, KeyPart::kParameters, &kind);
    KeyOptions choice = options.choice;
    choice.parameters_only = options.parameters_only;
    const std::function<std::unique_ptr<Key>()> maker = kind.prepare(choice, domain.get());
    const bool shares = options.out == kStandardOutput || options.public_file == kStandardOutput;
    if (shares && options.as_json) throw UsageError("--json and a key cannot share standard output");
    if (options.out == kStandardOutput && options.public_file == kStandardOutput && !same_name(options.format, "pem")) {
        throw UsageError("two keys on standard output can only be pem");
    }
    // Before a search that may take minutes.
    Target::require_free(options.out, options.force);
    if (options.public_file) Target::require_free(*options.public_file, options.force);

    const std::unique_ptr<Key> key = make(options, maker);
    write_files(options, format, *key);
    if (options.as_json) return tell(options, kind, *key);
    // Beside a key on standard output it would spoil DER.
    if (const std::string remark = key->remark(); !shares) {
        print(remark);
    } else {
        static_cast<void>(std::fwrite(remark.data(), 1, remark.size(), stderr));
    }
}

}  // namespace

ExitCode run_genkey(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    line.add_option("ALGORITHM", options.algorithm, "rsa, dsa, kcdsa, dh, ec or eckcdsa")->required()->type_name("");
    line.offer("ALGORITHM", names_of(all_key_kinds()));
    line.add_option("--bits", options.choice.bits,
                    "Length of the modulus; default is 3072, of dsa and kcdsa 1024, of dh 2048")
        ->type_name("N");
    line.add_option("--exponent", options.choice.exponent, "rsa: the public exponent; default is 65537")->type_name("E");
    line.add_option("--subgroup-bits", options.choice.subgroup_bits, "dsa, kcdsa: length of the order q; default is 160")
        ->type_name("N");
    line.add_option("--generator", options.choice.generator, "dh: the generator; default is 2")->type_name("G");
    line.add_option("--kind", options.choice.kind,
                    "rsa: plain, strong, x9 or strong-x9; kcdsa: plain, seeded or builtin; default is plain")
        ->type_name("KIND");
    line.add_option("--curve", options.choice.curve, "ec, eckcdsa: sect163k1, c2pnb163v1 or secp160r1")->type_name("NAME");
    const CLI::Option* const parameters =
        line.add_file("--params", "dsa, kcdsa, dh: take the parameters from those or the key in FILE");
    line.add_flag("--params-only", options.parameters_only, "dsa, kcdsa, dh: write the parameters, and no key");
    const CLI::Option* const key = line.add_file("--out", "Write the private key to KEY, - for standard output");
    line.get_option("--out")->required()->type_name("KEY");
    const CLI::Option* const public_key = line.add_file("--public", "Write the public key to PUBLIC")->type_name("PUBLIC");
    line.add_option("--format", options.format, "pem or der; default is pem")->type_name("NAME");
    line.add_flag("--force", options.force, "Replace files that exist");
    line.add_flag("--quiet", options.quiet, "Do not show on a terminal how long the search has taken");
    line.add_json(options.as_json);
    line.offer("--kind", {"plain", "strong", "x9", "strong-x9", "seeded", "builtin"});
    line.offer("--curve", {"sect163k1", "c2pnb163v1", "secp160r1"});
    line.offer("--format", names_of(kFormats));
    line.footer(
        "Private keys are, where the system has such permissions, for nobody but the owner to read. RSA keys are\n"
        "written in the forms of PKCS #1, private DSA keys in OpenSSL's, all others in those of PKCS #8 and X.509.\n"
        "strong has safe primes, which takes many seconds for 4096 bits. x9 has primes in the manner of ANSI X9.31, and\n"
        "strong-x9 builds these on safe primes. seeded draws the parameters from a seed, which is printed with the\n"
        "count that it led to, so that others can repeat it; builtin takes those of the library. dh searches for a\n"
        "safe prime, seconds to minutes for 2048 bits: make parameters once, and keys for both sides with --params.\n"
        "Parameters from a file are tested. eckcdsa keys are in the forms of ec keys under an identifier of their own,\n"
        "which other programs may not know.\n"
        "\n"
        "Examples:\n"
        "  morvane genkey rsa --bits 2048 --out private.pem --public public.pem\n"
        "  morvane genkey ec --curve secp160r1 --out ec.pem --public ec-public.pem\n"
        "\n"
        "Exit codes: 0 good, 2 wrong usage, 3 no memory or a file cannot be read or written.");
    if (const auto code = line.read(arguments)) return *code;
    options.out = key->results().front();
    if (!public_key->empty()) options.public_file = public_key->results().front();
    if (!parameters->empty()) options.parameters = parameters->results().front();
    return carry_out(verb, [&] { generate(options); });
}

}  // namespace morvane::tool
