#include "csp/cipher_stream.h"

#include "base/wipe.h"
#include "csp/scatter.h"
#include "csp/session.h"

namespace morvane::csp {
namespace {

// Carried bytes and input are put through the operation in chunks of this length, whatever the cipher. A chunk is no
// multiple of SEED's block: its last 8 bytes are a partial block to the mode, of which nevertheless no more than the
// chunk's length is handed on. Streams of that kind exist, so this stays.
constexpr std::uint32_t kChunkBytes = 1000;
// What the mode functions may read and write of a chunk.
constexpr std::uint32_t kStageBytes = 1008;
static_assert(kStageBytes % 16 == 0 && kStageBytes >= kChunkBytes);

// The mode functions work in place or apart, not on ranges that overlap otherwise.
bool are_apart_or_same(const std::uint8_t* a, const std::uint8_t* b, std::uint32_t size) noexcept {
    const auto x = reinterpret_cast<std::uintptr_t>(a), y = reinterpret_cast<std::uintptr_t>(b);
    return x == y || (x < y ? y - x : x - y) >= size;
}

class Stream {
public:
    Stream(CspSession& session, CipherFn* operation, const CipherBuffers& buffers, std::uint32_t* written) noexcept
        : session_(session),
          operation_(operation),
          buffers_(buffers),
          output_(buffers.out, buffers.out_count),
          written_(written) {}

    std::uint32_t run() noexcept {
        key_ = key_of(session_);
        staged_ = std::min<std::uint32_t>(session_.carried_bytes, kChunkBytes - 1);
        std::memcpy(stage_.items.data(), session_.carried, staged_);
        for (std::uint32_t i = 0; i < buffers_.in_count; ++i) {
            const CSSM_DATA& input = buffers_.in[i];
            if (input.Data == nullptr) return CSP_ERR_BAD_DATA;
            if (const std::uint32_t code = take(input.Data, input.Length); code != 0) return code;
        }
        return finish();
    }

private:
    std::uint32_t block_bytes() const noexcept { return session_.cipher_table->block_bytes; }

    // Takes in one input buffer.
    std::uint32_t take(const std::uint8_t* bytes, std::uint32_t size) noexcept {
        while (size != 0) {
            std::uint32_t taken = whole_chunks(bytes, size), code = 0;
            if (taken != 0) {
                code = run_there(bytes, taken);
            } else {
                taken = std::min(size, kChunkBytes - staged_);
                std::memcpy(stage_.items.data() + staged_, bytes, taken);
                staged_ += taken;
                if (staged_ == kChunkBytes) code = run_chunk();
            }
            if (code != 0) return code;
            bytes += taken;
            size -= taken;
        }
        return 0;
    }

    // How many bytes of the input are chunks that can go to their place in the output without being staged.
    std::uint32_t whole_chunks(const std::uint8_t* bytes, std::uint32_t size) const noexcept {
        if (staged_ != 0 || (block_bytes() != 0 && kChunkBytes % block_bytes() != 0)) return 0;
        const std::uint32_t most = std::min(size, output_.room()), chunks = most - most % kChunkBytes;
        return are_apart_or_same(bytes, output_.next(), chunks) ? chunks : 0;
    }

    bool operate(const std::uint8_t* in, std::uint8_t* out, std::uint32_t size, std::uint32_t& produced) noexcept {
        return operation_(key_, in, out, size, &produced, session_.chain);
    }

    std::uint32_t run_there(const std::uint8_t* bytes, std::uint32_t size) noexcept {
        std::uint32_t produced = 0;
        if (!operate(bytes, output_.next(), size, produced)) return CSP_ERR_PRIMITIVE_FAILED;
        output_.advance(produced);
        *written_ += produced;
        return 0;
    }

    // A chunk gives as many bytes as it has, whatever the mode makes of its end; the null cipher gives none.
    std::uint32_t run_chunk() noexcept {
        staged_ = 0;
        std::uint32_t produced = 0;
        if (!operate(stage_.items.data(), result_.items.data(), kChunkBytes, produced)) return CSP_ERR_PRIMITIVE_FAILED;
        if (produced == 0) return 0;
        const std::uint32_t code = output_.write(result_.items.data(), kChunkBytes);
        if (code == 0) *written_ += kChunkBytes;
        return code;
    }

    std::uint32_t finish() noexcept {
        const std::uint32_t rest = block_bytes() == 0 ? 0 : staged_ % block_bytes(), whole = staged_ - rest;
        if (whole != 0) {
            std::uint32_t produced = 0;
            if (!operate(stage_.items.data(), result_.items.data(), whole, produced)) return CSP_ERR_PRIMITIVE_FAILED;
            *written_ += produced;
            if (const std::uint32_t code = output_.write(result_.items.data(), produced); code != 0) return code;
        }
        copy_bytes(session_.carried, stage_.items.data() + whole, rest);
        session_.carried_bytes = rest;
        return 0;
    }

    CspSession& session_;
    CipherFn* operation_;
    const CipherBuffers& buffers_;
    Scatter output_;
    std::uint32_t* written_;
    const CSSM_KEY* key_ = nullptr;
    std::uint32_t staged_ = 0;
    // Zero behind the chunk: that is what a mode reads where it reads a partial block whole, and what is handed on where it
    // leaves one out.
    SecretArray<std::uint8_t, kStageBytes> stage_;
    SecretArray<std::uint8_t, kStageBytes> result_;
};

}  // namespace

std::uint32_t stream(CspSession& session, CipherFn* operation, const CipherBuffers& buffers,
                     std::uint32_t* written) noexcept {
    return Stream(session, operation, buffers, written).run();
}

}  // namespace morvane::csp
