#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#include "orvan.h"

namespace {

TEST(GlobalMemory, FixedBlockHandleIsItsMemory)
{
    HGLOBAL block = GlobalAlloc(GPTR, 100);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalLock(block), block);
    EXPECT_EQ(GlobalSize(block), 100u);
    const auto* bytes = static_cast<const unsigned char*>(block);
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(bytes[i], 0) << "GMEM_ZEROINIT leaves byte " << i;
    EXPECT_EQ(GlobalUnlock(block), 0) << "a fixed block keeps no lock count";
    EXPECT_EQ(GlobalFree(block), nullptr);
}

TEST(GlobalMemory, MovableBlockCountsLocksAndKeepsContentWhenGrown)
{
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 16);
    ASSERT_NE(block, nullptr);
    auto* text = static_cast<char*>(GlobalLock(block));
    ASSERT_NE(text, nullptr);
    EXPECT_NE(static_cast<void*>(text), block);
    std::memcpy(text, "1. e4 e5 2. Nf3", 16);
    EXPECT_NE(GlobalLock(block), nullptr);
    EXPECT_EQ(GlobalUnlock(block), 1);
    EXPECT_EQ(GlobalUnlock(block), 0);
    EXPECT_EQ(GlobalUnlock(block), 0) << "unlocking an unlocked block stays at 0";

    HGLOBAL grown = GlobalReAlloc(block, 1 << 20, GMEM_MOVEABLE | GMEM_ZEROINIT);
    ASSERT_EQ(grown, block) << "a movable block keeps its handle";
    text = static_cast<char*>(GlobalLock(grown));
    EXPECT_STREQ(text, "1. e4 e5 2. Nf3");
    EXPECT_EQ(text[(1 << 20) - 1], 0) << "growth is zero-filled";
    EXPECT_EQ(GlobalSize(grown), size_t{1} << 20);
    GlobalUnlock(grown);
    EXPECT_EQ(GlobalFree(grown), nullptr);
}

TEST(GlobalMemory, FixedBlockMayMoveOnResize)
{
    HGLOBAL block = GlobalAlloc(GMEM_FIXED, 8);
    std::memcpy(block, "abcdefg", 8);
    HGLOBAL grown = GlobalReAlloc(block, 4 << 20, 0);
    ASSERT_NE(grown, nullptr);
    EXPECT_STREQ(static_cast<const char*>(grown), "abcdefg");
    if (grown != block) {
        EXPECT_EQ(GlobalSize(block), 0u) << "the old handle is gone after a move";
    }
    EXPECT_EQ(GlobalFree(grown), nullptr);
}

TEST(GlobalMemory, ZeroSizedBlocksAreValid)
{
    HGLOBAL block = GlobalAlloc(GHND, 0);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalSize(block), 0u);
    EXPECT_NE(GlobalLock(block), nullptr);
    EXPECT_EQ(GlobalFree(block), nullptr);
}

TEST(GlobalMemory, UnknownAndFreedHandlesAreRefused)
{
    int notABlock = 0;
    HGLOBAL stranger = &notABlock;
    EXPECT_EQ(GlobalLock(stranger), nullptr);
    EXPECT_EQ(GlobalSize(stranger), 0u);
    EXPECT_EQ(GlobalUnlock(stranger), 0);
    EXPECT_EQ(GlobalReAlloc(stranger, 10, 0), nullptr);
    EXPECT_EQ(GlobalFree(stranger), stranger);

    HGLOBAL block = GlobalAlloc(GHND, 10);
    ASSERT_EQ(GlobalFree(block), nullptr);
    EXPECT_EQ(GlobalFree(block), block) << "a second free is refused";
    EXPECT_EQ(GlobalLock(block), nullptr);

    EXPECT_EQ(GlobalLock(nullptr), nullptr);
    EXPECT_EQ(GlobalFree(nullptr), nullptr);
    EXPECT_EQ(GlobalSize(nullptr), 0u);
}

TEST(GlobalMemory, FailedAllocationAndResizeLeaveOldBlock)
{
    EXPECT_EQ(GlobalAlloc(GMEM_MOVEABLE, SIZE_MAX / 2), nullptr);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 4);
    std::memcpy(GlobalLock(block), "abc", 4);
    GlobalUnlock(block);
    EXPECT_EQ(GlobalReAlloc(block, SIZE_MAX / 2, 0), nullptr);
    EXPECT_STREQ(static_cast<const char*>(GlobalLock(block)), "abc");
    GlobalUnlock(block);
    EXPECT_EQ(GlobalFree(block), nullptr);
}

TEST(GlobalMemory, ThreadsAllocateAndFreeIndependently)
{
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([] {
            for (int i = 0; i < 2000; ++i) {
                HGLOBAL block = GlobalAlloc(GHND, 64);
                ASSERT_NE(GlobalLock(block), nullptr);
                GlobalUnlock(block);
                ASSERT_EQ(GlobalFree(block), nullptr);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace
