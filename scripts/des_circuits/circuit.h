// Circuits over the six inputs of an S-box, as values: a function of the inputs is a word of 64 bits, one for each value
// that they take together.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace des_circuits {

using Bits = std::uint64_t;

constexpr Bits kAll = ~Bits{0};
constexpr int kInputs = 7;  // the six of a box, and ones, with which binary gates negate
constexpr int kMostNodes = 120;

struct Random {
    std::uint64_t state;

    std::uint64_t next() {
        std::uint64_t z = state += 0x9e3779b97f4a7c15;
        z = (z ^ z >> 30) * 0xbf58476d1ce4e5b9;
        z = (z ^ z >> 27) * 0x94d049bb133111eb;
        return z ^ z >> 31;
    }
    int below(int bound) { return static_cast<int>((next() >> 32) * static_cast<std::uint64_t>(bound) >> 32); }
};

// Bit 4 * a + 2 * b + c of the table is the value for the inputs a, b and c. Binary gates have c = a.
struct Node {
    std::uint8_t table;
    int in[3];
};

constexpr std::uint8_t kAnd = 0xc0, kOr = 0xfc, kXor = 0x3c, kAndNot = 0x30, kNotAnd = 0x0c;

constexpr Bits apply(std::uint8_t table, Bits a, Bits b, Bits c) {
    Bits result = 0;
    for (int i = 0; i < 8; ++i) {
        if ((table >> i & 1) != 0) {
            result |= ((i & 4) != 0 ? a : ~a) & ((i & 2) != 0 ? b : ~b) & ((i & 1) != 0 ? c : ~c);
        }
    }
    return result;
}

struct Circuit {
    int size = kInputs;
    Bits value[kMostNodes];
    Node node[kMostNodes];
    int out[4];

    Circuit() : value{}, node{}, out{-1, -1, -1, -1} {
        for (int i = 0; i < 6; ++i) {
            for (unsigned x = 0; x < 64; ++x) value[i] |= Bits{x >> (5 - i) & 1} << x;
        }
        value[6] = kAll;
    }
    int add(const Node& gate) {
        node[size] = gate;
        value[size] = apply(gate.table, value[gate.in[0]], value[gate.in[1]], value[gate.in[2]]);
        return size++;
    }
    int add_binary(std::uint8_t table, int a, int b) {
        return table == kNotAnd ? add({kAndNot, {b, a, b}}) : add({table, {a, b, a}});
    }

    // Without what no output of the set `keep` needs.
    Circuit pruned(unsigned keep) const {
        bool needed[kMostNodes] = {};
        for (unsigned o = 0; o < 4; ++o) {
            if ((keep >> o & 1) != 0) needed[out[o]] = true;
        }
        for (int i = size - 1; i >= kInputs; --i) {
            for (const int in : node[i].in) needed[in] |= needed[i];
        }
        Circuit result;
        int now[kMostNodes];
        for (int i = 0; i < size; ++i) {
            now[i] = i;
            if (i >= kInputs && needed[i]) {
                const auto [table, in] = node[i];
                now[i] = result.add({table, {now[in[0]], now[in[1]], now[in[2]]}});
            }
        }
        for (unsigned o = 0; o < 4; ++o) {
            if ((keep >> o & 1) != 0) result.out[o] = now[out[o]];
        }
        return result;
    }
};

// A tree of binary gates over leaves that are all used once. Its gates are numbered from kMade.
struct Form {
    static constexpr int kMade = 100;

    Bits values;  // for the values of the leaves, the first leaf being the lowest bit
    int gates;
    struct {
        std::uint8_t table;
        int in[2];
    } gate[3];
};

// All of them over 2 to 4 leaves, none twice.
inline std::vector<Form> make_forms(int leaves) {
    constexpr Bits kLeaf[4] = {0xaaaa, 0xcccc, 0xf0f0, 0xff00};
    constexpr std::uint8_t kTables[] = {kAnd, kOr, kXor, kAndNot, kNotAnd};
    std::vector<Form> forms;
    const auto offer = [&](Form form) {
        form.values &= (Bits{1} << (1 << leaves)) - 1;
        for (const Form& other : forms) {
            if (other.values == form.values) return;
        }
        forms.push_back(form);
    };
    int n[4] = {0, 1, 2, 3};
    do {
        const Bits a = kLeaf[n[0]], b = kLeaf[n[1]], c = kLeaf[n[2]], d = kLeaf[n[3]];
        for (const std::uint8_t p : kTables) {
            const Bits ab = apply(p, a, b, 0);
            if (leaves == 2) {
                offer({ab, 1, {{p, {n[0], n[1]}}}});
                continue;
            }
            for (const std::uint8_t q : kTables) {
                const Bits abc = apply(q, ab, c, 0), cd = apply(q, c, d, 0);
                if (leaves == 3) {
                    offer({abc, 2, {{p, {n[0], n[1]}}, {q, {Form::kMade, n[2]}}}});
                    continue;
                }
                for (const std::uint8_t r : kTables) {
                    offer({apply(r, abc, d, 0),
                           3,
                           {{p, {n[0], n[1]}}, {q, {Form::kMade, n[2]}}, {r, {Form::kMade + 1, n[3]}}}});
                    offer({apply(r, ab, cd, 0),
                           3,
                           {{p, {n[0], n[1]}}, {q, {n[2], n[3]}}, {r, {Form::kMade, Form::kMade + 1}}}});
                }
            }
        }
    } while (std::next_permutation(n, n + leaves));
    return forms;
}

}  // namespace des_circuits
