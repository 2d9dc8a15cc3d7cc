#include "file_digest.h"

#include "input.h"
#include "progress.h"
#include "toolkit.h"

#include <morvane/csp.h>
#include <morvane/hash.h>

#include <memory>
#include <optional>
#include <stdexcept>

namespace morvane::tool {
namespace {

// Large enough that calls cost nothing, small enough to stay in the second-level cache between reading and hashing.
constexpr std::size_t kBufferBytes = 1 << 18;

// What the toolkit calls the algorithm, if it has it.
std::optional<std::uint32_t> selector_of(const Algorithm& algorithm) {
    switch (algorithm.id) {
        case CSP_ALG_MD2:
            return K_HASH_MD2;
        case CSP_ALG_MD4:
            return K_HASH_MD4;
        case CSP_ALG_MD5:
            return K_HASH_MD5;
        case CSP_ALG_SHA1:
            return K_HASH_SHA1;
        case CSP_ALG_RIPEMD160:
            return K_HASH_RIPEMD160;
        case CSP_ALG_HAS160:
            return K_HASH_HAS160;
        default:
            return std::nullopt;
    }
}

// One digest operation.
class Operation {
public:
    Operation() = default;
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;
    virtual ~Operation() = default;
    virtual void update(std::span<std::uint8_t> bytes) = 0;
    virtual Digest finish() = 0;
};

// By the provider layer. The session record is the operation's handle, so it stays where it is.
class ProviderOperation : public Operation {
public:
    explicit ProviderOperation(const Algorithm& algorithm) : algorithm_(algorithm) {
        session_.context_type = CSP_CONTEXT_DIGEST;
        session_.algorithm = algorithm.id;
        require(CSP_DigestDataInit(kProvider, handle(), nullptr));
    }
    ~ProviderOperation() override {
        if (finished_) return;
        Digest unused(algorithm_.digest_bytes);
        close(unused);  // only this releases what Init allocated
    }
    void update(std::span<std::uint8_t> bytes) override {
        const CSSM_DATA piece = {static_cast<std::uint32_t>(bytes.size()), bytes.data()};
        require(CSP_DigestDataUpdate(kProvider, handle(), &piece, 1));
    }

    Digest finish() override {
        Digest digest(algorithm_.digest_bytes);
        require(close(digest));
        finished_ = true;
        return digest;
    }

private:
    static constexpr std::uint32_t kProvider = 0;  // any value will do

    CspHandle handle() { return reinterpret_cast<CspHandle>(&session_); }

    std::int32_t close(Digest& digest) {
        CSSM_DATA output = {static_cast<std::uint32_t>(digest.size()), digest.data()};
        return CSP_DigestDataFinal(kProvider, handle(), &output);
    }

    void require(std::int32_t status) const {
        if (status == 0) return;
        throw std::runtime_error(std::string(algorithm_.name) + ": the library failed with code " +
                                 std::to_string(GetError()));
    }

    const Algorithm& algorithm_;
    CspSession session_{};
    bool finished_ = false;
};

// By the primitives themselves.
template <typename Context, auto Init, auto Update, auto Final>
class PrimitiveOperation : public Operation {
public:
    explicit PrimitiveOperation(std::size_t digest_bytes) : digest_(digest_bytes) { Init(&context_); }
    void update(std::span<std::uint8_t> bytes) override {
        Update(&context_, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    }
    Digest finish() override {
        Final(&context_, digest_.data());
        return digest_;
    }

private:
    Context context_;
    Digest digest_;
};

// The library does not carry the bit count of SHA-256 into its high word, which would give files over 512 MiB a digest that
// nobody else computes. The record is ours, so the carry is made up for here.
void update_sha256(E_SHA256_CTX* ctx, const std::uint8_t* data, std::uint32_t len) {
    const std::uint32_t before = ctx->count_lo;
    E_SHA256_Update(ctx, data, len);
    if (ctx->count_lo < before) ++ctx->count_hi;
}

std::unique_ptr<Operation> begin(const Algorithm& algorithm) {
    if (algorithm.id != 0) return std::make_unique<ProviderOperation>(algorithm);
    const std::size_t bytes = algorithm.digest_bytes;
    if (algorithm.name == "sha256") {
        return std::make_unique<PrimitiveOperation<E_SHA256_CTX, E_SHA256_Init, update_sha256, E_SHA256_Final>>(bytes);
    }
    if (algorithm.name == "sha384") {
        return std::make_unique<PrimitiveOperation<E_SHA512_CTX, E_SHA384_Init, E_SHA384_Update, E_SHA384_Final>>(bytes);
    }
    if (algorithm.name == "sha512") {
        return std::make_unique<PrimitiveOperation<E_SHA512_CTX, E_SHA512_Init, E_SHA512_Update, E_SHA512_Final>>(bytes);
    }
    throw std::logic_error("no way to compute " + std::string(algorithm.name));
}

}  // namespace

FileDigester::FileDigester(const Algorithm& algorithm) : algorithm_(algorithm), buffer_(kBufferBytes) {}

Digest FileDigester::operator()(const std::string& name) {
    Input input(name);
    std::size_t size = input.read(buffer_);
    const std::optional<std::uint32_t> selector = selector_of(algorithm_);
    if (size < buffer_.size() && selector) {
        return *toolkit::make(toolkit::kNoRefusal, K_GenHash, *selector, toolkit::In(std::span(buffer_).first(size)))
                    .value();
    }
    const std::unique_ptr<Operation> operation = begin(algorithm_);
    Progress progress(input.size());
    for (; size != 0; size = input.read(buffer_)) {
        operation->update(std::span(buffer_).first(size));
        progress.advance(size);
    }
    return operation->finish();
}

}  // namespace morvane::tool
