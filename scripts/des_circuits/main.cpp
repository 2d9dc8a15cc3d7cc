// Finds circuits for the S-boxes of DES and writes them as the headers of src/cipher.
//
//     g++ -std=c++20 -O3 -march=native -Isrc scripts/des_circuits/main.cpp -o build/des_circuits
//     build/des_circuits ternary >src/cipher/des_circuits_ternary.h
//     build/des_circuits binary >src/cipher/des_circuits_binary.h
//
// The search is random, its seeds below: the same seeds give the same circuits, in some twenty seconds each. They are the
// best of up to eight seeds for each box.
#include "search.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace {

using namespace des_circuits;

struct Best {
    std::uint64_t seed;
    int rounds;
};
constexpr Best kTernary[8] = {{4, 7717}, {1, 1161}, {1, 11955}, {2, 8049}, {4, 5238}, {1, 7578}, {4, 852}, {2, 2276}};
constexpr Best kBinary[8] = {{1, 6905}, {6, 7559}, {8, 10544}, {8, 10069}, {7, 9721}, {7, 10075}, {7, 9921}, {2, 10158}};

// One that takes what frees most, at random among equals. Its cost is the most values alive, then their sum.
std::vector<int> try_order(const Circuit& c, std::size_t inputs, Random& random, int& cost) {
    int uses[kMostNodes] = {}, most = 0, sum = 0;
    bool done[kMostNodes] = {}, given[kMostNodes] = {};
    for (int i = kInputs; i < c.size; ++i) {
        for (std::size_t k = 0; k < inputs; ++k) ++uses[c.node[i].in[k]];
    }
    for (const int o : c.out) given[o] = true;
    std::fill_n(done, kInputs, true);
    std::vector<int> found;
    for (int left = c.size - kInputs; left != 0; --left) {
        int pick = -1, pick_score = -1;
        for (int i = kInputs; i < c.size; ++i) {
            bool ready = !done[i];
            int frees = 0;
            for (std::size_t k = 0; k < inputs && ready; ++k) {
                const int in = c.node[i].in[k];
                ready = done[in];
                frees += uses[in] == 1 && in != 6 ? 1 : 0;
            }
            if (!ready) continue;
            const int score = 4 * frees + (given[i] && uses[i] == 0 ? 2 : 0) + random.below(6);
            if (score > pick_score) pick = i;
            pick_score = std::max(score, pick_score);
        }
        done[pick] = true;
        found.push_back(pick);
        for (std::size_t k = 0; k < inputs; ++k) --uses[c.node[pick].in[k]];
        int alive = 0;
        for (int i = 0; i < c.size; ++i) alive += done[i] && uses[i] > 0 && i != 6 ? 1 : 0;
        most = std::max(most, alive);
        sum += alive;
    }
    cost = 1000 * most + sum;
    return found;
}

// The gates in an order that keeps few values alive, found by trying.
std::vector<int> order_of(const Circuit& c, std::size_t inputs) {
    Random random{0};
    std::vector<int> best;
    int best_cost = 1 << 30;
    for (int trial = 0; trial < 3000; ++trial) {
        int cost = 0;
        const std::vector<int> found = try_order(c, inputs, random, cost);
        if (cost < best_cost) best = found;
        best_cost = std::min(cost, best_cost);
    }
    return best;
}

void write_box(int box, bool ternary, const Circuit& c) {
    std::printf("        %sif constexpr (Box == %d) {  // %d gates\n", box != 0 ? "} else " : "", box, c.size - kInputs);
    std::vector<std::string> names(static_cast<std::size_t>(c.size), "ones");
    const auto name = [&](int i) { return names[static_cast<std::size_t>(i)].c_str(); };
    for (std::size_t i = 0; i < 6; ++i) names[i] = std::string("x[").append(std::to_string(i)).append("]");
    int count = 0;
    for (const int i : order_of(c, ternary ? 3 : 2)) {
        names[static_cast<std::size_t>(i)] = std::string("t").append(std::to_string(count++));
        const auto& [table, in] = c.node[i];
        std::printf("            const Lanes %s = ", name(i));
        if (ternary) {
            std::printf("lut<0x%02x>(%s, %s, %s);\n", table, name(in[0]), name(in[1]), name(in[2]));
        } else {
            const char* const gate = table == kAnd ? "and" : table == kOr ? "or" : table == kXor ? "xor" : "and_not";
            std::printf("bits_%s(%s, %s);\n", gate, name(in[0]), name(in[1]));
        }
    }
    for (int o = 0; o < 4; ++o) std::printf("            y[%d] = %s;\n", o, name(c.out[o]));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const bool ternary = std::strcmp(argv[1], "ternary") == 0;
    std::printf("// The S-boxes of DES as circuits of %s. Made by scripts/des_circuits.\n",
                ternary ? "gates of three inputs" : "AND, OR, XOR and AND NOT");
    std::printf("//\n// Included behind definitions of Lanes, MORVANE_INLINE and %s.\n",
                ternary ? "lut<Table>" : "the gates");
    std::printf("#pragma once\n\n#include <cstddef>\n\nnamespace morvane::cipher {\n");
    std::printf("namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own\n\n");
    std::printf("struct %sCircuits {\n", ternary ? "Ternary" : "Binary");
    std::printf("    // y are the four bits of a box's value for the six of x, in both the high one first.\n");
    std::printf("    template <std::size_t Box>\n");
    std::printf("    MORVANE_INLINE static void run(const Lanes (&x)[6], Lanes (&y)[4]) noexcept {\n");
    if (!ternary) std::printf("        const Lanes ones = all32(~0U);\n");
    int gates = 0;
    for (int box = 0; box < 8; ++box) {
        const Best& best = (ternary ? kTernary : kBinary)[box];
        Search search(ternary, best.seed);
        const Circuit circuit = search.find(box, best.rounds);
        gates += circuit.size - kInputs;
        write_box(box, ternary, circuit);
    }
    std::printf("        }\n    }\n};\n\n}  // namespace\n}  // namespace morvane::cipher\n");
    (void)std::fprintf(stderr, "%d gates\n", gates);
    return 0;
}
