// DES and triple DES (FIPS 46-3, ANSI X9.52). Triple DES goes through the initial and the final permutation once.
#include "cipher/des.h"

#include "cipher/des_rounds.h"
#include "cipher/exports.h"

namespace morvane::cipher {
namespace {

// What the three have in common. Passes runs a state through the key schedules in the order of a direction.
template <typename Record, typename Passes, BlocksTable<Record, 4>& Table>
struct DesFamily {
    using Schedule = Record;
    using State = des::State;
    static constexpr std::size_t kBlockBytes = 8;
    static constexpr std::endian kOrder = std::endian::little;
    static constexpr std::size_t kLanes = 4;

    static State enter(const Block<8>& block) noexcept { return des::enter(block); }
    static Block<8> leave(const State& state) noexcept { return des::leave(state); }

    template <Direction D, std::size_t Lanes>
    [[gnu::always_inline]] static void run(const Schedule& schedule, std::array<State, Lanes>& states) noexcept {
        Passes::template run<D>(schedule, states);
    }

    template <Direction D>
    static BlocksFn<Schedule>* blocks() noexcept {
        return Table.template get<D>();
    }
};

struct OnePass {
    template <Direction D, typename States>
    [[gnu::always_inline]] static void run(const E_DES_KEY_SCHEDULE& schedule, States& states) noexcept {
        des::sixteen_rounds<D>(schedule, states);
    }
};

// Encrypt, decrypt, encrypt under the first, the second and the last key; in decryption the reverse of it.
struct ThreePasses {
    template <Direction D, typename Record, typename States>
    [[gnu::always_inline]] static void run(const Record& schedule, States& states) noexcept {
        constexpr Direction kInner = D == Direction::kEncrypt ? Direction::kDecrypt : Direction::kEncrypt;
        constexpr std::size_t kLast = std::extent_v<decltype(Record::keys)> == 3 ? 2 : 0;
        des::sixteen_rounds<D>(schedule.keys[D == Direction::kEncrypt ? 0 : kLast], states);
        des::sixteen_rounds<kInner>(schedule.keys[1], states);
        des::sixteen_rounds<D>(schedule.keys[D == Direction::kEncrypt ? kLast : 0], states);
    }
};

using Des = DesFamily<E_DES_KEY_SCHEDULE, OnePass, des_blocks>;
using Des3 = DesFamily<E_DES3_KEY_SCHEDULE, ThreePasses, des3_blocks>;
using Des3ThreeKeys = DesFamily<E_DES3_3KEY_SCHEDULE, ThreePasses, des3_3key_blocks>;

template <typename C>
consteval BlocksTable<typename C::Schedule, 4> des_table() {
    using Record = typename C::Schedule;
    return blocks_table<C, DesAvx512<Record>, DesAvx2<Record>, DesSse2<Record>>();
}

}  // namespace

constinit BlocksTable<E_DES_KEY_SCHEDULE, 4> des_blocks = des_table<Des>();
constinit BlocksTable<E_DES3_KEY_SCHEDULE, 4> des3_blocks = des_table<Des3>();
constinit BlocksTable<E_DES3_3KEY_SCHEDULE, 4> des3_3key_blocks = des_table<Des3ThreeKeys>();

}  // namespace morvane::cipher

using morvane::cipher::Des;
using morvane::cipher::Des3;
using morvane::cipher::Des3ThreeKeys;

MORVANE_CIPHER_BLOCK(DES, Des)
MORVANE_CIPHER_ECB(DES, Des)
MORVANE_CIPHER_CBC(DES, Des)
MORVANE_CIPHER_NO_PAD(DES, Des)
MORVANE_CIPHER_FEEDBACK(DES, Des)

MORVANE_CIPHER_BLOCK(DES3, Des3)
MORVANE_CIPHER_ECB(DES3, Des3)
MORVANE_CIPHER_CBC(DES3, Des3)
MORVANE_CIPHER_NO_PAD(DES3, Des3)
MORVANE_CIPHER_FEEDBACK(DES3, Des3)

MORVANE_CIPHER_BLOCK(DES3_3Key, Des3ThreeKeys)
MORVANE_CIPHER_CBC(DES3_3Key, Des3ThreeKeys)
