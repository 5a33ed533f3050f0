// Opening, closing, reopening, optimising and removing the key database's
// files, and every call without an open database.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "keydb/key_test_support.h"
#include "ovkey/key_tree.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

namespace {

TEST(KeyDatabaseOpen, BadArgumentsAndPathsAreRefused)
{
    TempDir scratch;
    const std::string missing = scratch.Path() + "/missing.ovg";
    const std::string noDirectory = scratch.Path() + "/no/such/dir/games.ovg";
    // Path, mode, reserved word and the answer.
    for (const auto& [path, mode, reserved, expected] :
         {std::tuple<const char*, int32_t, int32_t, int32_t>{nullptr, 0, 0, OVK_OPEN_BAD_ARGUMENT},
          {missing.c_str(), 2, 0, OVK_OPEN_BAD_ARGUMENT}, {missing.c_str(), 1, 5, OVK_OPEN_BAD_ARGUMENT},
          {"/tmp/", 1, 0, OVK_OPEN_BAD_ARGUMENT}, {missing.c_str(), 0, 0, OVK_OPEN_MISSING},
          {noDirectory.c_str(), 1, 0, OVK_OPEN_FAILED}}) {
        EXPECT_EQ(IDOpenBase(path, mode, reserved), expected) << (path ? path : "null") << " " << mode;
        EXPECT_EQ(IDCloseBase(0), 0);
    }
    EXPECT_FALSE(FileExists(missing));
}

TEST(KeyDatabaseOpen, MissingOrGarbageKeyFilesAreRefused)
{
    TempDir scratch;
    const std::string path = scratch.Path() + "/games.ovg";
    const std::string tree = scratch.Path() + "/OvIndex/games.ovg.okt";
    ASSERT_EQ(IDOpenBase(path.c_str(), OV_KEYDB_CREATE, 0), OVK_OPEN_OK);
    ASSERT_EQ(IDCloseBase(0), 1);
    ASSERT_EQ(OvkDeleteDatabaseFiles(path.c_str(), (scratch.Path() + "/OvIndex/").c_str(), OV_KEYFILES_LISTS), 1);
    EXPECT_EQ(IDOpenBase(path.c_str(), OV_KEYDB_OPEN_EXISTING, 0), OVK_OPEN_MISSING);
    ASSERT_EQ(IDOpenBase(path.c_str(), OV_KEYDB_CREATE, 0), OVK_OPEN_OK);
    ASSERT_EQ(IDCloseBase(0), 1);
    for (const std::string& garbage : {std::string(5000, '\xF3'), std::string()}) {
        WriteFile(tree, garbage);
        EXPECT_EQ(IDOpenBase(path.c_str(), OV_KEYDB_OPEN_EXISTING, 0), OVK_OPEN_FAILED) << garbage.size();
        EXPECT_EQ(IDCloseBase(0), 0);
    }
}

TEST(KeyDatabaseOpen, EveryCallFailsWithoutAnOpenDatabase)
{
    BoardLine line = PlayLine({});
    BoardRecord board{};
    int32_t key = 0, array[4] = {};
    char text[256];
    sKeyData data;
    sKeyViewLine view;
    std::vector<unsigned char> block(OVK_CACHE_ENTRY_SIZE);
    const std::vector<std::pair<const char*, std::function<int32_t()>>> calls = {
        {"IDCloseBase", [] { return IDCloseBase(0); }},
        {"DbsKeyCacheOn", [&] { return DbsKeyCacheOn(block.data(), 1); }},
        {"OvkOptimizeDatabase", [] { return OvkOptimizeDatabase(0, 0, 1, 0, 0); }},
        {"IDIsDatabaseGamefile", [] { return IDIsDatabaseGamefile(1); }},
        {"DbsFileStatus", [] { return DbsFileStatus(0); }},
        {"DbsAdjustDeletedGames", [] { return DbsAdjustDeletedGames(1); }},
        {"OvkSaveToDatabase", [] { return OvkSaveToDatabase(1, 1, 0, 0, 1); }},
        {"DbsGetDatabaseDepth", [] { return DbsGetDatabaseDepth(); }},
        {"OvkFindPosition", [&] { return OvkFindPosition(&line.board, &key); }},
        {"OvkGetKeyPosition", [&] { return OvkGetKeyPosition(1, &board); }},
        {"DbsGetKeyMove", [] { return DbsGetKeyMove(1, 0, 0); }},
        {"OvkGetFirstKey", [] { return OvkGetFirstKey(0, 0); }},
        {"OvkGetNextKey", [] { return OvkGetNextKey(1, 0); }},
        {"OvkGetPreviousKey", [] { return OvkGetPreviousKey(1, 0); }},
        {"DbsGetKeycode", [&] { return DbsGetKeycode(1, text); }},
        {"DbsGetRemark", [&] { return DbsGetRemark(1, text); }},
        {"OvkGetKeyName", [&] { return OvkGetKeyName(1, text, 0, 256); }},
        {"DbsGetKeyDataInfo", [&] { return DbsGetKeyDataInfo(1, &data); }},
        {"OvkFileAction", [] { return OvkFileAction(1); }},
        {"DbsGetHorViewLine", [&] { return DbsGetHorViewLine(1, &view, nullptr); }},
        {"AddKey", [&] { return ovkey::AddKey({"A00", "", "", &line.board, 0, {}}); }},
    };
    for (const auto& [name, call] : calls)
        EXPECT_EQ(call(), 0) << name;
    EXPECT_EQ(DbsSearchKey(0, OVK_SEARCH_CHILDREN, OVK_SCOPE_KEY, array, 4), -1);
    EXPECT_EQ(DbsCBSearchKey(1, OVK_SEARCH_GAMES, OVK_SCOPE_KEY, [](int32_t) { return 1; }), -1);
    EXPECT_EQ(DbsKeyCacheOff(), 1);
    ovkey::KeyTreeBatch batch;
    EXPECT_FALSE(batch.Started());
}

using KeyDatabaseFiles = KeyTreeTest;

TEST_F(KeyDatabaseFiles, StatusAndKeysSurviveReopening)
{
    ASSERT_EQ(OvkFileAction(1), 1);
    EXPECT_EQ(DbsFileStatus(0), OvgFileOpen | OvgFileInBulk);
    ASSERT_EQ(OvkFileAction(0), 1);
    ASSERT_EQ(DbsAdjustDeletedGames(3), 1);
    ASSERT_EQ(DbsAdjustDeletedGames(-1), 1);
    // Of two keys with the same position the lowest is found, before and after reopening.
    BoardLine line = PlayLine({"d2d4", "d7d5"});
    const int32_t again = ovkey::AddKey({"D01", "Closed game again", "", &line.board, d4, line.moves});
    ASSERT_GT(again, d5);
    EXPECT_EQ(IDOpenBase(gameFile.c_str(), OV_KEYDB_OPEN_EXISTING, 0), OVK_OPEN_BUSY);
    ASSERT_EQ(IDCloseBase(0), 1);
    ASSERT_EQ(IDOpenBase(gameFile.c_str(), OV_KEYDB_OPEN_EXISTING, 0), OVK_OPEN_OK);

    EXPECT_EQ(DbsGetDatabaseDepth(), 4);
    int32_t key = 0;
    EXPECT_TRUE(OvkFindPosition(&line.board, &key) == 1 && key == d5);
    EXPECT_EQ(OvkGetNextKey(d5, OV_KEYORDER_TREE), again);
    EXPECT_EQ(DbsFileStatus(0), OvgFileOpen | OvgFileHasDeleted);
    ASSERT_EQ(DbsAdjustDeletedGames(-5), 1);
    EXPECT_EQ(DbsFileStatus(0), OvgFileOpen) << "no deleted game left";
}

TEST_F(KeyDatabaseFiles, OptimisingKeepsEverything)
{
    EXPECT_EQ(OvkOptimizeDatabase(0, 0, 1, OV_KEYDB_OPTIMIZE_QUICK, 0), 1);
    EXPECT_EQ(OvkOptimizeDatabase(0, 0, 1, OV_KEYDB_OPTIMIZE_FULL, 0), 1);
    EXPECT_EQ(OvkOptimizeDatabase(0, 0, 1, 2, 0) + OvkOptimizeDatabase(1, 0, 1, 0, 0) +
                  OvkOptimizeDatabase(0, 0, 0, 0, 0) + OvkOptimizeDatabase(0, 0, 1, 0, 9),
              0) << "bad level, handles, target or reserved word";
    ASSERT_EQ(OvkFileAction(1), 1);
    EXPECT_EQ(OvkOptimizeDatabase(0, 0, 1, OV_KEYDB_OPTIMIZE_FULL, 0), 0);
    ASSERT_EQ(OvkFileAction(0), 1);
    char code[256];
    EXPECT_TRUE(DbsGetKeycode(d5, code) == 1 && std::string(code) == "D00");
}

TEST_F(KeyDatabaseFiles, DeletingRemovesOnlyTheKindsAskedFor)
{
    const std::string index = scratch.Path() + "/OvIndex";
    const std::string tree = index + "/games.ovg.okt";
    const std::string lists = index + "/games.ovg.okl";
    const std::string sortIndex = index + "/games.ovg.s01";
    const std::string otherGameFile = index + "/games.ovg.x.okt";
    WriteFile(sortIndex, "index");
    WriteFile(otherGameFile, "another game file's key tree");

    // The open database's files stay.
    EXPECT_EQ(OvkDeleteDatabaseFiles(gameFile.c_str(), index.c_str(), OV_KEYFILES_ALL), 0);
    EXPECT_TRUE(FileExists(tree));
    ASSERT_EQ(IDCloseBase(0), 1);

    EXPECT_EQ(OvkDeleteDatabaseFiles(gameFile.c_str(), index.c_str(), OV_KEYFILES_INDEX), 1);
    EXPECT_TRUE(!FileExists(sortIndex) && FileExists(tree) && FileExists(lists));
    EXPECT_EQ(OvkDeleteDatabaseFiles(gameFile.c_str(), (index + "/").c_str(), OV_KEYFILES_TREE), 1);
    EXPECT_TRUE(!FileExists(tree) && FileExists(lists));
    EXPECT_EQ(OvkDeleteDatabaseFiles(gameFile.c_str(), index.c_str(), OV_KEYFILES_ALL), 1);
    EXPECT_TRUE(!FileExists(lists) && FileExists(otherGameFile) && FileExists(gameFile));
    // Nothing left to remove is success; bad arguments are not.
    EXPECT_EQ(OvkDeleteDatabaseFiles(gameFile.c_str(), index.c_str(), OV_KEYFILES_ALL), 1);
    EXPECT_EQ(OvkDeleteDatabaseFiles("games.ovg", "games.ovg", OV_KEYFILES_ALL), 1);
    for (int32_t kinds : {0, 8, -1})
        EXPECT_EQ(OvkDeleteDatabaseFiles(gameFile.c_str(), index.c_str(), kinds), 0) << kinds;
    EXPECT_EQ(OvkDeleteDatabaseFiles(nullptr, index.c_str(), OV_KEYFILES_ALL), 0);
}

}  // namespace
