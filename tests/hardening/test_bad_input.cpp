// Every export meets null pointers, handles that are not open, sizes of 0 and
// below, texts without terminators, unwritable paths and a full disk, and
// answers with its failure result or its documented behaviour.
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "hardening/generated_games.h"
#include "orvan.h"
#include "support/capture.h"

namespace {

class BadInput : public ::testing::Test {
protected:
    BadInput() : scratch_("orvan-bad-input")
    {
        WriteGeneratedGames(scratch_.File("three.pgn"), 1, 3);
        file_ = OvCreateGamefile(scratch_.File("games.ovg").c_str());
        OvPgnImport(scratch_.File("three.pgn").c_str(), file_, 0, nullptr, nullptr, 0);
        game_ = OvAllocGameBuffer();
        OvReadGame(game_, file_, 1);
    }
    ~BadInput() override { OvFreeGameBuffer(game_), OvCloseGamefile(file_); }

    ScratchDirectory scratch_;
    BoxCapture boxes_;
    OvGameFile file_ = 0;
    OvGameBuffer game_ = 0;
};

constexpr int32_t ImportNoMemory = 2;

int32_t CountCalls(uint32_t, int32_t, int32_t, intptr_t user) { return ++*reinterpret_cast<int32_t*>(user), 1; }
int32_t CountProgress(uint32_t, intptr_t user) { return ++*reinterpret_cast<int32_t*>(user), 1; }
int32_t NameGameOne(intptr_t user) { return (*reinterpret_cast<int32_t*>(user))-- > 0 ? 1 : 0; }
intptr_t Address(int32_t& value) { return reinterpret_cast<intptr_t>(&value); }
sQuery HeaderQuery() { sQuery query{}; query.kind = QueryHeader; return query; }

TEST_F(BadInput, NullPointersGetTheFailureResult)
{
    EXPECT_EQ(OvGetVersion(nullptr, nullptr), 1);
    EXPECT_EQ(OvIsLegalPos(nullptr), OV_POS_KING_MISSING);
    EXPECT_EQ(OvPlayMove(nullptr, 0x1c0c), 0);
    EXPECT_EQ(OvGetMoveInfo(nullptr, 0x1c0c), 0);
    EXPECT_EQ(OvMoveToText(0x1c0c, OV_MOVE_PAWN, nullptr, 0, nullptr), 0);
    EXPECT_EQ(OvCreateGamefile(nullptr), 0u);
    EXPECT_EQ(OvOpenGamefile(nullptr), 0u);
    EXPECT_EQ(OvGetCurrentPos(game_, nullptr), 0);
    EXPECT_EQ(OvGetInitialPos(game_, nullptr), 1);
    EXPECT_EQ(OvGetMoves(game_, nullptr, 10), 0);
    EXPECT_EQ(OvPgnImport(nullptr, file_, 0, nullptr, nullptr, 0), 1);
    EXPECT_EQ(OvMemReadPgnGame(game_, nullptr, 0, nullptr), 1);
    EXPECT_EQ(OvConvertGameToPgn(game_, nullptr), 1);
    int32_t names = 1;
    EXPECT_EQ(OvExportGames(nullptr, file_, NameGameOne, 0, Address(names)), 0);
    EXPECT_EQ(OvExportGames(scratch_.File("x.pgn").c_str(), file_, nullptr, 0, 0), 0);
    EXPECT_EQ(names, 1) << "the export must not start";
    EXPECT_EQ(OvGetHeaderInfo(game_, HdrWhite, nullptr, 10), 0);
    EXPECT_EQ(OvGetHeaderInfoInt(game_, HdrDate, nullptr), 1);
    EXPECT_EQ(OvIsEmptyQuery(nullptr), 1);
    int32_t calls = 0;
    EXPECT_EQ(OvSearchGameHdrs(file_, nullptr, CountCalls, Address(calls)), 0);
    sQuery query = HeaderQuery();
    EXPECT_EQ(OvSearchGameHdrs(file_, &query, nullptr, 0), 0);
    EXPECT_EQ(OvSearchPosGames(file_, nullptr, 0, CountCalls, Address(calls)), 0);
    EXPECT_EQ(OvSearchKeyMoves(file_, 1, nullptr, CountCalls, Address(calls)), 0);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(OvOpenDatabase(nullptr, OV_KEYDB_CREATE), 0);
    EXPECT_EQ(OvGetKeyPosition(1, nullptr), 0);
    EXPECT_EQ(OvGetKeyInfo(1, nullptr), 0);
    EXPECT_EQ(OvGetKeyView(0, nullptr, nullptr, 0, 3), 0);
    EXPECT_EQ(OvClassifyMoves(game_, nullptr, 5), 0);
    EXPECT_EQ(OvIndexCreateUpdate(file_, nullptr, 0, 0, 0, 0, 0), 0);
    EXPECT_EQ(OvIndexDelete(file_, HdrStatus, nullptr), -1);
    EXPECT_EQ(GlobalLock(nullptr), nullptr);
    EXPECT_EQ(GlobalSize(nullptr), 0u);

    // A PgnGame with any of its pointers missing.
    std::vector<PackedMove> moves(PGN_MAX_MOVES);
    std::vector<uint16_t> nags(PGN_MAX_MOVES + 1);
    std::vector<uint32_t> commentIndex(PGN_MAX_MOVES + 1);
    std::vector<char> commentText(PGN_COMMENT_STORE);
    sPosition position{};
    for (int missing = 0; missing < 5; ++missing) {
        PgnGame pgn{};
        pgn.position = missing == 0 ? nullptr : &position;
        pgn.moves = missing == 1 ? nullptr : moves.data();
        pgn.nags = missing == 2 ? nullptr : nags.data();
        pgn.commentIndex = missing == 3 ? nullptr : commentIndex.data();
        pgn.commentText = missing == 4 ? nullptr : commentText.data();
        EXPECT_EQ(OvConvertGameToPgn(game_, &pgn), 1) << "pointer " << missing << " missing";
    }
}

TEST_F(BadInput, HandlesThatAreNotOpenGetTheFailureResult)
{
    // Never issued, closed, freed, and each kind passed where the other belongs.
    const OvGameFile closed = OvOpenGamefile(scratch_.File("games.ovg").c_str());
    OvCloseGamefile(closed);
    const OvGameBuffer freed = OvAllocGameBuffer();
    OvFreeGameBuffer(freed);
    std::vector<OvGameBuffer> badGames{0, freed, 0x7fffffffu, 0xffffffffu};
    if (game_ != file_)
        badGames.push_back(file_);
    for (const OvGameFile file : {OvGameFile{0}, closed, 0x7fffffffu, 0xffffffffu, game_}) {
        SCOPED_TRACE("game file handle " + std::to_string(file));
        EXPECT_EQ(OvGetGamesCount(file), -1);
        EXPECT_EQ(OvFileStatus(file, 0), 0);
        EXPECT_EQ(OvStartBulkOperation(file, OV_BULK_WRITE), 1);
        EXPECT_EQ(OvEndBulkOperation(file), 1);
        EXPECT_EQ(OvReadGame(game_, file, 1), 0);
        EXPECT_EQ(OvReadGameHeader(game_, file, 1), 0);
        EXPECT_EQ(OvWriteGame(game_, file, nullptr), 0);
        EXPECT_EQ(OvDeleteGame(file, 1), 0);
        EXPECT_EQ(OvUndeleteGame(file, 1), 0);
        int32_t progressCalls = 0, names = 3, calls = 0;
        OvPgnImport(scratch_.File("three.pgn").c_str(), file, 0, nullptr, CountProgress, Address(progressCalls));
        EXPECT_EQ(progressCalls, 0) << "no game can be stored";
        // The export writes what a failed load leaves: an empty game each time.
        EXPECT_EQ(OvExportGames(scratch_.File("out.pgn").c_str(), file, NameGameOne, 0, Address(names)), 3);
        sQuery query = HeaderQuery();
        EXPECT_EQ(OvSearchGameHdrs(file, &query, CountCalls, Address(calls)), 0);
        EXPECT_EQ(calls, 2) << "start and end call only";
        EXPECT_EQ(OvIndexCreateUpdate(file, scratch_.File("idx").c_str(), 0, 0, 0, 0, 0), 0);
        const int32_t sorted = OvIndexSort(file, Address(calls), 1, 0, 1, HdrWhite, 1);
        EXPECT_TRUE(sorted == OV_SORT_NO_GAMES || sorted == OV_SORT_FAILED) << sorted;
        EXPECT_EQ(OvCloseGamefile(file), 1);
    }

    for (const OvGameBuffer game : badGames) {
        SCOPED_TRACE("game buffer handle " + std::to_string(game));
        sPosition position;
        std::memset(&position, 0x5a, sizeof position);
        EXPECT_EQ(OvGetInitialPos(game, &position), 0);
        EXPECT_EQ(position.board[0], 0x5a) << "left as it was";
        EXPECT_EQ(OvGetCurrentPos(game, &position), 0);
        PackedMove moves[8];
        EXPECT_EQ(OvGetMoves(game, moves, 8), 0);
        EXPECT_EQ(OvGetNextMove(game), 0);
        EXPECT_EQ(OvPlayMoves(game, 5), 0);
        EXPECT_EQ(OvGotoMove(game, 5), 0);
        EXPECT_EQ(OvReadGame(game, file_, 1), 0);
        EXPECT_EQ(OvWriteGame(game, file_, nullptr), 0);
        char text[16] = "unchanged";
        EXPECT_EQ(OvGetHeaderInfo(game, HdrWhite, text, sizeof text), 0);
        EXPECT_STREQ(text, "");
        EXPECT_EQ(OvPutHeaderInfo(game, HdrWhite, "x"), 0);
        // Only the null handle is turned away before the read; for the others
        // the store refuses every call of the builder.
        HGLOBAL block = std::strcpy(static_cast<char*>(GlobalAlloc(GPTR, 16)), "1. e4 e5 *");
        EXPECT_NE(OvMemReadPgnGame(game, block, 0, nullptr), ImportNoMemory);
        GlobalFree(block);
        EXPECT_EQ(OvCreatePgnGame(game, 0), nullptr);
        EXPECT_EQ(OvClassifyPosition(game), 0);
        EXPECT_EQ(OvClassifyGame(game, 10, nullptr), 0);
        EXPECT_EQ(OvFreeGameBuffer(game), 1);
    }
    EXPECT_EQ(OvGetGamesCount(file_), 3) << "nothing was written, the open file untouched";

    // Blocks that were never issued or are freed already.
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 32);
    ASSERT_EQ(GlobalFree(block), nullptr);
    int32_t bogusWord = 0;
    for (HGLOBAL bogus : {block, static_cast<HGLOBAL>(&bogusWord)}) {
        EXPECT_EQ(GlobalLock(bogus), nullptr);
        EXPECT_EQ(GlobalSize(bogus), 0u);
        EXPECT_EQ(GlobalUnlock(bogus), 0);
        EXPECT_EQ(GlobalReAlloc(bogus, 64, 0), nullptr);
        EXPECT_EQ(GlobalFree(bogus), bogus);
        EXPECT_EQ(OvMemReadPgnGame(game_, bogus, 0, nullptr), 1);
    }
}

TEST_F(BadInput, SizesOfZeroAndBelowWriteNothing)
{
    char text[8];
    for (const int32_t size : {0, -1, INT32_MIN}) {
        std::memset(text, '#', sizeof text);
        OvGetHeaderInfo(game_, HdrWhite, text, size);
        EXPECT_EQ(text[0], '#') << "size " << size;
        PackedMove moves[2] = {0x7777, 0x7777};
        EXPECT_EQ(OvGetMoves(game_, moves, size), 0);
        EXPECT_EQ(moves[0], 0x7777);
        int32_t keys[2] = {-7, -7};
        EXPECT_EQ(OvClassifyMoves(game_, keys, size), 0);
        OvGetChildKeys(1, keys, size);
        OvGetKeyGames(1, keys, size);
        EXPECT_EQ(keys[0], -7);
        EXPECT_EQ(OvGetKeyView(0, keys, nullptr, 0, size), 1);
        int32_t numbers[2] = {-7, -7};
        const int32_t sorted = OvIndexSort(file_, reinterpret_cast<intptr_t>(numbers), 1, 0, size, HdrWhite, 1);
        EXPECT_NE(sorted, OV_SORT_UNKNOWN_KIND);
        EXPECT_EQ(numbers[0], -7) << "size " << size;
    }
    OvGetHeaderInfo(game_, HdrWhite, text, 1);
    EXPECT_STREQ(text, "");
    // A read-only walk with plies below 0 and far beyond the end stays inside the game.
    EXPECT_GE(OvGotoMove(game_, INT32_MAX), 14);
    EXPECT_GE(OvPlayMoves(game_, INT32_MIN), 14);
    EXPECT_EQ(OvPlayMoves(game_, -1), 0);
    for (const int32_t number : {0, -1, 4, INT32_MAX, INT32_MIN}) {
        EXPECT_EQ(OvReadGame(game_, file_, number), 0) << "game " << number;
        EXPECT_EQ(OvDeleteGame(file_, number), 0) << "game " << number;
    }
    int32_t number = 0;
    EXPECT_EQ(OvIndexSort(file_, Address(number), 1, 0, 1, 0, 1), OV_SORT_UNKNOWN_KIND);
    EXPECT_EQ(OvIndexSort(file_, Address(number), 1, 0, 1, HdrWhiteTime, 1), OV_SORT_NOT_SORTABLE);
}

TEST_F(BadInput, TextsWithoutTerminatorsAreReadWithinTheirBounds)
{
    // Memory blocks full of a game with no NUL: the last byte is not read, so
    // a move that ends on it is half read and dropped.
    const std::string game = "[White \"A\"]\n\n1. e4 e5 2. Nf3 Nc6 3. Bb5 a6";
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, game.size());
    std::memcpy(GlobalLock(block), game.data(), game.size());
    GlobalUnlock(block);
    ASSERT_EQ(OvMemReadPgnGame(game_, block, 0, nullptr), 0);
    OvGotoMove(game_, 0);
    EXPECT_EQ(OvGotoMove(game_, 100), 5);
    GlobalFree(block);
    HGLOBAL empty = GlobalAlloc(GMEM_MOVEABLE, 0);
    EXPECT_EQ(OvMemReadPgnGame(game_, empty, 0, nullptr), 0);
    EXPECT_EQ(OvGetNextMove(game_), 0) << "an empty game";
    GlobalFree(empty);

    // Query values filling all 64 bytes with no terminator, then kinds that do not exist.
    sQuery query = HeaderQuery();
    int32_t calls = 0;
    for (int32_t field = QfPlayer; field <= QfBlackTitle; ++field) {
        auto& condition = query.conditions[(field - 1) % OV_QUERY_ROWS][(field - 1) / 8];
        condition.field = field;
        condition.op = 1 + field % 6;
        std::memset(condition.value, field % 2 ? '1' : 'a', OV_QUERY_VALUE_SIZE);
        EXPECT_EQ(OvSearchGameHdrs(file_, &query, CountCalls, Address(calls)), 0);
        OvIsEmptyQuery(&query);
    }
    EXPECT_GE(calls, 2 * QfBlackTitle);
    for (const uint32_t kind : {0u, 5u, 0xffffffffu}) {
        query.kind = kind;
        EXPECT_EQ(OvSearchGameHdrs(file_, &query, CountCalls, Address(calls)), 0);
        EXPECT_EQ(OvIsEmptyQuery(&query), 1) << "kind " << kind;
    }

    // A header text far beyond the field's 255 characters.
    const std::string longName(5000, 'L');
    ASSERT_EQ(OvPutHeaderInfo(game_, HdrWhite, longName.c_str()), 1);
    char text[1024];
    ASSERT_EQ(OvGetHeaderInfo(game_, HdrWhite, text, sizeof text), 1);
    EXPECT_EQ(std::strlen(text), 255u);
    // Notation tables without terminators: see the move text tests.
}

TEST_F(BadInput, UnwritableAndUnusablePathsFail)
{
    const std::string longPath = "/tmp/" + std::string(300, 'p') + ".ovg";
    const std::string directory = scratch_.Path().string();
    for (const std::string& path : {std::string("/proc/orvan/none.ovg"), directory, longPath, std::string("")}) {
        SCOPED_TRACE(path.substr(0, 40));
        EXPECT_EQ(OvCreateGamefile(path.c_str()), 0u);
        EXPECT_EQ(OvOpenGamefile(path.c_str()), 0u);
        EXPECT_EQ(OvOpenDatabase(path.c_str(), OV_KEYDB_OPEN_EXISTING), 0);
        int32_t names = 1;
        EXPECT_EQ(OvExportGames(path.c_str(), file_, NameGameOne, 0, Address(names)), 0);
        EXPECT_EQ(names, 1) << "the export must not start";
    }
    EXPECT_EQ(OvPgnImport("/nonexistent/x.pgn", file_, 0, nullptr, nullptr, 0), 1);
    EXPECT_NE(OvPgnImport(directory.c_str(), file_, 0, nullptr, nullptr, 0), 2);
    std::ofstream(scratch_.File("text.ovg")) << "this is no game file\n";
    EXPECT_EQ(OvOpenGamefile(scratch_.File("text.ovg").c_str()), 0u);
    EXPECT_EQ(OvGetGamesCount(file_), 3) << "nothing was stored";
    EXPECT_EQ(OvIndexCreateUpdate(file_, "/proc/orvan/index", 0, 0, 0, 0, 0), 0);
}

TEST_F(BadInput, FullDiskEndsTheImportWithWholeGamesStored)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "fork of a child is not supported under ThreadSanitizer";
#endif
    WriteGeneratedGames(scratch_.File("many.pgn"), 1, 3000);
    const std::string path = scratch_.File("full.ovg");
    OvCloseGamefile(OvCreateGamefile(path.c_str()));
    // A child whose files cannot grow beyond 96 KiB: writes past it fail with
    // EFBIG as on a full disk.
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit cap{96 * 1024, 96 * 1024};
        setrlimit(RLIMIT_FSIZE, &cap);
        const OvGameFile file = OvOpenGamefile(path.c_str());
        const int32_t imported = OvPgnImport(scratch_.File("many.pgn").c_str(), file, 0, nullptr, nullptr, 0);
        int32_t names = 3000;
        OvExportGames(scratch_.File("full.pgn").c_str(), file, NameGameOne, 0, Address(names));
        OvIndexCreateUpdate(file, scratch_.File("index").c_str(), 0, 0, 0, 0, 0);
        OvCloseGamefile(file);
        _exit(imported == 0 ? 0 : 10 + imported);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status)) << "child ended by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);

    const OvGameFile file = OvOpenGamefile(path.c_str());
    ASSERT_NE(file, 0u);
    const int32_t count = OvGetGamesCount(file);
    EXPECT_GT(count, 0);
    EXPECT_LT(count, 3000) << "the limit was not reached; raise the game count";
    EXPECT_EQ(CompareWithGenerated(file, count), "");
    OvCloseGamefile(file);
}

}  // namespace
