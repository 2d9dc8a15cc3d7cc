#include "digest_calls.h"

#include <morvane/csp.h>
#include <morvane/hash.h>

#include <algorithm>

namespace morvane::tool {
namespace {

std::uint32_t length(Message message) { return static_cast<std::uint32_t>(message.size()); }

void at_once(void (*digest)(std::uint8_t*, const std::uint8_t*, std::uint32_t), std::uint8_t* out, Message message) {
    digest(out, message.data(), length(message));
}
void at_once(void (*digest)(std::uint8_t*, const std::uint8_t*, std::int32_t), std::uint8_t* out, Message message) {
    digest(out, message.data(), static_cast<std::int32_t>(message.size()));
}
void at_once(void (*digest)(std::uint8_t*, std::uint32_t*, const std::uint8_t*, std::uint32_t), std::uint8_t* out,
             Message message) {
    std::uint32_t written = 0;
    digest(out, &written, message.data(), length(message));
}

// Whatever the type of the context and of lengths.
template <auto Digest, auto Init, auto Update, auto Final>
struct Primitive {
    static void once(std::uint8_t* out, Message message) { at_once(Digest, out, message); }
    static void pieces(std::uint8_t* out, Message message, std::size_t size) { in_pieces(Update, out, message, size); }

private:
    template <typename Context, typename Length>
    static void in_pieces(void (*update)(Context*, const std::uint8_t*, Length), std::uint8_t* out, Message message,
                          std::size_t size) {
        Context context{};
        Init(&context);
        for (std::size_t at = 0; at < message.size(); at += size) {
            update(&context, &message[at], static_cast<Length>(std::min(size, message.size() - at)));
        }
        Final(&context, out);
    }
};

// MD5 stands in the provider layer alone.
struct Md5 {
    static void once(std::uint8_t* out, Message message) { pieces(out, message, message.size()); }
    static void pieces(std::uint8_t* out, Message message, std::size_t size) {
        CspSession session{};
        session.context_type = CSP_CONTEXT_DIGEST;
        session.algorithm = CSP_ALG_MD5;
        const auto handle = reinterpret_cast<CspHandle>(&session);
        CSP_DigestDataInit(0, handle, nullptr);
        for (std::size_t at = 0; at < message.size(); at += size) {
            const CSSM_DATA piece = {length(message.subspan(at, std::min(size, message.size() - at))), &message[at]};
            CSP_DigestDataUpdate(0, handle, &piece, 1);
        }
        CSSM_DATA digest = {16, out};
        CSP_DigestDataFinal(0, handle, &digest);
    }
};

using Md2 = Primitive<E_MD2, E_MD2_Init, E_MD2_Update, E_MD2_Final>;
using Md4 = Primitive<E_MD4, E_MD4_Init, E_MD4_Update, E_MD4_Final>;
using Sha0 = Primitive<E_SHA, E_SHA_Init, E_SHA_Update, E_SHA_Final>;
using Sha1 = Primitive<E_SHA1, E_SHA1_Init, E_SHA1_Update, E_SHA1_Final>;
using Sha256 = Primitive<E_SHA256, E_SHA256_Init, E_SHA256_Update, E_SHA256_Final>;
using Sha384 = Primitive<E_SHA384, E_SHA384_Init, E_SHA384_Update, E_SHA384_Final>;
using Sha512 = Primitive<E_SHA512, E_SHA512_Init, E_SHA512_Update, E_SHA512_Final>;
using Ripemd160 = Primitive<E_RIPEMD160, E_RIPEMD160_Init, E_RIPEMD160_Update, E_RIPEMD160_Final>;
using Has160 = Primitive<E_HAS160, E_HAS160_Init, E_HAS160_Update, E_HAS160_Final>;

template <typename Digest>
constexpr DigestCalls row(std::string_view name, std::size_t bytes) {
    return {name, bytes, Digest::once, Digest::pieces};
}

constexpr DigestCalls kRows[] = {
    row<Md2>("md2", 16),       row<Md4>("md4", 16),       row<Md5>("md5", 16),
    row<Sha0>("sha0", 20),     row<Sha1>("sha1", 20),     row<Sha256>("sha256", 32),
    row<Sha384>("sha384", 48), row<Sha512>("sha512", 64), row<Ripemd160>("ripemd160", 20),
    row<Has160>("has160", 20),
};

}  // namespace

std::span<const DigestCalls> all_digest_calls() { return kRows; }

}  // namespace morvane::tool
