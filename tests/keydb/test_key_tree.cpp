// Reading the key tree: positions, texts, moves, children, iteration, view
// lines and the key cache.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "keydb/key_test_support.h"
#include "ovkey/key_tree.h"
#include "siblings/key_database.h"

namespace {

using KeyTree = KeyTreeTest;

TEST_F(KeyTree, EachKeyIsFoundByItsPositionAndOnlyByIt)
{
    const std::vector<std::pair<BoardLine, int32_t>> cases = {
        {PlayLine({}), start},
        {PlayLine({"e2e4", "c7c5", "g1f3"}), nf3},
    };
    int32_t key = -7;
    for (const auto& [line, expected] : cases) {
        EXPECT_EQ(OvkFindPosition(&line.board, &key), 1);
        EXPECT_EQ(key, expected);
    }
    key = -7;
    BoardLine french = PlayLine({"e2e4", "e7e6"});
    EXPECT_EQ(OvkFindPosition(&french.board, &key), 0);
    EXPECT_EQ(key, -7) << "a miss leaves the key alone";
    EXPECT_EQ(OvkFindPosition(nullptr, &key) + OvkFindPosition(&french.board, nullptr), 0);

    // An en passant file no pawn can use, the border and the reserved bytes
    // are the driver's business.
    BoardLine line = PlayLine({"e2e4"});
    line.board.epFile = 5;
    std::memset(line.board.squares, 0xFF, 11);
    std::memset(line.board.reserved, 0xAB, sizeof line.board.reserved);
    line.board.castling |= 0x03;
    EXPECT_EQ(OvkFindPosition(&line.board, &key), 1);
    EXPECT_EQ(key, e4);

    // A usable en passant file makes another position.
    BoardLine plain = PlayLine({"e2e4", "g8f6", "e4e5", "d7d5"});
    const int32_t alekhine = ovkey::AddKey({"B02", "Alekhine", "", &plain.board, e4, plain.moves});
    ASSERT_NE(alekhine, 0);
    EXPECT_EQ(OvkFindPosition(&plain.board, &key), 1);
    EXPECT_EQ(key, alekhine);
    plain.board.epFile = 0;
    EXPECT_EQ(OvkFindPosition(&plain.board, &key), 0);
}

TEST_F(KeyTree, PositionMovesTextsAndDataOfAKey)
{
    BoardRecord board;
    ASSERT_EQ(OvkGetKeyPosition(nf3, &board), 1);
    int32_t key = 0;
    EXPECT_TRUE(OvkFindPosition(&board, &key) == 1 && key == nf3 && board.ply == 4);
    std::memset(&board, 0x5A, sizeof board);
    EXPECT_EQ(OvkGetKeyPosition(9999, &board), 0);
    const BoardRecord zero{};
    EXPECT_EQ(std::memcmp(&board, &zero, sizeof board), 0) << "a miss clears the board";
    EXPECT_EQ(DbsGetDatabaseDepth(), 4);

    EXPECT_EQ(DbsGetKeyMove(nf3, 0, OV_KEYMOVE_LAST), 6 | (21 << 8));
    EXPECT_EQ(DbsGetKeyMove(nf3, 0, 1), 12 | (28 << 8));
    EXPECT_EQ(DbsGetKeyMove(nf3, 0, 4) + DbsGetKeyMove(start, 0, OV_KEYMOVE_LAST), 0);

    char code[256] = "old", name[256], remark[256];
    EXPECT_EQ(DbsGetKeycode(sicilian, code), 1);
    EXPECT_EQ(OvkGetKeyName(sicilian, name, 0, sizeof name), 1);
    EXPECT_EQ(DbsGetRemark(sicilian, remark), 1);
    EXPECT_EQ(std::string(code) + name + remark, "B20Sicilianremark B20");
    EXPECT_EQ(DbsGetKeycode(9999, code), 0);
    EXPECT_STREQ(code, "");
    char small[5] = {'x', 'x', 'x', 'x', 'x'};
    EXPECT_EQ(OvkGetKeyName(sicilian, small, 0, sizeof small), 1);
    EXPECT_STREQ(small, "Sici");
    EXPECT_EQ(OvkGetKeyName(sicilian, small, 0, 0), 0);

    sKeyData data;
    ASSERT_EQ(DbsGetKeyDataInfo(sicilian, &data), 1);
    EXPECT_EQ((std::vector<int32_t>{data.key, data.parent, data.level, data.ply, data.childCount, data.gameCount}),
              (std::vector<int32_t>{sicilian, e4, 2, 2, 1, 0}));
    std::memset(&data, 0x11, sizeof data);
    EXPECT_EQ(DbsGetKeyDataInfo(-3, &data), 0);
    EXPECT_EQ(data.key + data.childCount, 0);
}

TEST_F(KeyTree, ChildKeysComeNegatedInCodeOrder)
{
    int32_t keys[10] = {};
    ASSERT_EQ(DbsSearchKey(e4, OVK_SEARCH_CHILDREN, OVK_SCOPE_KEY, keys, 10), 2);
    EXPECT_EQ(std::vector<int32_t>(keys, keys + 2), (std::vector<int32_t>{-sicilian, -open}));
    int32_t one[2] = {0, 77};
    EXPECT_EQ(DbsSearchKey(e4, OVK_SEARCH_CHILDREN, OVK_SCOPE_KEY, one, 1), 1);
    EXPECT_EQ(one[1], 77);
    EXPECT_EQ(DbsSearchKey(nf3, OVK_SEARCH_CHILDREN, OVK_SCOPE_KEY, keys, 10), 0);
    EXPECT_EQ(DbsSearchKey(0, OVK_SEARCH_CHILDREN, OVK_SCOPE_KEY, keys, 10), 1);
    EXPECT_EQ(keys[0], -start);
    EXPECT_EQ(DbsSearchKey(start, OVK_SEARCH_CHILDREN, OVK_SCOPE_SUBTREE, keys, 10), 6);
}

TEST_F(KeyTree, IterationInTreeCodeAndSiblingOrderBothWays)
{
    const auto walk = [](int32_t from, int32_t order, bool forward) {
        std::vector<int32_t> keys;
        for (int32_t key = from; key != 0 && keys.size() < 100;
             key = forward ? OvkGetNextKey(key, order) : OvkGetPreviousKey(key, order))
            keys.insert(forward ? keys.end() : keys.begin(), key);
        return keys;
    };
    const std::vector<int32_t> tree = {start, d4, d5, e4, sicilian, nf3, open};
    EXPECT_EQ(walk(OvkGetFirstKey(0, OV_KEYORDER_TREE), OV_KEYORDER_TREE, true), tree);
    EXPECT_EQ(walk(open, OV_KEYORDER_TREE, false), tree);
    const std::vector<int32_t> byCode = {start, d4, e4, sicilian, nf3, open, d5};
    EXPECT_EQ(walk(OvkGetFirstKey(0, OV_KEYORDER_CODE), OV_KEYORDER_CODE, true), byCode);
    EXPECT_EQ(walk(OvkGetFirstKey(start, OV_KEYORDER_SIBLING), OV_KEYORDER_SIBLING, true),
              (std::vector<int32_t>{d4, e4}));
    EXPECT_EQ(OvkGetPreviousKey(d4, OV_KEYORDER_SIBLING), 0);

    EXPECT_EQ(OvkGetFirstKey(nf3, OV_KEYORDER_TREE), 0) << "a leaf has no first child";
}

TEST_F(KeyTree, ViewLinesRelateToTheLineAboveInsideBalancedBrackets)
{
    ASSERT_EQ(OvkFileAction(1), 1);
    sKeyViewLine lines[3];
    const sKeyViewLine none{};
    ASSERT_EQ(DbsGetHorViewLine(e4, &lines[0], &none), 1);
    ASSERT_EQ(DbsGetHorViewLine(sicilian, &lines[1], &lines[0]), 1);
    ASSERT_EQ(DbsGetHorViewLine(open, &lines[2], &lines[1]), 1);
    EXPECT_EQ(OvkFileAction(0), 1);
    // relation, shared moves, children, moves and level of each line.
    const auto numbers = [](const sKeyViewLine& l) {
        return std::vector<int32_t>{l.relation, l.sharedMoves, l.childCount, l.moveCount, l.level};
    };
    EXPECT_EQ(numbers(lines[0]), (std::vector<int32_t>{OV_KEYVIEW_UNRELATED, 0, 2, 1, 1}));
    EXPECT_EQ(numbers(lines[1]), (std::vector<int32_t>{OV_KEYVIEW_CHILD, 1, 1, 2, 2}));
    EXPECT_EQ(numbers(lines[2]), (std::vector<int32_t>{OV_KEYVIEW_SIBLING, 1, 0, 2, 2}));
    EXPECT_EQ(std::string(lines[0].keycode) + lines[1].name, "B00Sicilian");
    sKeyViewLine line;
    EXPECT_EQ(DbsGetHorViewLine(9999, &line, nullptr), 0);
    // The line may be built on itself as its own previous line.
    ASSERT_EQ(DbsGetHorViewLine(e4, &line, nullptr), 1);
    ASSERT_EQ(DbsGetHorViewLine(e4, &line, &line), 1);
    EXPECT_EQ(numbers(line), (std::vector<int32_t>{OV_KEYVIEW_SAME, 1, 2, 1, 1}));

    for (const auto& [action, result] : std::vector<std::pair<int32_t, int32_t>>{
             {0, 0}, {2, 0}, {1, 1}, {1, 1}, {0, 1}, {0, 1}, {0, 0}})
        EXPECT_EQ(OvkFileAction(action), result);
}

TEST_F(KeyTree, CachedKeysReadTheSameAndAbandonedKeysAreForgotten)
{
    std::vector<unsigned char> block(4 * OVK_CACHE_ENTRY_SIZE + 1, 0);
    // An odd address: the cache must not rely on the block's alignment.
    ASSERT_EQ(DbsKeyCacheOn(block.data() + 1, 4), 1);
    char first[256], code[256];
    ASSERT_EQ(OvkGetKeyName(nf3, first, 0, sizeof first), 1);
    EXPECT_NE(std::count(block.begin(), block.end(), 0), static_cast<long>(block.size()));
    for (int32_t key : {start, e4, sicilian, nf3, open, d4, d5})  // more keys than entries
        ASSERT_EQ(DbsGetKeycode(key, code), 1);
    ASSERT_EQ(OvkGetKeyName(nf3, code, 0, sizeof code), 1);
    EXPECT_STREQ(code, first) << "read again after eviction";

    int32_t added = 0;
    {
        ovkey::KeyTreeBatch batch;
        ASSERT_TRUE(batch.Started());
        BoardLine line = PlayLine({"c2c4"});
        added = ovkey::AddKey({"A10", "English", "", &line.board, start, line.moves});
        ASSERT_EQ(DbsGetKeycode(added, code), 1);
        batch.Abandon();
    }
    EXPECT_EQ(DbsGetKeycode(added, code), 0);
    EXPECT_EQ(DbsKeyCacheOff(), 1);
    std::fill(block.begin(), block.end(), 0xEE);
    ASSERT_EQ(OvkGetKeyName(nf3, first, 0, sizeof first), 1);
    EXPECT_STREQ(first, "Sicilian: 2.Nf3") << "the block is let go";
    EXPECT_EQ(DbsKeyCacheOn(nullptr, 32) + DbsKeyCacheOn(block.data(), 0), 0);
}

}  // namespace
