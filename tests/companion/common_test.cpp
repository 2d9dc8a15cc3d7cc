// MorvaneCommon: contexts and their memory.
#include <morvane/common.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <algorithm>
#include <cstdlib>

namespace {

using namespace morvane::test;

// Memory that says what happens to it. It keeps its blocks until the end, so that they can be looked at after their
// release.
struct Heap {
    struct Piece {
        Bytes bytes;
        bool released;
    };
    std::vector<Piece> pieces;
    std::size_t most = SIZE_MAX;  // so many allocations succeed

    Heap() { pieces.reserve(100); }
    K_ALLOCATOR allocator() {
        return {[](void* user, std::size_t bytes) -> void* {
                    auto& heap = *static_cast<Heap*>(user);
                    if (heap.pieces.size() >= heap.most) return nullptr;
                    heap.pieces.push_back({Bytes(bytes, 0xee), false});
                    return heap.pieces.back().bytes.data();
                },
                [](void* user, void* block) {
                    for (Piece& piece : static_cast<Heap*>(user)->pieces) {
                        if (piece.bytes.data() == block) piece.released = true;
                    }
                },
                this};
    }
    bool is_released() const {
        return std::all_of(pieces.begin(), pieces.end(), [](const Piece& piece) { return piece.released; });
    }
};

bool is_zero(const void* bytes, std::size_t size) {
    const auto* const first = static_cast<const std::uint8_t*>(bytes);
    return std::all_of(first, first + size, [](std::uint8_t byte) { return byte == 0; });
}

TEST(Companion, BlocksAreZeroAndWiped) {
    Heap heap;
    const K_ALLOCATOR allocator = heap.allocator();
    K_CONTEXT* const context = K_NewContext(&allocator);
    ASSERT_NE(context, nullptr);
    auto* const block = static_cast<std::uint8_t*>(K_calloc(context, 25, 4));
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(is_zero(block, 100));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % (2 * sizeof(void*)), 0U);
    std::fill_n(block, 100, std::uint8_t{'k'});
    K_free(context, block);
    EXPECT_TRUE(heap.pieces.back().released);
    EXPECT_TRUE(is_zero(heap.pieces.back().bytes.data(), heap.pieces.back().bytes.size()));

    void* const empty = K_calloc(context, 0, 7);
    void* const also_empty = K_calloc(context, 7, 0);
    EXPECT_NE(empty, nullptr);
    EXPECT_NE(also_empty, empty);
    EXPECT_EQ(K_calloc(context, 0x10000, 0x10000), nullptr) << "2^32 bytes";
    EXPECT_EQ(K_calloc(nullptr, 1, 1), nullptr);
    K_free(context, nullptr);
    K_free(nullptr, empty);

    K_CONTEXT* const other = K_NewContext(nullptr);
    K_free(other, empty);  // not one of its blocks
    EXPECT_EQ(K_EndContext(other), 0U);
    K_free(context, also_empty);
    EXPECT_EQ(K_EndContext(context), 1U) << "the block of no bytes";
    EXPECT_TRUE(heap.is_released());
    EXPECT_EQ(K_EndContext(nullptr), 0U);
}

TEST(Companion, ShortMemoryIsReported) {
    Heap heap;
    heap.most = 0;
    K_ALLOCATOR allocator = heap.allocator();
    EXPECT_EQ(K_NewContext(&allocator), nullptr);
    heap.most = 1;
    K_CONTEXT* const context = K_NewContext(&allocator);
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(K_calloc(context, 1, 1), nullptr);
    std::uint8_t byte = 0, *data = &byte;
    std::uint32_t length = 5;
    EXPECT_EQ(K_str2bin(context, "00", &data, &length), -1);
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(K_EndContext(context), 0U);
    allocator.release = nullptr;
    EXPECT_EQ(K_NewContext(&allocator), nullptr);
}

TEST(Companion, ReadsHexadecimalText) {
    K_CONTEXT* const context = K_NewContext(nullptr);
    std::uint8_t* data = nullptr;
    std::uint32_t length = 0;
    ASSERT_EQ(K_str2bin(context, "00fFAa19", &data, &length), 0);
    EXPECT_EQ(to_hex(data, length), "00ffaa19");
    K_free(context, data);
    ASSERT_EQ(K_str2bin(context, "", &data, &length), 0);
    EXPECT_EQ(length, 0U);
    K_free(context, data);
    for (const char* const bad : {"0", "0g", "/0", ":0", "00 11", "0x", "@@", "``", static_cast<const char*>(nullptr)}) {
        length = 5;
        EXPECT_EQ(K_str2bin(context, bad, &data, &length), -1);
        EXPECT_EQ(data, nullptr);
        EXPECT_EQ(length, 0U);
    }
    EXPECT_EQ(K_str2bin(nullptr, "00", &data, &length), -1);
    EXPECT_EQ(K_str2bin(context, "00", nullptr, &length), -1);
    EXPECT_EQ(K_str2bin(context, "00", &data, nullptr), -1);
    EXPECT_EQ(K_EndContext(context), 0U);
}

}  // namespace
