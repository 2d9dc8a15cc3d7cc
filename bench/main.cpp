// morvane-bench: this library beside public ones, in one process. scripts/bench runs it and makes a table of it.
//
// With --portable as first argument this library uses no more than the architecture's baseline, and so do the peers that
// can be told to in the program; scripts/bench sets the environment for the others.
#include "cpu/cpu.h"
#include "digests.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

namespace {

using namespace morvane::bench;

constexpr std::size_t kSizes[] = {64, 16384};
constexpr std::size_t kLongestDigest = 64;

Digests all_digests([[maybe_unused]] bool portable) {
    Digests all;
    add_ours(all);
#if defined(WITH_OPENSSL)
    add_openssl(all);
#endif
#if defined(WITH_NETTLE)
    add_nettle(all);
#endif
#if defined(WITH_GCRYPT)
    add_gcrypt(all, portable);
#endif
#if defined(WITH_BOTAN)
    add_botan(all, portable);
#endif
#if defined(WITH_CRYPTOPP)
    if (!portable) add_cryptopp(all);  // cannot be told
#endif
#if defined(WITH_RHASH)
    add_rhash(all);
#endif
    return all;
}

std::array<std::uint8_t, kLongestDigest> digest_of(const Digest& digest, const std::vector<std::uint8_t>& message) {
    std::array<std::uint8_t, kLongestDigest> result{};
    digest.run(result.data(), message.data(), message.size());
    return result;
}

// Whoever computes something else is no peer. Each result is taken twice: a context used again must give the same.
void require_equal_results(const Digests& all) {
    std::vector<std::uint8_t> message(1000);
    for (std::size_t i = 0; i < message.size(); ++i) message[i] = static_cast<std::uint8_t>(i * i);
    std::map<std::string, const Digest*> firsts;
    for (const Digest& digest : all) {
        if (digest.library == kOurs && digest.primitive == "hmac-sha1") continue;  // the MAC is one of our own
        const Digest& first = *firsts.emplace(digest.primitive, &digest).first->second;
        for (int round = 0; round < 2; ++round) {
            if (digest_of(digest, message) == digest_of(first, message)) continue;
            std::fprintf(stderr, "%s: %s and %s differ\n", digest.primitive.c_str(), digest.library.c_str(),
                         first.library.c_str());
            std::exit(1);
        }
    }
}

void measure(benchmark::State& state, const Digest& digest, std::size_t size) {
    const std::vector<std::uint8_t> message(size, 0x5a);
    std::array<std::uint8_t, kLongestDigest> result{};
    for (auto _ : state) {
        digest.run(result.data(), message.data(), size);
        benchmark::DoNotOptimize(result);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

}  // namespace

int main(int argc, char** argv) {
    const bool portable = argc > 1 && std::strcmp(argv[1], "--portable") == 0;
    if (portable) {
#if defined(__x86_64__)
        morvane::cpu::limit_features(morvane::cpu::kSse2);  // every x86-64 processor has it
#else
        morvane::cpu::limit_features(morvane::cpu::kNone);
#endif
        argv[1] = argv[0];
        ++argv;
        --argc;
    }
    const Digests all = all_digests(portable);
    require_equal_results(all);
    for (const Digest& digest : all) {
        bool ours_has_it = false;
        for (const Digest& other : all) ours_has_it |= other.library == kOurs && other.primitive == digest.primitive;
        if (!ours_has_it) continue;
        for (const std::size_t size : kSizes) {
            const std::string name = digest.primitive + "/" + std::to_string(size) + "/" + digest.library;
            benchmark::RegisterBenchmark(name.c_str(),
                                         [&digest, size](benchmark::State& state) { measure(state, digest, size); });
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
