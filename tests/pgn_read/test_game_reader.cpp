// The game loop and the finish step: where games begin and end, tags,
// results, start positions, and what reaches the callback.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "chess/position.h"
#include "pgn/pgn_game.h"
#include "pgn/read/fen_reader.h"
#include "pgn/read/game_reader.h"
#include "pgn/read/pgn_read.h"
#include "pgn_read/read_helpers.h"
#include "support/capture.h"

namespace {

TEST(PgnGameReader, ReadsResultTokensAndTags)
{
    const std::pair<const char*, int32_t> tokens[] = {
        {"*", 0},  {"1-0", 1}, {"1:0", 1}, {"0-1", 2}, {"0:1", 2}, {"1/2-1/2", 3},
        {"1/2", 3}, {"0-0", -1}, {"O-O", -1}, {"1", -1}, {"e4", -1}, {"", -1},
    };
    for (const auto& [token, result] : tokens) {
        EXPECT_EQ(PgnResultFromToken(token), result) << token;
    }
    const std::pair<const char*, int32_t> tags[] = {
        {"", -1}, {"1-0", 1}, {"0-1", 2}, {"1/2-1/2", 3}, {"*", 0}, {"x", -1}, {"?", -1},
        {"0-2", 3}, {"1", 1},
    };
    for (const auto& [text, result] : tags) {
        EXPECT_EQ(PgnResultFromTag(text), result) << text;
    }
    EXPECT_EQ(FindPgnTag("Event"), TagEvent);
    EXPECT_EQ(FindPgnTag("whiteelo"), TagWhiteElo);
    EXPECT_EQ(FindPgnTag("FEN"), TagFen);
    EXPECT_EQ(FindPgnTag("fen"), TagFen);
    EXPECT_EQ(FindPgnTag("Opening"), 0);
    EXPECT_EQ(FindPgnTag("Even"), 0);
    EXPECT_EQ(FindPgnTag(""), 0);
}

TEST(PgnGameReader, FindsWhereGamesBeginAndEnd)
{
    // Tags then a result and no move: a game of 0 moves.
    std::vector<ReadGame> games = ReadText("[White \"a\"]\n1-0\n[White \"b\"]\n\n1. e4 e5\n");
    ASSERT_EQ(games.size(), 2u);
    EXPECT_EQ(games[0].moveCount, 0u);
    EXPECT_EQ(games[0].resultToken, 1);
    EXPECT_EQ(games[1].Tag(TagWhite), "b");
    EXPECT_EQ(games[1].moveCount, 2u) << "end of input after movetext finishes the game";

    // Tags and end of input: nothing.
    EXPECT_TRUE(ReadText("[White \"a\"]\n[Black \"b\"]\n").empty());

    // Text ahead of the first tag, a game without a known tag, and words
    // before the first move number are passed over.
    games = ReadText("junk e4 1. d4 {x}\n[Opening \"x\"]\n1. e4 *\n[Event \"e\"]\nNf3 1. e4 e5 *\n");
    ASSERT_EQ(games.size(), 1u);
    EXPECT_EQ(games[0].moves, (std::vector<std::string>{"e2e4", "e7e5|"}));

    // A result inside a variation ends the game there.
    games = ReadText("[Event \"e\"]\n1. e4 (1. d4 1-0) e5 *\n");
    ASSERT_EQ(games.size(), 1u);
    EXPECT_EQ(games[0].resultToken, 1);
    EXPECT_EQ(games[0].moves, (std::vector<std::string>{"e2e4*|", "d2d4|"}));
}

TEST(PgnGameReader, KnownTagNameEndsTheGameAndStartsTheNext)
{
    std::vector<ReadGame> games =
        ReadText("[Event \"one\"]\n1. e4 e5\n[Event \"two\"]\n[Site \"s\"]\n1. d4 *\n");
    ASSERT_EQ(games.size(), 2u);
    EXPECT_EQ(games[0].Tag(TagEvent), "one");
    EXPECT_EQ(games[0].Tag(TagResult), "*");
    EXPECT_EQ(games[1].Tag(TagEvent), "two") << "the tag that ended a game belongs to the next";
    EXPECT_EQ(games[1].Tag(TagSite), "s");
    EXPECT_EQ(games[1].moves, (std::vector<std::string>{"d2d4|"}));

    // An unknown tag in movetext ends nothing, and its value is dropped.
    games = ReadText("[Event \"one\"]\n1. e4 [Opening \"x\"] e5 *\n");
    ASSERT_EQ(games.size(), 1u);
    EXPECT_EQ(games[0].moves, (std::vector<std::string>{"e2e4", "e7e5|"}));
}

TEST(PgnGameReader, StoresTagValues)
{
    std::string longValue(300, 'v');
    ReadGame game = ReadOne("[event \"first\"]\n[Event \"second\"]\n[Site \"]x\"]\n[Round \"[1\"]\n"
                            "[Annotator \"" + longValue + "\"]\n[Remark \"a \\\"q\\\"\"]\n[Date \"????.??.??\"]\n"
                            "[White \"?\"]\n[Black \"1?\"]\n\n1. e4 *\n");
    EXPECT_EQ(game.Tag(TagEvent), "second") << "a repeated tag overwrites";
    EXPECT_EQ(game.Tag(TagSite), "") << "a value that begins with ] closes the tag";
    EXPECT_EQ(game.Tag(TagRound), "[1");
    EXPECT_EQ(game.Tag(TagAnnotator), std::string(255, 'v'));
    EXPECT_EQ(game.Tag(TagRemark), "a \\\"q\\\"");
    EXPECT_EQ(game.Tag(TagDate), "") << "a slot that begins with ? is emptied";
    EXPECT_EQ(game.Tag(TagWhite), "");
    EXPECT_EQ(game.Tag(TagBlack), "1?");

    PgnGameStorage storage;
    StorePgnTag(storage.Game(), TagEvent, "abc");
    const char* slot = storage.Game()->tags[TagEvent - 1];
    EXPECT_STREQ(slot, "abc");
    for (int i = 3; i < PGN_TAG_SIZE; ++i) {
        ASSERT_EQ(slot[i], '\0') << "the slot is padded with NUL";
    }
}

struct ResultCase {
    const char* tag;  // value of the Result tag, null for none
    const char* token;
    const char* result;
    std::vector<std::string> trace;
};

TEST(PgnGameReader, SettlesTheResultBetweenTagAndToken)
{
    const ResultCase cases[] = {
        {"1-0", "1-0", "1-0", {}},
        {nullptr, "0-1", "0-1", {}},
        {"1/2-1/2", "", "1/2-1/2", {}},
        {"?", "1-0", "1-0", {}},
        {"garbage", "0-1", "0-1", {}},
        {nullptr, "", "*",
         {"OrvanDll: bad or missing game result \"\".", "OrvanDll: Game result set to *.\n"}},
        {"won", "", "*",
         {"OrvanDll: bad or missing game result \"won\".", "OrvanDll: Game result set to *.\n"}},
        {"1-0", "*", "1-0",
         {"OrvanDll: conflicting game result: \"1-0\" versus *.", "OrvanDll: Game result set to 1-0.\n"}},
        {"*", "1-0", "1-0",
         {"OrvanDll: conflicting game result: \"*\" versus 1-0.", "OrvanDll: Game result set to 1-0.\n"}},
        {"0-1", "1/2", "0-1",
         {"OrvanDll: conflicting game result: \"0-1\" versus 1/2-1/2.",
          "OrvanDll: Game result set to 0-1.\n"}},
    };
    for (const ResultCase& test : cases) {
        std::string text = "[White \"w\"]\n";
        if (test.tag != nullptr) {
            text += std::string("[Result \"") + test.tag + "\"]\n";
        }
        text += std::string("1. e4 ") + test.token + "\n";
        TraceCapture trace;
        ReadGame game = ReadOne(text);
        EXPECT_EQ(game.Tag(TagResult), test.result) << text;
        EXPECT_EQ(trace.lines, test.trace) << text;
    }
}

TEST(PgnGameReader, SkipsEmptyGamesAndGamesWithABadFen)
{
    TraceCapture trace;
    std::vector<ReadGame> games = ReadText(
        "[White \"?\"]\n[Black \"?\"]\n[Result \"?\"]\n[Event \"x\"]\n\n1.\n"
        "[Event \"bad fen\"]\n[FEN \"8/8 w - - 0 1\"]\n1. e4 *\n"
        "[Event \"good\"]\n1. e4 *\n");
    ASSERT_EQ(games.size(), 1u);
    EXPECT_EQ(games[0].Tag(TagEvent), "good");
    EXPECT_EQ(trace.lines, (std::vector<std::string>{
                               "OrvanDll: skipping empty game (no players, moves and result).",
                               "OrvanDll: syntax error in FEN tag, skipping game."}));
}

TEST(PgnGameReader, StartsFromTheFenPosition)
{
    ReadGame game = ReadOne("[FEN \"4k3/8/8/8/8/8/4P3/4K3 b - - 0 31\"]\n\n31... Kd7 32. e4 *\n");
    EXPECT_EQ(game.firstMoveNumber, 30u);
    EXPECT_EQ(game.position.sideToMove, 0);
    EXPECT_EQ(game.moves, (std::vector<std::string>{"e8d7", "e2e4|"}));

    game = ReadOne("[Event \"e\"]\n1. e4 *\n");
    EXPECT_EQ(std::memcmp(&game.position, &StartPosition, sizeof(sPosition)), 0);
    EXPECT_EQ(game.firstMoveNumber, 0u);
}

TEST(PgnGameReader, SetUp2GivesCastlingFieldsTheirRookSquares)
{
    // King and rooks on their classical squares: the fields name the rooks.
    ReadGame game = ReadOne("[SetUp \"2\"]\n[FEN \"r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1\"]\n1. O-O *\n");
    EXPECT_EQ(game.position.castleWhiteShort, 8);
    EXPECT_EQ(game.position.castleWhiteLong, 1);
    EXPECT_EQ(game.position.castleBlackShort, 64);
    EXPECT_EQ(game.position.castleBlackLong, 57);
    EXPECT_EQ(game.moves, (std::vector<std::string>{"e1g1|"}));

    game = ReadOne("[SetUp \"1\"]\n[FEN \"r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1\"]\n1. O-O *\n");
    EXPECT_EQ(game.position.castleWhiteShort, 1);
    EXPECT_EQ(game.position.castleBlackShort, 1);
}

TEST(PgnGameReader, TagsOnlyLeavesMovesAndResultAlone)
{
    ReadGame game = ReadOne("[White \"?\"]\n[Result \"1-0\"]\n\n1. e4 {c} e5 0-1\n", PgnTagsOnly);
    EXPECT_EQ(game.movesRead, 0);
    EXPECT_EQ(game.Tag(TagWhite), "");
    EXPECT_EQ(game.Tag(TagResult), "1-0");
    EXPECT_EQ(game.resultToken, 2);
    EXPECT_EQ(game.hasComment, 1);
    EXPECT_EQ(game.moveCount, 0u);

    // A game the full read would skip as empty still reaches the callback.
    EXPECT_EQ(ReadText("[Event \"e\"]\n\n{only a comment} 1.\n", PgnTagsOnly).size(), 1u);
}

TEST(PgnGameReader, SwappedColoursMirrorPositionAndMoves)
{
    ReadGame game = ReadOne("[Result \"1-0\"]\n1. e4 e5 2. Nf3 1-0\n", PgnSwapColours);
    EXPECT_EQ(game.position.sideToMove, 0);
    EXPECT_EQ(game.moves, (std::vector<std::string>{"e7e5", "e2e4", "g8f6|"}));
    EXPECT_EQ(game.Tag(TagResult), "1-0");

    sPosition position;
    uint32_t firstMoveNumber = 0;
    ASSERT_EQ(ReadFen(&position, &firstMoveNumber, "r3k3/8/8/3Pp3/8/8/8/4K2R w Kq e6 0 1"), 0);
    sPosition mirrored = position;
    SwapColours(&mirrored);
    EXPECT_EQ(mirrored.board[4], OV_WHITE_KING) << "the black king from e8";
    EXPECT_EQ(mirrored.board[0], OV_WHITE_ROOK);
    EXPECT_EQ(mirrored.board[63], OV_BLACK_ROOK);
    EXPECT_EQ(mirrored.board[27], OV_BLACK_PAWN) << "the white pawn from d5";
    EXPECT_EQ(mirrored.board[28], OV_WHITE_PAWN) << "the black pawn from e5";
    EXPECT_EQ(mirrored.epSquare, 20);
    EXPECT_EQ(mirrored.castleWhiteLong, 1);
    EXPECT_EQ(mirrored.castleBlackShort, 1);
    EXPECT_EQ(mirrored.castleWhiteShort, 0);
    EXPECT_EQ(mirrored.sideToMove, 0);
    SwapColours(&mirrored);
    EXPECT_EQ(std::memcmp(&mirrored, &position, sizeof position), 0);
}

TEST(PgnGameReader, ReadStopsWhenTheCallbackSaysSo)
{
    const char* text = "[Event \"1\"]\n1. e4 *\n[Event \"2\"]\n1. d4 *\n[Event \"3\"]\n1. c4 *\n";
    int32_t result = -1;
    EXPECT_EQ(ReadText(text, 0, "NBRQK", 2, &result).size(), 2u);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(ReadText(text, 0, "NBRQK", SIZE_MAX, &result).size(), 3u);
    EXPECT_EQ(result, 0);

    // Without a callback the first game that is not skipped ends the read,
    // and the record keeps it.
    std::string memory = std::string("[White \"?\"]\n1.\n") + text;
    PgnGameStorage storage;
    PgnSource source;
    source.text = memory.c_str();
    source.size = static_cast<int32_t>(memory.size() + 1);
    EXPECT_EQ(PgnReadGames(source, storage.Game(), 0, nullptr, nullptr, 0), 1);
    EXPECT_STREQ(storage.Game()->tags[TagEvent - 1], "1");
    EXPECT_EQ(storage.Game()->moveCount, 1u);

    EXPECT_EQ(PgnReadGames(source, nullptr, 0, nullptr, nullptr, 0), 0);
}

TEST(PgnGameReader, ReadsOnTwoThreadsDoNotMeet)
{
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += "[Event \"" + std::to_string(i) + "\"]\n1. e4 e5 (1... c5 2. Nf3 {c} d6) 2. Nf3 Nc6 3. Bb5 a6 *\n";
    }
    std::string other;
    for (int i = 0; i < 300; ++i) {
        other += "[Event \"x\"]\n1. d4 d5 2. c4 (2. Nf3 Nf6 (2... c5)) e6 3. Nc3 Nf6 4. Bg5 1-0\n";
    }
    std::vector<ReadGame> first;
    std::vector<ReadGame> second;
    std::thread a([&] { first = ReadText(text); });
    std::thread b([&] { second = ReadText(other); });
    a.join();
    b.join();
    ASSERT_EQ(first.size(), 300u);
    ASSERT_EQ(second.size(), 300u);
    for (size_t i = 0; i < 300; ++i) {
        EXPECT_EQ(first[i].Tag(TagEvent), std::to_string(i));
        EXPECT_EQ(first[i].treeCount, 9u);
        EXPECT_EQ(second[i].treeCount, 10u);
        EXPECT_EQ(second[i].moveCount, 7u);
    }
}

}  // namespace
