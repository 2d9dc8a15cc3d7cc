// morvane-bench: this library beside public ones, in one process. scripts/bench runs it and makes tables of it.
//
// With --portable as first argument this library uses no more than the architecture's baseline, and so do the peers that
// can be told to in the program; scripts/bench sets the environment for the others. With --avx2 it is everything but AVX-512.
#include "cpu/cpu.h"
#include "rows.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

namespace {

using namespace morvane::bench;

constexpr morvane::cpu::Features kOf512Bits = morvane::cpu::kAvx512 | morvane::cpu::kIfma | morvane::cpu::kVbmi;
constexpr bool kBaselineHasSse2 = sizeof(void*) == 8;  // every x86-64 processor has it, not every i386
constexpr std::size_t kSizes[] = {64, 16384};
constexpr std::size_t kCheckedBytes = 1008;  // whole blocks of every cipher, no whole block of any digest
constexpr std::size_t kLongestDigest = 64;

Rows all_rows([[maybe_unused]] bool portable) {
    Rows all;
    add_ours(all);
    add_our_ciphers(all);
    add_streams(all);
    add_our_numbers(all);
    add_our_rsa(all);
    add_our_dsa(all);
    add_our_ec_schemes(all);
#if defined(WITH_OPENSSL)
    add_openssl(all);
    add_openssl_ciphers(all);
    add_openssl_low_ciphers(all);
    add_openssl_numbers(all);
    add_openssl_rsa(all);
    add_openssl_dsa(all);
    add_openssl_ec_schemes(all);
#endif
#if defined(WITH_NETTLE)
    add_nettle(all);
    add_nettle_ciphers(all);
#endif
#if defined(WITH_GCRYPT)
    add_gcrypt(all, portable);
    add_gcrypt_ciphers(all);
    add_gcrypt_numbers(all);
    add_gcrypt_rsa(all);
    add_gcrypt_dsa(all);
#endif
#if defined(WITH_BOTAN)
    add_botan(all, portable);
    add_botan_ciphers(all);
    add_botan_numbers(all);
    add_botan_rsa(all);
    add_botan_dsa(all);
#endif
#if defined(WITH_CRYPTOPP)
    if (!portable) add_cryptopp(all);  // cannot be told
    add_cryptopp_ciphers(all);         // these use no extensions
    if (!portable || kBaselineHasSse2) {
        add_cryptopp_numbers(all);
        add_cryptopp_rsa(all);
        add_cryptopp_dsa(all);
    }
#endif
#if defined(WITH_RHASH)
    add_rhash(all);
#endif
#if defined(WITH_HOGWEED)
    if (!portable || kBaselineHasSse2) {  // computes with GMP
        add_hogweed_rsa(all);
        add_hogweed_dsa(all);
    }
#endif
#if defined(WITH_GMP)
    if (!portable || kBaselineHasSse2) add_gmp_numbers(all);
#endif
    return all;
}

// Bytes without a pattern: equal blocks would touch the same few entries of a cipher's tables.
std::vector<std::uint8_t> message_of(std::size_t size) {
    std::vector<std::uint8_t> message(size);
    std::uint32_t state = 1;
    for (std::uint8_t& byte : message) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return message;
}

std::vector<std::uint8_t> result_of(const Row& row, const std::vector<std::uint8_t>& message) {
    std::vector<std::uint8_t> result(std::max(message.size(), kLongestDigest));
    row.run(result.data(), message.data(), message.size());
    return row.result ? row.result() : result;
}

// Whoever computes something else is no peer. Each result is taken twice: a context used again must give the same, or go on
// in the same key stream. A key set-up has no result; the ciphers' rows show that it is right.
void require_equal_results(const Rows& all) {
    const std::vector<std::uint8_t> message = message_of(kCheckedBytes);
    for (int round = 0; round < 2; ++round) {
        struct First {
            const Row* row;
            std::vector<std::uint8_t> result;
        };
        std::map<std::string, First> firsts;
        for (const Row& row : all) {
            if (row.kind == Kind::kKey || row.kind == Kind::kSearch) continue;
            if (row.library == kOurs && row.primitive == "hmac-sha1") continue;  // the MAC is one of our own
            std::vector<std::uint8_t> result = result_of(row, message);
            std::string name = row.primitive;
            if (row.bits != 0) name.append("/").append(std::to_string(row.bits));
            const auto& [primitive, first] = *firsts.try_emplace(name, First{&row, result}).first;
            if (result == first.result) continue;
            std::fprintf(stderr, "%s: %s and %s differ\n", primitive.c_str(), row.library.c_str(),
                         first.row->library.c_str());
            std::exit(1);
        }
    }
}

void measure(benchmark::State& state, const Row& row, std::size_t size) {
    const std::vector<std::uint8_t> message = message_of(size);
    std::vector<std::uint8_t> result(std::max(size, kLongestDigest));
    for (auto _ : state) {
        row.run(result.data(), message.data(), size);
        benchmark::DoNotOptimize(result.data());
        benchmark::ClobberMemory();
    }
    if (row.kind == Kind::kKey || row.kind == Kind::kNumber || row.kind == Kind::kSearch) {
        state.SetItemsProcessed(state.iterations());
    } else {
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
    }
    constexpr const char* kKinds[] = {"digest", "cipher", "key", "number", "search"};
    state.SetLabel(std::string(kKinds[static_cast<int>(row.kind)]) + (row.assembler ? " assembler" : ""));
}

void add_benchmark(const Row& row, const std::string& message, std::size_t size) {
    const std::string name = row.primitive + "/" + message + "/" + row.library;
    auto* const benchmark =
        benchmark::RegisterBenchmark(name.c_str(), [&row, size](benchmark::State& state) { measure(state, row, size); });
    if (row.bits != 0) benchmark->MeasureProcessCPUTime();  // one peer computes the halves of RSA on two threads
    // As many for every library: more of them for the quicker one would not make the mean of its time any surer.
    if (row.kind == Kind::kSearch) benchmark->Iterations(row.searches);
}

}  // namespace

int main(int argc, char** argv) {
    const bool portable = argc > 1 && std::strcmp(argv[1], "--portable") == 0;
    const bool avx2 = argc > 1 && std::strcmp(argv[1], "--avx2") == 0;
    if (portable || avx2) {
        const morvane::cpu::Features baseline = kBaselineHasSse2 ? morvane::cpu::kSse2 : morvane::cpu::kNone;
        morvane::cpu::limit_features(portable ? baseline : morvane::cpu::kAll & ~kOf512Bits);
        argv[1] = argv[0];
        ++argv;
        --argc;
    }
    const Rows all = all_rows(portable);
    require_equal_results(all);
    for (const Row& row : all) {
        const bool ours_has_it = std::any_of(all.begin(), all.end(), [&row](const Row& other) {
            return other.library == kOurs && other.kind == row.kind && other.primitive == row.primitive;
        });
        if (!ours_has_it) continue;
        if (row.kind == Kind::kKey) {
            add_benchmark(row, "key", 0);
        } else if (row.bits != 0) {
            add_benchmark(row, std::to_string(row.bits), 0);
        } else {
            for (const std::size_t size : kSizes) add_benchmark(row, std::to_string(size), size);
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
