#include <gtest/gtest.h>

#include <cstring>

#include "orvan.h"

namespace {

TEST(GlobalMemory, FixedBlockIsItsMemoryAndMayMoveOnResize)
{
    HGLOBAL block = GlobalAlloc(GPTR, 100);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalLock(block), block);
    EXPECT_EQ(GlobalSize(block), 100u);
    EXPECT_EQ(static_cast<const char*>(block)[99], 0) << "GMEM_ZEROINIT";
    EXPECT_EQ(GlobalUnlock(block), 0) << "a fixed block keeps no lock count";
    std::memcpy(block, "abcdefg", 8);
    HGLOBAL grown = GlobalReAlloc(block, 4 << 20, 0);
    ASSERT_NE(grown, nullptr);
    EXPECT_STREQ(static_cast<const char*>(grown), "abcdefg");
    if (grown != block) {
        EXPECT_EQ(GlobalSize(block), 0u) << "the old handle is gone after a move";
    }
    EXPECT_EQ(GlobalFree(grown), nullptr);
}

TEST(GlobalMemory, MovableBlockCountsLocksAndKeepsContentWhenGrown)
{
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 16);
    auto* text = static_cast<char*>(GlobalLock(block));
    ASSERT_NE(text, nullptr);
    EXPECT_NE(static_cast<void*>(text), block);
    std::memcpy(text, "1. e4 e5 2. Nf3", 16);
    GlobalLock(block);
    EXPECT_EQ(GlobalUnlock(block), 1);
    EXPECT_EQ(GlobalUnlock(block), 0);
    EXPECT_EQ(GlobalUnlock(block), 0) << "unlocking an unlocked block stays at 0";

    ASSERT_EQ(GlobalReAlloc(block, 1 << 20, GMEM_MOVEABLE | GMEM_ZEROINIT), block);
    text = static_cast<char*>(GlobalLock(block));
    EXPECT_STREQ(text, "1. e4 e5 2. Nf3");
    EXPECT_EQ(text[(1 << 20) - 1], 0) << "growth is zero-filled";
    GlobalUnlock(block);

    // A failed resize leaves the block as it was.
    EXPECT_EQ(GlobalAlloc(GMEM_MOVEABLE, SIZE_MAX / 2), nullptr);
    EXPECT_EQ(GlobalReAlloc(block, SIZE_MAX / 2, 0), nullptr);
    EXPECT_STREQ(static_cast<const char*>(GlobalLock(block)), "1. e4 e5 2. Nf3");
    GlobalUnlock(block);
    EXPECT_EQ(GlobalFree(block), nullptr);
}

}  // namespace
