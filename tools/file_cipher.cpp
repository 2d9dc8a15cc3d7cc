#include "file_cipher.h"

#include "input.h"
#include "progress.h"
#include "target.h"

#include <algorithm>
#include <optional>

namespace morvane::tool {
namespace {

// As for digests: calls cost nothing, and the data stays in the second-level cache.
constexpr std::size_t kPieceBytes = 1 << 18;

// The job, piece by piece.
class Operation {
public:
    Operation(const CipherJob& job, std::string input)
        : job_(job), input_(std::move(input)), schedule_(std::vector<std::uint8_t>(job.cipher->keying.schedule_bytes)) {
        job.cipher->keying.set_key((*schedule_).data(), *job.key, job.parameter);
        std::ranges::copy(job.iv, chain_.begin());
    }

    // Every piece but the last has a multiple of this.
    std::size_t step_bytes() const {
        return is_feedback() ? static_cast<std::size_t>(job_.feedback_bits) / 8 : job_.cipher->block_bytes;
    }

    // Transforms the first `size` bytes of the buffer, which has room for a block more, and returns what is to be written.
    std::span<const std::uint8_t> next(std::span<std::uint8_t> buffer, std::size_t size) {
        transform(buffer.first(size));
        return buffer.first(size);
    }
    std::span<const std::uint8_t> last(std::span<std::uint8_t> buffer, std::size_t size);

private:
    bool is_feedback() const { return job_.mode == Mode::kCfb || job_.mode == Mode::kOfb; }
    bool is_padded() const { return job_.padding && (job_.mode == Mode::kEcb || job_.mode == Mode::kCbc); }

    void transform(std::span<std::uint8_t> data) {
        if (data.empty()) return;
        const Directions& directions = job_.cipher->in(job_.mode);
        (job_.encrypt ? directions.encrypt : directions.decrypt)((*schedule_).data(), data, chain_.data(),
                                                                 job_.feedback_bits);
    }
    std::size_t without_padding(std::span<const std::uint8_t> plain) const;
    [[noreturn]] void refuse_length() const;

    const CipherJob& job_;
    std::string input_;
    Secret schedule_;
    std::array<std::uint8_t, kMaxBlockBytes> chain_{};
};

std::span<const std::uint8_t> Operation::last(std::span<std::uint8_t> buffer, std::size_t size) {
    const std::size_t missing = step_bytes() - size % step_bytes();  // from 1 to a whole step
    if (is_padded() && job_.encrypt) {
        std::ranges::fill(buffer.subspan(size, missing), static_cast<std::uint8_t>(missing));
        return next(buffer, size + missing);
    }
    if (is_feedback()) {
        // The library leaves out what is shorter than a step. The zeros that make it one change no byte before them.
        std::ranges::fill(buffer.subspan(size, missing), std::uint8_t{0});
        return next(buffer, size + missing).first(size);
    }
    if (missing != step_bytes()) refuse_length();
    const std::span<const std::uint8_t> out = next(buffer, size);
    return is_padded() ? out.first(without_padding(out)) : out;
}

std::size_t Operation::without_padding(std::span<const std::uint8_t> plain) const {
    const std::size_t count = plain.empty() ? 0 : plain.back();
    const bool good = count >= 1 && count <= step_bytes() &&
                      std::ranges::count(plain.last(count), plain.back()) == static_cast<std::ptrdiff_t>(count);
    if (!good) throw DamageError(display_name(input_) + ": wrong key, iv or cipher, or damaged data");
    return plain.size() - count;
}

void Operation::refuse_length() const {
    const std::string what =
        display_name(input_) + ": is not a whole number of " + std::to_string(step_bytes()) + "-byte blocks, ";
    if (job_.encrypt) throw InputError(what + "which --no-padding needs");
    throw DamageError(what + "so it is damaged or of another cipher or mode");
}

}  // namespace

void run_cipher(const CipherJob& job, const std::string& input_name, const std::string& output, bool replace) {
    std::optional<Input> input(input_name);
    Target target(output, replace);
    Operation operation(job, input_name);
    Progress progress(input->size());

    // One piece is read ahead, so that the last one is known.
    const std::size_t piece = kPieceBytes / operation.step_bytes() * operation.step_bytes();
    std::vector<std::uint8_t> now(piece + kMaxBlockBytes), ahead(piece + kMaxBlockBytes);
    const auto read = [&](std::vector<std::uint8_t>& buffer) { return input->read(std::span(buffer).first(piece)); };
    std::size_t size = read(now);
    while (const std::size_t following = size < piece ? 0 : read(ahead)) {
        target.write(operation.next(now, size));
        progress.advance(size);
        now.swap(ahead);
        size = following;
    }
    target.write(operation.last(now, size));
    input.reset();  // it may have the name that the target is about to take
    target.keep();
}

}  // namespace morvane::tool
