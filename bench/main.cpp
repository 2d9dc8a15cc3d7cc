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

namespace {

using namespace morvane::bench;

constexpr std::size_t kSizes[] = {64, 16384};
constexpr std::size_t kLongestDigest = 64;

Digests all_digests(bool portable) {
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

// A peer that computes something else is no peer.
void require_equal_results(const Digests& all) {
    std::vector<std::uint8_t> message(1000);
    for (std::size_t i = 0; i < message.size(); ++i) message[i] = static_cast<std::uint8_t>(i * i);
    for (const Digest& ours : all) {
        if (ours.library != kOurs || ours.primitive == "hmac-sha1") continue;  // the MAC is one of our own
        for (const Digest& peer : all) {
            if (peer.primitive == ours.primitive && digest_of(peer, message) != digest_of(ours, message)) {
                std::fprintf(stderr, "%s of %s differs from ours\n", peer.primitive.c_str(), peer.library.c_str());
                std::exit(1);
            }
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
