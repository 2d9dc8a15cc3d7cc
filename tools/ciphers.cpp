#include "ciphers.h"

#include <morvane/cipher.h>

#include <algorithm>
#include <type_traits>

namespace morvane::tool {
namespace {

using Bytes = std::span<std::uint8_t>;
using Key = std::span<const std::uint8_t>;

// The library's functions differ in the type of the schedule and in what they take beside the data. These hide the type,
// and every mode is one function over the name of a primitive.

template <typename Result, typename Schedule>
void fill(Result (*primitive)(Schedule*, const std::uint8_t*), void* place, Key key, int) {
    static_cast<void>(primitive(static_cast<Schedule*>(place), key.data()));
}

template <typename Result, typename Schedule, typename Length>
void fill(Result (*primitive)(Schedule*, const std::uint8_t*, Length), void* place, Key key, int) {
    static_cast<void>(primitive(static_cast<Schedule*>(place), key.data(), static_cast<Length>(key.size())));
}

template <typename Schedule>
void fill(void (*primitive)(Schedule*, const std::uint8_t*, std::int32_t, std::int32_t), void* place, Key key,
          int parameter) {
    primitive(static_cast<Schedule*>(place), key.data(), static_cast<std::int32_t>(key.size()), parameter);
}

template <typename Result, typename Schedule, typename... Rest>
constexpr std::size_t schedule_bytes(Result (*)(Schedule*, Rest...)) {
    return sizeof(Schedule);
}

template <auto Fill>
constexpr Keying kKeying = {schedule_bytes(Fill),
                            [](void* place, Key key, int parameter) { fill(Fill, place, key, parameter); }};

template <typename Schedule, typename... Rest>
void call(void (*primitive)(const std::uint8_t*, std::uint8_t*, Schedule*, Rest...), void* place, Bytes data,
          std::type_identity_t<Rest>... rest) {
    primitive(data.data(), data.data(), static_cast<Schedule*>(place), rest...);
}

std::uint32_t length(Bytes data) { return static_cast<std::uint32_t>(data.size()); }

template <auto Primitive>
void plain(void* place, Bytes data, std::uint8_t*, int) {
    call(Primitive, place, data, length(data));
}

template <auto Primitive>
void feedback(void* place, Bytes data, std::uint8_t* chain, int feedback_bits) {
    call(Primitive, place, data, feedback_bits, length(data), chain);
}

enum class IvOrder { kPlain, kHalvesReversed };

template <auto Primitive, bool Encrypts, std::size_t Block, IvOrder Order>
void chained(void* place, Bytes data, std::uint8_t* chain, int) {
    std::array<std::uint8_t, Block> iv, next;
    std::copy_n(chain, Block, iv.begin());
    if constexpr (Order == IvOrder::kHalvesReversed) {
        std::reverse(iv.begin(), iv.begin() + Block / 2);
        std::reverse(iv.begin() + Block / 2, iv.end());
    }
    const auto last = data.last<Block>();
    std::ranges::copy(last, next.begin());  // deciphering overwrites the ciphertext that is chained
    call(Primitive, place, data, length(data), iv.data());
    if constexpr (Encrypts) std::ranges::copy(last, next.begin());
    std::ranges::copy(next, chain);
}

template <auto Encrypt, auto Decrypt>
constexpr Directions kEcb = {plain<Encrypt>, plain<Decrypt>};

template <auto Encrypt, auto Decrypt, std::size_t Block = 8, IvOrder Order = IvOrder::kPlain>
constexpr Directions kCbc = {chained<Encrypt, true, Block, Order>, chained<Decrypt, false, Block, Order>};

template <auto Encrypt, auto Decrypt>
constexpr Directions kFeedback = {feedback<Encrypt>, feedback<Decrypt>};

constexpr Modes kDes = {{
    kEcb<E_DES_ECB_Encrypt, E_DES_ECB_Decrypt>,
    kCbc<E_DES_CBC_Encrypt, E_DES_CBC_Decrypt>,
    kFeedback<E_DES_CFB_Encrypt, E_DES_CFB_Decrypt>,
    kFeedback<E_DES_OFB_Encrypt, E_DES_OFB_Decrypt>,
}};
constexpr Modes kDes3 = {{
    kEcb<E_DES3_ECB_Encrypt, E_DES3_ECB_Decrypt>,
    kCbc<E_DES3_CBC_Encrypt, E_DES3_CBC_Decrypt>,
    kFeedback<E_DES3_CFB_Encrypt, E_DES3_CFB_Decrypt>,
    kFeedback<E_DES3_OFB_Encrypt, E_DES3_OFB_Decrypt>,
}};
constexpr Modes kDes3WithThreeKeys = {{{}, kCbc<E_DES3_3Key_CBC_Encrypt, E_DES3_3Key_CBC_Decrypt>}};
constexpr Modes kSeed = {{
    kEcb<E_SEED_ECB_Encrypt, E_SEED_ECB_Decrypt>,
    kCbc<E_SEED_CBC_Encrypt, E_SEED_CBC_Decrypt, 16>,
    kFeedback<E_SEED_CFB_Encrypt, E_SEED_CFB_Decrypt>,
    kFeedback<E_SEED_OFB_Encrypt, E_SEED_OFB_Decrypt>,
}};
constexpr Modes kIdea = {{
    kEcb<E_IDEA_ECB_Encrypt, E_IDEA_ECB_Decrypt>,
    kCbc<E_IDEA_CBC_Encrypt, E_IDEA_CBC_Decrypt, 8, IvOrder::kHalvesReversed>,
    kFeedback<E_IDEA_CFB_Encrypt, E_IDEA_CFB_Decrypt>,
    kFeedback<E_IDEA_OFB_Encrypt, E_IDEA_OFB_Decrypt>,
}};
constexpr Modes kBlowfish = {{
    kEcb<E_BF_ECB_Encrypt, E_BF_ECB_Decrypt>,
    kCbc<E_BF_CBC_Encrypt, E_BF_CBC_Decrypt, 8, IvOrder::kHalvesReversed>,
    kFeedback<E_BF_CFB_Encrypt, E_BF_CFB_Decrypt>,
    kFeedback<E_BF_OFB_Encrypt, E_BF_OFB_Decrypt>,
}};
constexpr Modes kRc2 = {{
    kEcb<E_RC2_ECB_Encrypt, E_RC2_ECB_Decrypt>,
    kCbc<E_RC2_CBC_Encrypt, E_RC2_CBC_Decrypt>,
    kFeedback<E_RC2_CFB_Encrypt, E_RC2_CFB_Decrypt>,
    kFeedback<E_RC2_OFB_Encrypt, E_RC2_OFB_Decrypt>,
}};
constexpr Modes kRc5 = {{
    kEcb<E_RC5_ECB_Encrypt, E_RC5_ECB_Decrypt>,
    kCbc<E_RC5_CBC_Encrypt, E_RC5_CBC_Decrypt>,
    kFeedback<E_RC5_CFB_Encrypt, E_RC5_CFB_Decrypt>,
    kFeedback<E_RC5_OFB_Encrypt, E_RC5_OFB_Decrypt>,
}};
constexpr Modes kRc4 = {{{}, {}, {}, {}, {plain<E_RC4_Encrypt>, plain<E_RC4_Decrypt>}}};

constexpr auto kNone = Parameter::kNone;
constexpr std::string_view kSmallBlock = "64-bit blocks: for existing formats";

constexpr Cipher kCiphers[] = {
    {"des", 8, 8, 8, kNone, "broken, 56-bit key: only for old data", kKeying<E_DES_KeySchedule>, kDes},
    {"des3", 8, 16, 16, kNone, kSmallBlock, kKeying<E_DES3_KeySchedule>, kDes3},
    {"des3", 8, 24, 24, kNone, "64-bit blocks: for existing formats; CBC only", kKeying<E_DES3_3Key_Schedule>,
     kDes3WithThreeKeys},
    {"seed", 16, 16, 16, kNone, "", kKeying<E_SEED_KeySchedule>, kSeed},
    {"idea", 8, 16, 16, kNone, kSmallBlock, kKeying<E_IDEA_KeySchedule>, kIdea},
    {"blowfish", 8, 1, E_BF_MAX_KEY_BYTES, kNone, kSmallBlock, kKeying<E_BF_KeySchedule>, kBlowfish},
    {"rc2", 8, 1, E_RC2_MAX_KEY_BYTES, Parameter::kEffectiveBits, kSmallBlock, kKeying<E_RC2_KeySchedule>, kRc2},
    {"rc5", 8, 1, 255, Parameter::kRounds, kSmallBlock, kKeying<E_RC5_KeySchedule>, kRc5},
    {"rc4", 1, 1, 256, kNone, "broken, biased key stream: only for old data", kKeying<E_RC4_KeySchedule>, kRc4},
};

}  // namespace

std::string Cipher::key_lengths() const {
    const std::string least = std::to_string(min_key_bytes);
    return min_key_bytes == max_key_bytes ? least : least + "-" + std::to_string(max_key_bytes);
}

std::span<const Cipher> all_ciphers() { return kCiphers; }

std::string_view name_of(Mode mode) {
    constexpr std::array<std::string_view, kModes> kNames = {"ecb", "cbc", "cfb", "ofb", ""};
    return kNames[static_cast<std::size_t>(mode)];
}

}  // namespace morvane::tool
