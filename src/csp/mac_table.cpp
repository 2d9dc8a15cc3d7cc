#include "csp/mac_table.h"

#include "base/bytes.h"
#include "base/equal.h"
#include "csp/key_record.h"
#include "csp/table.h"
#include "hash/md5.h"

#include <morvane/cipher.h>

#include <algorithm>
#include <cstdlib>

namespace morvane::csp {
namespace {

// ---- CBC-MAC with DES, for DES and for triple DES ----
//
// Triple DES goes by the first of its two DES schedules alone. MACs have always been made so.

constexpr std::uint32_t kDesBytes = E_DES_BLOCK_BYTES;

// A caller's buffer must be this long for a MAC of 8 bytes. Programs depend on the refusal of shorter ones.
constexpr std::uint32_t kLeastDesOutput = 128;

template <std::uint32_t ExpandedKeyBytes>
std::uint32_t init_des(const CSSM_KEY* key, CspSession& session) noexcept {
    if (key->KeyData.Length < ExpandedKeyBytes) return CSP_ERR_MAC_KEY_TOO_SHORT;
    std::fill_n(session.carried, kDesBytes, std::uint8_t{0});
    std::fill_n(session.chain, kDesBytes, std::uint8_t{0});
    return 0;
}

std::uint32_t update_des(const CSSM_KEY* key, CspSession& session, const std::uint8_t* blocks,
                         std::uint32_t size) noexcept {
    constexpr std::uint32_t kMost = 512;
    const bool done = with_schedule<E_DES_KEY_SCHEDULE>(key, [&](const E_DES_KEY_SCHEDULE& schedule) {
        SecretArray<std::uint8_t, kMost> ciphertext;
        while (size != 0) {
            const std::uint32_t now = std::min(size, kMost);
            E_DES_CBC_Encrypt(blocks, ciphertext.items.data(), &schedule, now, session.chain);
            std::copy_n(ciphertext.items.data() + now - kDesBytes, kDesBytes, session.chain);
            blocks += now;
            size -= now;
        }
    });
    return done ? 0 : CSP_ERR_PRIMITIVE_FAILED;
}

// The last step is always taken: the carried bytes are extended with zeros, which makes an extra block of zeros when there
// are none. It comes before anything is asked of the output.
std::uint32_t close_des(const CSSM_KEY* key, CspSession& session) noexcept {
    return update_des(key, session, session.carried, kDesBytes);
}

std::uint32_t final_des(const CSSM_KEY* key, CspSession& session, CSSM_DATA& mac) noexcept {
    if (const std::uint32_t code = close_des(key, session); code != 0) return code;
    if (mac.Data == nullptr) {
        mac.Data = static_cast<std::uint8_t*>(std::calloc(kDesBytes, 1));
        if (mac.Data == nullptr) return CSP_ERR_MEMORY;
    } else if (mac.Length < kLeastDesOutput) {
        return CSP_ERR_OUTPUT_TOO_SHORT;
    }
    std::copy_n(session.chain, kDesBytes, mac.Data);
    mac.Length = kDesBytes;
    return 0;
}

std::uint32_t verify_des(const CSSM_KEY* key, CspSession& session, const CSSM_DATA& expected) noexcept {
    if (const std::uint32_t code = close_des(key, session); code != 0) return code;
    return are_equal_secrets(session.chain, expected.Data, kDesBytes) ? 0 : kMacMismatch;
}

// ---- HMAC with MD5 (RFC 2104) ----

constexpr std::uint32_t kMd5Bytes = 16;
constexpr std::uint32_t kMd5BlockBytes = 64;

struct HmacMd5 {
    E_MD5_CTX inner;
    E_MD5_CTX outer;
};

std::uint32_t init_md5(const CSSM_KEY* key, CspSession& session) noexcept {
    const CSSM_DATA& data = key->KeyData;
    if (data.Data == nullptr && data.Length != 0) return CSP_ERR_BAD_KEY;
    auto* const state = static_cast<HmacMd5*>(std::calloc(1, sizeof(HmacMd5)));
    if (state == nullptr) return CSP_ERR_MEMORY;
    SecretArray<std::uint8_t, kMd5BlockBytes> block;
    if (data.Length > kMd5BlockBytes) {
        hash::md5(block.items.data(), data.Data, data.Length);
    } else {
        copy_bytes(block.items.data(), data.Data, data.Length);
    }
    const auto begin = [&block](E_MD5_CTX& hash, std::uint8_t pad) {
        for (std::uint8_t& byte : block.items) byte ^= pad;
        E_MD4_Init(&hash);
        hash::md5_update(&hash, block.items.data(), kMd5BlockBytes);
    };
    constexpr std::uint8_t kInnerPad = 0x36, kOuterPad = 0x5c;
    begin(state->inner, kInnerPad);
    begin(state->outer, kInnerPad ^ kOuterPad);
    session.state = state;
    return 0;
}

std::uint32_t update_md5(const CSSM_KEY* /*key*/, CspSession& session, const std::uint8_t* blocks,
                         std::uint32_t size) noexcept {
    auto* const state = static_cast<HmacMd5*>(session.state);
    if (state == nullptr) return CSP_ERR_PRIMITIVE_FAILED;
    hash::md5_update(&state->inner, blocks, size);
    return 0;
}

// Finishes the MAC and releases the state.
void close_md5(CspSession& session, std::uint8_t* mac) noexcept {
    auto* const state = static_cast<HmacMd5*>(session.state);
    hash::md5_update(&state->inner, session.carried, std::min(session.carried_bytes, kMd5Bytes));
    hash::md5_final(&state->inner, mac);
    hash::md5_update(&state->outer, mac, kMd5Bytes);
    hash::md5_final(&state->outer, mac);
    wipe(state, sizeof *state);
    std::free(state);
    session.state = nullptr;
}

std::uint32_t final_md5(const CSSM_KEY* /*key*/, CspSession& session, CSSM_DATA& mac) noexcept {
    if (session.state == nullptr) return CSP_ERR_PRIMITIVE_FAILED;
    if (mac.Data == nullptr) {
        mac.Data = static_cast<std::uint8_t*>(std::calloc(kMd5Bytes, 1));
        if (mac.Data == nullptr) return CSP_ERR_MEMORY;
    } else if (mac.Length < kMd5Bytes) {
        return CSP_ERR_OUTPUT_TOO_SHORT;
    }
    close_md5(session, mac.Data);
    mac.Length = kMd5Bytes;
    return 0;
}

std::uint32_t verify_md5(const CSSM_KEY* /*key*/, CspSession& session, const CSSM_DATA& expected) noexcept {
    if (session.state == nullptr) return CSP_ERR_PRIMITIVE_FAILED;
    SecretArray<std::uint8_t, kMd5Bytes> mac;
    close_md5(session, mac.items.data());
    if (expected.Length < kMd5Bytes) return kMacMismatch;
    return are_equal_secrets(mac.items.data(), expected.Data, kMd5Bytes) ? 0 : kMacMismatch;
}

struct Row {
    std::uint32_t algorithm;
    CspMacTable table;
};

constexpr std::array kRows = {
    Row{CSP_ALG_MD5, {0, kMd5Bytes, 8, init_md5, update_md5, final_md5, verify_md5}},
    Row{CSP_ALG_DES, {128, kDesBytes, 8, init_des<128>, update_des, final_des, verify_des}},
    Row{CSP_ALG_DES3, {256, kDesBytes, 8, init_des<256>, update_des, final_des, verify_des}},
};
static_assert(is_sorted_table(kRows));

}  // namespace

const CspMacTable* find_mac_table(std::uint32_t algorithm) noexcept {
    const Row* const row = find_row(kRows, algorithm);
    return row == nullptr ? nullptr : &row->table;
}

}  // namespace morvane::csp
