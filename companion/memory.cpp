// K_calloc, K_free and K_str2bin.
#include "base/wipe.h"
#include "companion/context.h"

#include <cassert>
#include <cstring>

namespace {

using namespace morvane::companion;

// -1 for no digit.
int digit_value(char c) noexcept {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Fills the bytes from as many pairs of digits. False when one is no digit.
bool read_hex(const char* text, std::uint8_t* bytes, std::size_t count) noexcept {
    for (std::size_t i = 0; i < count; ++i) {
        const int high = digit_value(text[2 * i]), low = digit_value(text[2 * i + 1]);
        if (high < 0 || low < 0) return false;
        bytes[i] = static_cast<std::uint8_t>(high << 4 | low);
    }
    return true;
}

}  // namespace

void* K_calloc(K_CONTEXT* context, uint32_t count, uint32_t size) {
    if (context == nullptr) return nullptr;
    const std::uint64_t bytes = std::uint64_t{count} * size;
    if (bytes > UINT32_MAX || bytes > SIZE_MAX - sizeof(Header)) return nullptr;
    Context& owner = whole(context);
    const auto with_header = static_cast<std::size_t>(bytes) + sizeof(Header);
    auto* const header = static_cast<Header*>(owner.allocator.allocate(owner.allocator.user, with_header));
    if (header == nullptr) return nullptr;
    std::memset(static_cast<void*>(header), 0, with_header);
    *header = {&owner, nullptr, owner.blocks, static_cast<std::uint32_t>(bytes), kLive};
    if (owner.blocks != nullptr) owner.blocks->before = header;
    owner.blocks = header;
    ++owner.count;
    return header + 1;
}

void K_free(K_CONTEXT* context, void* block) {
    if (context == nullptr || block == nullptr) return;
    Context& owner = whole(context);
    Header* const header = static_cast<Header*>(block) - 1;
    const bool is_live = header->mark == kLive && header->owner == &owner;
    assert(is_live && "K_free: not a block of this context");
    if (!is_live) return;
    (header->before != nullptr ? header->before->after : owner.blocks) = header->after;
    if (header->after != nullptr) header->after->before = header->before;
    --owner.count;
    morvane::wipe(header, sizeof *header + header->size);
    owner.allocator.release(owner.allocator.user, header);
}

int32_t K_str2bin(K_CONTEXT* context, const char* text, uint8_t** data, uint32_t* length) {
    if (data != nullptr) *data = nullptr;
    if (length != nullptr) *length = 0;
    if (context == nullptr || text == nullptr || data == nullptr || length == nullptr) return -1;
    const std::size_t digits = std::strlen(text);
    if (digits % 2 != 0 || digits / 2 > UINT32_MAX) return -1;
    const auto count = static_cast<std::uint32_t>(digits / 2);
    auto* const bytes = static_cast<std::uint8_t*>(K_calloc(context, count, 1));
    if (bytes == nullptr) return -1;
    if (!read_hex(text, bytes, count)) {
        K_free(context, bytes);
        return -1;
    }
    *data = bytes;
    *length = count;
    return 0;
}
