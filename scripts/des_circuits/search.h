// The search for a circuit.
//
// It is first built output by output: a function that no small tree of the nodes at hand gives is split by an input or by
// nodes that come near it, and each part need be right only where it matters. Then, some ten thousand times, a gate is made
// anew of what does not depend on it, right only where an output sees it; whatever makes the circuit no larger is kept. Now
// and then a whole output is.
#pragma once

#include "cipher/des_tables.h"
#include "circuit.h"

namespace des_circuits {

constexpr int kMostSteps = 60;  // of one build, which else would take for ever now and then

class Search {
public:
    Search(bool ternary, std::uint64_t seed) : ternary_(ternary), random_{seed} {
        for (int leaves = 2; !ternary && leaves <= 4; ++leaves) forms_[leaves] = make_forms(leaves);
    }

    // The smallest circuit of so many rounds.
    Circuit find(int box, int rounds) {
        Circuit now, best;
        best.size = kMostNodes;
        for (int round = 0; round < rounds; ++round) {
            const bool fresh = now.out[0] < 0;
            if (!fresh && random_.below(300) != 0) {
                remake_gate(now, std::max(now.size, best.size + (random_.below(16) == 0 ? 1 : 0)));
            } else {
                remake_outputs(now, box, fresh, fresh ? kMostNodes - 10 : best.size + 1);
            }
            if (now.out[0] >= 0 && now.size < best.size) best = now;
        }
        return best;
    }

private:
    // ---- Small trees of the nodes at hand ----

    // What is wanted at the values that the nodes take together: a set of cells with ones and one with zeros. False if some
    // cell has both.
    struct Cells {
        std::uint32_t ones = 0, zeros = 0;

        bool fill(const Circuit& c, const int* nodes, int count, Bits target, Bits mask) {
            for (unsigned cell = 0; cell < 1U << count; ++cell) {
                Bits in = mask;
                for (int i = 0; i < count; ++i) in &= (cell >> i & 1) != 0 ? c.value[nodes[i]] : ~c.value[nodes[i]];
                const bool one = (in & target) != 0, zero = (in & ~target) != 0;
                if (one && zero) return false;
                ones |= std::uint32_t{one} << cell;
                zeros |= std::uint32_t{zero} << cell;
            }
            return true;
        }
    };

    int use_form(Circuit& c, const int* nodes, int count, const Cells& cells) const {
        for (const Form& form : forms_[count]) {
            if (((form.values ^ cells.ones) & (cells.ones | cells.zeros)) != 0) continue;
            const int first = c.size;
            const auto at = [&](int i) { return i >= Form::kMade ? first + i - Form::kMade : nodes[i]; };
            for (int i = 0; i < form.gates; ++i) {
                c.add_binary(form.gate[i].table, at(form.gate[i].in[0]), at(form.gate[i].in[1]));
            }
            return c.size - 1;
        }
        return -1;
    }

    // The table of a ternary gate whose inputs are, from its low bit up, those of the cells from the high bit down.
    static std::uint8_t reversed(std::uint32_t cells) {
        std::uint32_t table = 0;
        for (unsigned cell = 0; cell < 8; ++cell) {
            table |= (cells >> cell & 1) << ((cell & 1) << 2 | (cell & 2) | cell >> 2);
        }
        return static_cast<std::uint8_t>(table);
    }

    // Two ternary gates over five nodes, one over three of them and the other over it and the last two.
    static int use_five(Circuit& c, const int* nodes, const Cells& cells) {
        for (int d = 0; d < 5; ++d) {
            for (int e = d + 1; e < 5; ++e) {
                int inner[3], count = 0;
                for (int i = 0; i < 5; ++i) {
                    if (i != d && i != e) inner[count++] = i;
                }
                unsigned one[4] = {}, zero[4] = {};
                for (unsigned cell = 0; cell < 32; ++cell) {
                    const unsigned row = (cell >> d & 1) | (cell >> e & 1) << 1;
                    const unsigned column =
                        (cell >> inner[0] & 1) << 2 | (cell >> inner[1] & 1) << 1 | (cell >> inner[2] & 1);
                    one[row] |= (cells.ones >> cell & 1) << column;
                    zero[row] |= (cells.zeros >> cell & 1) << column;
                }
                for (unsigned x = 0; x < 128; ++x) {
                    unsigned outer = 0;
                    bool good = true;
                    for (unsigned row = 0; row < 4 && good; ++row) {
                        good = ((one[row] & x) == 0 || (zero[row] & x) == 0) &&
                               ((one[row] & ~x) == 0 || (zero[row] & ~x) == 0);
                        const unsigned place = (row & 1) << 1 | row >> 1;
                        outer |= ((one[row] & x) != 0 ? 16U : 0U) << place | ((one[row] & ~x) != 0 ? 1U : 0U) << place;
                    }
                    if (!good) continue;
                    const int made =
                        c.add({static_cast<std::uint8_t>(x), {nodes[inner[0]], nodes[inner[1]], nodes[inner[2]]}});
                    return c.add({static_cast<std::uint8_t>(outer), {made, nodes[d], nodes[e]}});
                }
            }
        }
        return -1;
    }

    int use_nodes(Circuit& c, const int* nodes, int count, Bits target, Bits mask) const {
        Cells cells;
        if (!cells.fill(c, nodes, count, target, mask)) return -1;
        if (!ternary_) return use_form(c, nodes, count, cells);
        return count == 5 ? use_five(c, nodes, cells) : c.add({reversed(cells.ones), {nodes[0], nodes[1], nodes[2]}});
    }

    // The nodes, in random order, and which of 64 random pairs of a one and a zero of the target each tells apart: what
    // does not tell all of them apart is not worth a closer look. Pairs of nodes stand in the order of their first one.
    struct Telling {
        int count = 0, pairs = 0;
        int order[kMostNodes];
        Bits tells[kMostNodes], later[kMostNodes + 1];
        int begin[kMostNodes + 1], first[kMostNodes * kMostNodes / 2], second[kMostNodes * kMostNodes / 2];
        Bits pair[kMostNodes * kMostNodes / 2 + 16];

        void shuffle(const Circuit& c, Random& random) {
            count = c.size;
            for (int i = 0; i < count; ++i) order[i] = i;
            for (int i = count - 1; i > 0; --i) std::swap(order[i], order[random.below(i + 1)]);
        }
        void fill(const Circuit& c, Bits target, Bits mask, Random& random) {
            int ones[64], zeros[64], one_count = 0, zero_count = 0;
            for (int x = 0; x < 64; ++x) {
                if ((mask >> x & 1) == 0) continue;
                if ((target >> x & 1) != 0) ones[one_count++] = x;
                if ((target >> x & 1) == 0) zeros[zero_count++] = x;
            }
            std::fill_n(tells, count, Bits{0});
            for (int t = 0; t < 64; ++t) {
                const int one = ones[random.below(one_count)], zero = zeros[random.below(zero_count)];
                for (int i = 0; i < count; ++i) {
                    tells[i] |= ((c.value[order[i]] >> one ^ c.value[order[i]] >> zero) & 1) << t;
                }
            }
            later[count] = 0;
            for (int i = count - 1; i >= 0; --i) later[i] = later[i + 1] | tells[i];
            pairs = 0;
            for (int i = 0; i < count; ++i) {
                begin[i] = pairs;
                for (int j = i + 1; j < count; ++j) {
                    pair[pairs] = tells[i] | tells[j];
                    first[pairs] = i;
                    second[pairs++] = j;
                }
            }
            begin[count] = pairs;
            std::fill_n(pair + pairs, 16, Bits{0});
        }
    };

    // Nodes from `from` on that complete at[0] to at[level - 1], which tell `told` apart, to so many leaves of a tree.
    int complete(Circuit& c, Bits target, Bits mask, std::vector<int>& at, int level, int leaves, Bits told, int from) {
        const Telling& t = telling_;
        if (level == leaves - 2) {
            for (int p = t.begin[from]; p < t.pairs; p += 16) {
                Bits any = 0;
                for (int k = 0; k < 16; ++k) any |= (told | t.pair[p + k]) == kAll ? kAll : 0;
                for (int k = p; any != 0 && k < std::min(p + 16, t.pairs); ++k) {
                    if ((told | t.pair[k]) != kAll) continue;
                    at[static_cast<std::size_t>(level)] = t.order[t.first[k]];
                    at[static_cast<std::size_t>(level) + 1] = t.order[t.second[k]];
                    const int made = use_nodes(c, at.data(), leaves, target, mask);
                    if (made >= 0) return made;
                }
            }
            return -1;
        }
        for (int i = from; i <= t.count - (leaves - level) && (told | t.later[i]) == kAll; ++i) {
            at[static_cast<std::size_t>(level)] = t.order[i];
            const int made = complete(c, target, mask, at, level + 1, leaves, told | t.tells[i], i + 1);
            if (made >= 0) return made;
        }
        return -1;
    }

    // Few gates, if they are enough: the node that is `target` where `mask` is set, -1 if there is none.
    int build_directly(Circuit& c, Bits target, Bits mask, int limit) {
        telling_.shuffle(c, random_);
        for (int i = 0; i < c.size; ++i) {
            if (((c.value[telling_.order[i]] ^ target) & mask) == 0) return telling_.order[i];
        }
        if (limit <= c.size) return -1;
        if ((target & mask) == 0 || (~target & mask) == 0) {
            return !ternary_ ? c.add_binary(kXor, 0, 0)
                             : c.add({static_cast<std::uint8_t>((target & mask) != 0 ? 0xff : 0), {0, 0, 0}});
        }
        telling_.fill(c, target, mask, random_);
        if (telling_.later[0] != kAll) return -1;
        for (int gates = 1; gates <= std::min(limit - c.size, ternary_ ? 2 : 3); ++gates) {
            std::vector<int> at(5);
            const int made = complete(c, target, mask, at, 0, ternary_ ? 2 * gates + 1 : gates + 1, 0, 0);
            if (made >= 0) return made;
        }
        return -1;
    }

    // ---- Larger functions ----

    static int join(Circuit& c, int a, int b, int x, Bits target, Bits mask) {
        const int nodes[3] = {x, b, a};
        Cells cells;
        return cells.fill(c, nodes, 3, target, mask) ? c.add({static_cast<std::uint8_t>(cells.ones), {a, b, x}}) : -1;
    }

    // A gate over nodes that are there and one to be made, which matters as seldom as possible: what it must be is right by
    // itself elsewhere. One of the best four at random; with `none` set there is no such gate.
    int split_by_nodes(Circuit& c, Bits target, Bits mask, int limit, int width, bool& none) {
        struct Choice {
            int a, b;
            std::uint8_t table;
            Bits rest;
        };
        std::vector<Choice> best;
        const auto offer = [&](const Choice& choice) {
            if (choice.rest == mask) return;
            const auto fewer = [](const Choice& x, const Choice& y) {
                return std::popcount(x.rest) < std::popcount(y.rest);
            };
            best.insert(std::upper_bound(best.begin(), best.end(), choice, fewer), choice);
            if (best.size() > 4) best.pop_back();
        };
        for (int i = 0; i < c.size; ++i) {
            const Bits v = c.value[i];
            if (!ternary_) {
                if ((target & ~v & mask) == 0) offer({i, 0, kAnd, mask & v});
                if ((~target & v & mask) == 0) offer({i, 0, kOr, mask & ~v});
                if ((target & v & mask) == 0) offer({i, 0, kNotAnd, mask & ~v});
                continue;
            }
            for (int j = 0; j < i; ++j) {
                const Bits w = c.value[j];
                Bits rest = 0;
                for (const Bits cell : {mask & v & w, mask & v & ~w, mask & ~v & w, mask & ~v & ~w}) {
                    if ((cell & target) != 0 && (cell & ~target) != 0) rest |= cell;
                }
                offer({i, j, 0, rest});
            }
        }
        none = best.empty();
        if (none) return -1;
        const Choice choice = best[static_cast<std::size_t>(random_.below(static_cast<int>(best.size())))];
        Bits wanted = target;
        if (ternary_) {  // which may be negated in each cell
            const int turns = random_.below(16);
            const Bits v = c.value[choice.a], w = c.value[choice.b];
            if ((turns & 1) != 0) wanted ^= v & w;
            if ((turns & 2) != 0) wanted ^= v & ~w;
            if ((turns & 4) != 0) wanted ^= ~v & w;
        }
        const int made = build(c, wanted, choice.rest, limit - 1, width);
        if (made < 0) return -1;
        return ternary_ ? join(c, choice.a, choice.b, made, target, mask) : c.add_binary(choice.table, choice.a, made);
    }

    // Two functions, each for one value of an input.
    int split_by_input(Circuit& c, Bits target, Bits mask, int limit, int width) {
        int inputs[6], count = 0;
        for (int i = 0; i < 6; ++i) {
            if ((mask & c.value[i]) != 0 && (mask & ~c.value[i]) != 0) inputs[count++] = i;
        }
        if (count == 0) return -1;
        const int by = inputs[random_.below(count)];
        Bits side = random_.below(2) != 0 ? c.value[by] : ~c.value[by];
        if (ternary_) {
            const int first = build(c, target, mask & side, limit - 2, width);
            if (first < 0) return -1;
            const Bits wanted = random_.below(2) != 0 ? target : target ^ c.value[first];
            const int second = build(c, wanted, mask & ~side, limit - 1, width);
            return second < 0 ? -1 : join(c, by, first, second, target, mask);
        }
        // first ^ (by & second), first ^ (~by & second) or first ^ (by | second)
        const bool joined_by_or = random_.below(3) == 2;
        if (joined_by_or) side = c.value[by];
        const int first = build(c, joined_by_or ? ~target : target, mask & side, limit - 3, width);
        if (first < 0) return -1;
        const bool at_zeros = side == c.value[by];  // of the input, the second is wanted
        const Bits wanted = target ^ c.value[first], rest = mask & ~side;
        if ((wanted & rest) == rest) return at_zeros ? -1 : c.add_binary(kXor, first, by);
        const int second = build(c, wanted, rest, limit - 2, width);
        if (second < 0) return -1;
        const std::uint8_t table = joined_by_or ? kOr : at_zeros ? kNotAnd : kAnd;
        return c.add_binary(kXor, first, c.add_binary(table, by, second));
    }

    int split(Circuit& c, Bits target, Bits mask, int limit, int width) {
        if (random_.below(ternary_ ? 4 : 2) == 0) {
            bool none = false;
            const int made = split_by_nodes(c, target, mask, limit, width, none);
            if (!none) return made;
        }
        return split_by_input(c, target, mask, limit, width);
    }

    // The node that is `target` where `mask` is set, in a circuit of at most `limit` nodes; -1 if none was found. Of
    // several ways the smallest, `width` saying how many are tried.
    int build(Circuit& c, Bits target, Bits mask, int limit, int width) {
        if (c.size > limit || ++steps_ > kMostSteps) return -1;
        const int made = build_directly(c, target, mask, std::min(limit, kMostNodes - 8));
        if (made >= 0 || c.size + (ternary_ ? 3 : 4) > limit) return made;
        Circuit best;
        int found = -1;
        for (int i = 0, good = 0; i < 3 * width && good < width && steps_ <= kMostSteps; ++i) {
            Circuit trial = c;
            const int last = split(trial, target, mask, limit, std::max(1, width - random_.below(2)));
            if (last < 0 || trial.size > limit) continue;
            best = trial;
            found = last;
            limit = best.size - 1;
            ++good;
        }
        if (found >= 0) c = best;
        return found;
    }

    // ---- Rounds ----

    static Bits wanted_output(int box, int output) {
        Bits target = 0;
        for (unsigned x = 0; x < 64; ++x) {
            const unsigned row = (x >> 4 & 2) | (x & 1), column = x >> 1 & 15;
            target |= Bits{morvane::cipher::des::kBoxes[box][16 * row + column] >> (3 - output) & 1U} << x;
        }
        return target;
    }

    void remake_outputs(Circuit& now, int box, bool fresh, int limit) {
        unsigned redo = 15;
        if (!fresh) {
            const int kind = random_.below(10);
            redo = 1U << random_.below(4);
            if (kind >= 7) redo |= 1U << random_.below(4);
        }
        Circuit c = fresh ? Circuit() : now.pruned(15 & ~redo);
        int order[4] = {0, 1, 2, 3};
        for (int i = 3; i > 0; --i) std::swap(order[i], order[random_.below(i + 1)]);
        for (const int o : order) {
            if ((redo >> o & 1) == 0) continue;
            steps_ = 0;
            c.out[o] = build(c, wanted_output(box, o), kAll, limit, fresh ? 1 : 1 + random_.below(2));
            if (c.out[o] < 0) return;
        }
        now = c.pruned(15);
    }

    void remake_gate(Circuit& now, int limit) {
        const int gate = kInputs + random_.below(now.size - kInputs);
        bool depends[kMostNodes] = {}, needed[kMostNodes] = {};
        Bits flipped[kMostNodes];  // the values, were the gate's negated
        std::copy_n(now.value, now.size, flipped);
        depends[gate] = true;
        flipped[gate] = ~now.value[gate];
        int after = 0;
        for (int i = gate + 1; i < now.size; ++i) {
            const auto& [table, in] = now.node[i];
            depends[i] = depends[in[0]] || depends[in[1]] || depends[in[2]];
            flipped[i] = apply(table, flipped[in[0]], flipped[in[1]], flipped[in[2]]);
            if (!depends[i]) continue;
            ++after;
            for (const int input : in) needed[input] = true;
        }
        Bits seen = 0;
        for (const int o : now.out) {
            seen |= now.value[o] ^ flipped[o];
            needed[o] = true;
        }
        needed[gate] = false;
        for (int i = now.size - 1; i >= kInputs; --i) {
            if (!needed[i] || depends[i]) continue;
            for (const int in : now.node[i].in) needed[in] = true;
        }
        Circuit c;
        int at[kMostNodes];
        for (int i = 0; i < kInputs; ++i) at[i] = i;
        const auto copy = [&](int i) {
            const auto& [table, in] = now.node[i];
            at[i] = c.add({table, {at[in[0]], at[in[1]], at[in[2]]}});
        };
        for (int i = kInputs; i < now.size; ++i) {
            if (needed[i] && !depends[i]) copy(i);
        }
        steps_ = 0;
        at[gate] = build(c, now.value[gate], seen, limit - after, 1);
        if (at[gate] < 0) return;
        for (int i = gate + 1; i < now.size; ++i) {
            if (depends[i]) copy(i);
        }
        for (int o = 0; o < 4; ++o) c.out[o] = at[now.out[o]];
        now = c.pruned(15);
    }

    bool ternary_;
    Random random_;
    std::vector<Form> forms_[5];
    Telling telling_{};
    int steps_ = 0;
};

}  // namespace des_circuits
