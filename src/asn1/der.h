// DER elements (X.690): a reader that is a pointer and a length, and a writer that measures by the same calls that write.
// They know no key record.
#pragma once

#include <morvane/types.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace morvane::asn1 {

enum class TagClass : std::uint8_t { kUniversal = 0x00, kApplication = 0x40, kContext = 0x80, kPrivate = 0xc0 };

struct Tag {
    std::uint32_t number;
    bool constructed = false;
    TagClass tag_class = TagClass::kUniversal;
};

inline constexpr Tag kInteger{2};
inline constexpr Tag kBitString{3};
inline constexpr Tag kSequence{16, true};

// Tag numbers from here on have the form of several octets.
inline constexpr std::uint32_t kHighTag = 31;

// What is left of an input. Each getter takes the next element and moves behind it, or refuses and stays.
class Reader {
public:
    Reader() = default;
    Reader(const std::uint8_t* bytes, std::size_t size) noexcept : bytes_(bytes), size_(size) {}

    const std::uint8_t* position() const noexcept { return bytes_; }
    std::span<const std::uint8_t> rest() const noexcept { return {bytes_, size_}; }
    bool at_end() const noexcept { return size_ == 0; }

    // The content of an element with this tag, a low one. The length must be definite and in its shortest form.
    // `content` is another reader.
    bool get(Tag tag, Reader& content) noexcept;

    // The magnitude of an INTEGER without leading zeros, empty for 0. Refuses a negative one, and one that has no octets or
    // more than it needs.
    bool get_magnitude(std::span<const std::uint8_t>& magnitude) noexcept;

    // An INTEGER into a record with room for so many words; one that needs more is refused before anything is stored.
    bool get_number(ENUM& number, std::size_t room_words) noexcept;

private:
    const std::uint8_t* bytes_ = nullptr;
    std::size_t size_ = 0;
};

// Writes elements one after the other; with no place to write to it counts, by the same steps.
class Writer {
public:
    explicit Writer(std::uint8_t* out = nullptr) noexcept : out_(out) {}

    // Octets so far. With 64 bits, so that nothing that fits into memory overflows it.
    std::uint64_t size() const noexcept { return size_; }

    void put_identifier(Tag tag) noexcept;
    void put_length(std::uint64_t length) noexcept;

    // An INTEGER: the value of the record in two's complement, whatever its zero words at the top.
    void put_number(const ENUM& number) noexcept;

    void put_octets(std::span<const std::uint8_t> octets) noexcept {
        for (const std::uint8_t octet : octets) put_octet(octet);
    }

    // An element whose content is what body(Writer&) puts. It runs twice, first to be measured.
    template <typename Body>
    void put(Tag tag, const Body& body) noexcept {
        Writer measure;
        body(measure);
        put_identifier(tag);
        put_length(measure.size());
        body(*this);
    }

    // A constructed element in the indefinite form, for content whose length nobody knows. No key has it: it is not DER,
    // and Reader refuses it.
    template <typename Body>
    void put_indefinite(Tag tag, const Body& body) noexcept {
        put_identifier(tag);
        put_octet(0x80);
        body(*this);
        put_octet(0);  // the end of contents
        put_octet(0);
    }

private:
    void put_octet(std::uint32_t octet) noexcept {
        if (out_ != nullptr) out_[size_] = static_cast<std::uint8_t>(octet);
        ++size_;
    }

    std::uint8_t* out_;
    std::uint64_t size_ = 0;
};

// What body(Writer&) puts, written to out unless that is null. Returns the octets, or -1, and nothing is written, if a
// 32-bit result cannot say them.
template <typename Body>
std::int32_t encode(std::uint8_t* out, const Body& body) noexcept {
    Writer measure;
    body(measure);
    if (measure.size() > INT32_MAX) return -1;
    if (out != nullptr) {
        Writer writer(out);
        body(writer);
    }
    return static_cast<std::int32_t>(measure.size());
}

}  // namespace morvane::asn1
