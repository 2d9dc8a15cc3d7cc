// What a verb of the command is, and what all of them return.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace morvane::tool {

// In UTF-8 on Windows, the system's own bytes elsewhere.
using Arguments = std::vector<std::string>;

// The greatest trouble decides, but a mismatch outranks a file that could not be read: it is what was asked for.
enum ExitCode { kSuccess = 0, kMismatch = 1, kUsage = 2, kInputOutput = 3, kFailedSelfTest = 4 };

struct Verb {
    std::string_view name;
    std::string_view summary;
    // Carries out the verb. The arguments are those after the verb; "--help" among them prints how it is used.
    ExitCode (*run)(const Verb& verb, const Arguments& arguments);
};

ExitCode run_digest(const Verb& verb, const Arguments& arguments);
ExitCode run_encrypt(const Verb& verb, const Arguments& arguments);
ExitCode run_decrypt(const Verb& verb, const Arguments& arguments);
ExitCode run_random(const Verb& verb, const Arguments& arguments);
ExitCode run_prime(const Verb& verb, const Arguments& arguments);
ExitCode run_genkey(const Verb& verb, const Arguments& arguments);
ExitCode run_sign(const Verb& verb, const Arguments& arguments);
ExitCode run_verify(const Verb& verb, const Arguments& arguments);
ExitCode run_derive(const Verb& verb, const Arguments& arguments);
ExitCode run_rsa(const Verb& verb, const Arguments& arguments);
ExitCode run_ec(const Verb& verb, const Arguments& arguments);
ExitCode run_selftest(const Verb& verb, const Arguments& arguments);
ExitCode run_speed(const Verb& verb, const Arguments& arguments);
ExitCode run_list(const Verb& verb, const Arguments& arguments);

}  // namespace morvane::tool
