// MorvaneCommon: contexts and their memory.
#include <morvane/common.h>

#include "support/bytes.h"

#include <gtest/gtest.h>
#include <algorithm>

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

#if defined(NDEBUG)
constexpr std::uint8_t kMark[] = {'b', 'o', 'c', 'k'};  // in front of a block
#endif

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
    EXPECT_DEBUG_DEATH(K_free(other, empty), "not a block of this context");
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
    for (std::uint32_t blocks = 0; blocks < 3; ++blocks) {
        heap.most = heap.pieces.size() + 1 + blocks;
        K_CONTEXT* const context = K_NewContext(&allocator);
        ASSERT_NE(context, nullptr);
        for (std::uint32_t i = 0; i < blocks; ++i) EXPECT_NE(K_calloc(context, 1, 1), nullptr);
        EXPECT_EQ(K_calloc(context, 1, 1), nullptr);
        std::uint8_t byte = 0, *data = &byte;
        std::uint32_t length = 5;
        EXPECT_EQ(K_str2bin(context, "00", &data, &length), -1);
        EXPECT_TRUE(data == nullptr && length == 0);
        EXPECT_EQ(K_EndContext(context), blocks);
        EXPECT_TRUE(heap.is_released());
    }
    std::exchange(heap.most, SIZE_MAX);
    for (const K_ALLOCATOR& half : {K_ALLOCATOR{allocator.allocate, nullptr, &heap}, {nullptr, allocator.release, &heap}}) {
        EXPECT_EQ(K_NewContext(&half), nullptr);
    }
}

// In release builds; with assertions the program stops there.
#if defined(NDEBUG)
TEST(Companion, EndsWithABlockWhoseHeaderWasWrittenOver) {
    Heap heap;
    const K_ALLOCATOR allocator = heap.allocator();
    K_CONTEXT* const context = K_NewContext(&allocator);
    for (int i = 0; i < 3; ++i) ASSERT_NE(K_calloc(context, 1, 8), nullptr);
    Bytes& middle = heap.pieces[2].bytes;
    const auto mark = std::search(middle.begin(), middle.end(), std::begin(kMark), std::end(kMark));
    ASSERT_NE(mark, middle.end());
    *mark = 0;
    EXPECT_EQ(K_EndContext(context), 3U);
    for (std::size_t i = 0; i < heap.pieces.size(); ++i) EXPECT_EQ(heap.pieces[i].released, i != 2) << i;
}
#else
TEST(Companion, NamesTheBlocksThatAreLeft) {
    K_CONTEXT* const context = K_NewContext(nullptr);
    K_free(context, K_calloc(context, 1, 555));
    ASSERT_NE(K_calloc(context, 1, 777), nullptr);
    K_KCOInit(context);
    ASSERT_NE(K_calloc(context, 3, 111), nullptr);
    const auto said = [&](auto&& call) {
        testing::internal::CaptureStderr();
        call();
        return testing::internal::GetCapturedStderr();
    };
    EXPECT_EQ(said([&] { K_KCOTerm(context); }), "MorvaneCommon: 1 blocks were not freed: 333 bytes\n");
    EXPECT_EQ(said([&] { K_EndContext(context); }), "MorvaneCommon: 2 blocks were not freed: 333 777 bytes\n");
}
#endif

TEST(Companion, InitSetsTheFlagAndTermLeavesEverything) {
    K_CONTEXT* const context = K_NewContext(nullptr);
    EXPECT_EQ(context->companion_initialised, 0U);
    EXPECT_EQ(K_KCOInit(context), 0);
    EXPECT_EQ(K_KCOInit(context), 0);
    void* const block = K_calloc(context, 1, 4);
    context->last_error = 77;
    context->crypto = block;  // as the toolkit's part
    K_KCOTerm(context);
    EXPECT_EQ(context->companion_initialised, 1U) << "the caller's to clear";
    EXPECT_EQ(context->last_error, 77U);
    EXPECT_EQ(context->crypto, block);
    K_free(context, block);
    EXPECT_EQ(K_EndContext(context), 0U);
    EXPECT_EQ(K_KCOInit(nullptr), -1);
    K_KCOTerm(nullptr);
}

TEST(Companion, ReadsHexadecimalText) {
    K_CONTEXT* const context = K_NewContext(nullptr);
    std::uint8_t* data = nullptr;
    std::uint32_t length = 0;
    ASSERT_EQ(K_str2bin(context, "00fFAa19", &data, &length), 0);
    EXPECT_EQ(to_hex(data, length), "00ffaa19");
    K_free(context, data);
    ASSERT_EQ(K_str2bin(context, "", &data, &length), 0);
    EXPECT_EQ(std::exchange(length, 5), 0U);
    K_free(context, data);
    for (const char* const bad : {"0g", static_cast<const char*>(nullptr)}) {  // the rest is in fuzz/toolkit.cpp
        EXPECT_EQ(K_str2bin(context, bad, &data, &length), -1);
        EXPECT_TRUE(std::exchange(length, 5) == 0 && data == nullptr);
    }
    EXPECT_EQ(K_str2bin(nullptr, "00", &data, &length), -1);
    EXPECT_EQ(K_str2bin(context, "00", nullptr, &length), -1);
    EXPECT_EQ(K_str2bin(context, "00", &data, nullptr), -1);
    EXPECT_EQ(K_EndContext(context), 0U);
}

}  // namespace
