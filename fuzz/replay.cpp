// A fuzzer's entry in the normal test run: every file of a corpus, and what small faults make of it.
//
// usage: replay CORPUS MUTANTS      where there are more of these, they are evenly left out
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using Bytes = std::vector<char>;

std::size_t mutants = 0;
std::size_t inputs = 0;
std::size_t every = 0;  // 0: they are only counted

// From a block of exactly its size, so that the sanitizers see a read beyond it.
void run(const Bytes& input) {
    const std::size_t number = mutants++;
    if (every == 0 || number % every != 0) return;
    const std::vector<std::uint8_t> exact(input.begin(), input.end());
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
    ++inputs;
}

Bytes with(Bytes input, std::size_t at, char octet) {
    input[at] = octet;
    return input;
}

Bytes with(Bytes input, std::size_t at, char octet, std::size_t other, char other_octet) {
    input[at] = octet;
    return with(std::move(input), other, other_octet);
}

void run_mutants(const Bytes& good) {
    const auto at = [&good](std::size_t i) { return good.begin() + static_cast<std::ptrdiff_t>(i); };
    for (std::size_t i = 0; i < good.size(); ++i) {
        run(Bytes(good.begin(), at(i)));
        for (int bit = 0; bit < 8; ++bit) run(with(good, i, static_cast<char>(good[i] ^ 1 << bit)));
        // What lengths, identifiers and signs are made of.
        for (const int octet : {0x00, 0x01, 0x02, 0x30, 0x7f, 0x80, 0x81, 0x82, 0x84, 0x88, 0xff}) {
            run(with(good, i, static_cast<char>(octet)));
            Bytes longer = good;
            longer.insert(longer.begin() + static_cast<std::ptrdiff_t>(i), static_cast<char>(octet));
            run(longer);
            // With the outer length, in its second or third octet, agreeing again.
            for (const std::size_t length_at : {1U, 2U, 3U}) {
                if (length_at < i) run(with(longer, length_at, static_cast<char>(longer[length_at] + 1)));
            }
        }
        Bytes shorter = good;
        shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(i));
        run(shorter);
        // Two lengths that change together keep the sum.
        for (std::size_t j = 0; j < i && i < 64; ++j) {
            run(with(good, i, static_cast<char>(good[i] + 1), j, static_cast<char>(good[j] - 1)));
            run(with(good, i, static_cast<char>(good[i] + 1), j, static_cast<char>(good[j] + 1)));
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    const std::size_t most = std::strtoul(argv[2], nullptr, 10);
    std::vector<Bytes> corpus;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        corpus.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    for (const Bytes& good : corpus) run_mutants(good);
    every = mutants / most + 1;
    mutants = 0;
    for (const Bytes& good : corpus) run_mutants(good);
    every = 1;
    for (const Bytes& good : corpus) run(good);
    std::printf("%zu inputs\n", inputs);
    return corpus.empty() || most == 0 ? 1 : 0;
}
