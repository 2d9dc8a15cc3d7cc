#include "file_digest.h"

#include "input.h"
#include "progress.h"

#include <morvane/csp.h>

#include <stdexcept>

namespace morvane::tool {
namespace {

// Large enough that calls cost nothing, small enough to stay in the second-level cache between reading and hashing.
constexpr std::size_t kBufferBytes = 1 << 18;

// One digest operation. Its session record is its handle, so it stays where it is.
class Operation {
public:
    explicit Operation(const Algorithm& algorithm) : algorithm_(algorithm) {
        session_.context_type = CSP_CONTEXT_DIGEST;
        session_.algorithm = algorithm.id;
        require(CSP_DigestDataInit(kProvider, handle(), nullptr));
    }
    ~Operation() {
        if (finished_) return;
        Digest unused(algorithm_.digest_bytes);
        close(unused);  // only this releases what Init allocated
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;

    void update(std::span<std::uint8_t> bytes) {
        const CSSM_DATA piece = {static_cast<std::uint32_t>(bytes.size()), bytes.data()};
        require(CSP_DigestDataUpdate(kProvider, handle(), &piece, 1));
    }

    Digest finish() {
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

}  // namespace

FileDigester::FileDigester(const Algorithm& algorithm) : algorithm_(algorithm), buffer_(kBufferBytes) {}

Digest FileDigester::operator()(const std::string& name) {
    Input input(name);
    Operation operation(algorithm_);
    Progress progress(input.size());
    while (const std::size_t size = input.read(buffer_)) {
        operation.update(std::span(buffer_).first(size));
        progress.advance(size);
    }
    return operation.finish();
}

}  // namespace morvane::tool
