// morvane derive: the secret that two keys agree on.
#include "command_line.h"
#include "hex.h"
#include "input.h"
#include "key.h"
#include "target.h"
#include "waiting.h"

namespace morvane::tool {
namespace {

struct Options {
    std::string key, peer, output = kStandardOutput, format = "raw";
    bool pad = false, force = false, quiet = false;
};

struct Format {
    std::string_view name;
    Secret (*encode)(Secret secret);
};

Secret hexadecimal(Secret secret) {
    std::string digits = to_hex(*secret);
    Secret text(std::vector<std::uint8_t>(digits.begin(), digits.end()));
    wipe({reinterpret_cast<std::uint8_t*>(digits.data()), digits.size()});
    (*text).push_back('\n');
    return text;
}

constexpr Format kFormats[] = {{"raw", [](Secret secret) { return secret; }}, {"hex", hexadecimal}};

void derive(const Options& options) {
    const Format& format = find_row(kFormats, "--format", options.format);
    require_one_standard_input({options.key, options.peer});
    const std::unique_ptr<Key> key = read_key(options.key, KeyPart::kPrivate);
    const std::unique_ptr<Key> peer = read_key(options.peer, KeyPart::kPublic);
    const auto agree = [&] {
        const Waiting waiting("checking", options.quiet);
        try {
            return key->agree(*peer, options.pad);
        } catch (const KeyError& error) {
            throw InputError(display_name(options.key) + ": " + error.what());
        } catch (const MismatchError& error) {
            throw MismatchError(display_name(options.peer) + ": " + error.what());
        }
    };
    const Secret text = format.encode(agree());
    Target target(options.output, options.force, Access::kOwner);
    target.write(*text);
    target.keep();
}

}  // namespace

ExitCode run_derive(const Verb& verb, const Arguments& arguments) {
    CommandLine line(verb);
    Options options;
    const CLI::Option* const output =
        line.add_output("Where the secret goes; standard output for - and when it is missing");
    const CLI::Option* const key = line.add_key_file("Read the own private key from FILE");
    const CLI::Option* const peer = line.add_file("--peer", "Read the other side's public key from FILE")->required();
    line.add_flag("--pad", options.pad, "dh: keep leading zeros, so that the secret is as long as the modulus");
    line.add_option("--format", options.format, "raw or hex; default is raw")->type_name("NAME");
    line.add_flag("--force", options.force, "Replace OUTPUT if it exists");
    line.add_flag("--quiet", options.quiet, "Do not show on a terminal how long the check of the modulus has taken");
    line.offer("--format", names_of(kFormats));
    line.footer(
        "Both keys are dh, with the same parameters: a safe prime, which is tested, and a generator. A peer's value must\n"
        "be from 2 to p - 2. Without --pad the secret has no leading zeros: one in 256 is shorter than the modulus.\n"
        "Others keep them or not: both sides must do the same. Or both keys are ec, on the same curve: the secret is\n"
        "the whole x-coordinate, 20 or 21 bytes. Hash the secret before it is used as a key.\n"
        "\n"
        "Examples:\n"
        "  morvane derive --key ec.pem --peer peer.pem --format hex secret.txt\n"
        "\n"
        "Exit codes: 0 good, 1 the peer's key does not go with the own one, 2 wrong usage, 3 a file cannot be read or\n"
        "written or is no such key.");
    if (const auto code = line.read(arguments)) return *code;
    options.key = key->results().front();
    options.peer = peer->results().front();
    if (!output->empty()) options.output = output->results().front();
    return carry_out(verb, [&] { derive(options); });
}

}  // namespace morvane::tool
