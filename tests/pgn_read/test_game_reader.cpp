// The game loop and the finish step: game bounds, tags, results, start positions, callbacks.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "pgn/pgn_game.h"
#include "pgn/read/fen_reader.h"
#include "pgn/read/game_reader.h"
#include "pgn/read/pgn_read.h"
#include "support/capture.h"
#include "support/read_games.h"

namespace {

using Words = std::vector<std::string>;

TEST(PgnGameReader, FindsWhereGamesBeginAndEnd)
{
    // Tags then a result and no move: a game of 0 moves. A known tag name
    // ends a game, and belongs to the next.
    std::vector<ReadGame> games =
        ReadText("[White \"a\"]\n1-0\n[Event \"one\"]\n1. e4 e5\n[Event \"two\"]\n[Site \"s\"]\n1. d4\n");
    ASSERT_EQ(games.size(), 3u);
    EXPECT_EQ(games[0].moveCount + 10 * games[0].resultToken, 10u);
    EXPECT_EQ(games[1].Tag(TagEvent) + games[1].Tag(TagResult) + games[2].Tag(TagEvent) + games[2].Tag(TagSite),
              "one*twos");
    EXPECT_EQ(games[2].Words(), Words{"d2d4|"}) << "end of input after movetext finishes the game";

    // Tags and end of input: nothing.
    EXPECT_TRUE(ReadText("[White \"a\"]\n[Black \"b\"]\n").empty());

    // Text ahead of the first tag, a game without a known tag, words before
    // the first move number and unknown tags in movetext are passed over.
    games = ReadText("junk e4 1. d4 {x}\n[Opening \"x\"]\n1. e4 *\n[Event \"e\"]\nNf3 1. e4 [Opening \"x\"] e5 *\n");
    ASSERT_EQ(games.size(), 1u);
    EXPECT_EQ(games[0].Words(), (Words{"e2e4", "e7e5|"}));

    // A result inside a variation ends the game there.
    games = ReadText("[Event \"e\"]\n1. e4 (1. d4 1-0) e5 *\n");
    ASSERT_EQ(games.size(), 1u);
    EXPECT_EQ(games[0].resultToken, 1);
    EXPECT_EQ(games[0].Words(), (Words{"e2e4*|", "d2d4|"}));
}

TEST(PgnGameReader, StoresTagValues)
{
    std::string longValue(300, 'v');
    ReadGame game = ReadOne("[event \"first\"]\n[Event \"second\"]\n[Site \"]x\"]\n[Annotator \"" + longValue +
                            "\"]\n[Remark \"a \\\"q\\\"\"]\n[Date \"????.??.??\"]\n\n1. e4 *\n");
    EXPECT_EQ(game.Tag(TagEvent), "second") << "a repeated tag overwrites";
    EXPECT_EQ(game.Tag(TagSite), "") << "a value that begins with ] closes the tag";
    EXPECT_EQ(game.Tag(TagAnnotator), std::string(255, 'v'));
    EXPECT_EQ(game.Tag(TagRemark), "a \\\"q\\\"");
    EXPECT_EQ(game.Tag(TagDate), "") << "a slot that begins with ? is emptied";
}

TEST(PgnGameReader, SettlesTheResultBetweenTagAndToken)
{
    // The Result tag, the token, the result, and the trace (null for none) naming the result settled on.
    const struct { const char *tag, *token, *result, *trace; } cases[] = {
        {nullptr, "0-1", "0-1", nullptr},
        {"1/2-1/2", "", "1/2-1/2", nullptr},
        {"won", "", "*", "OrvanDll: bad or missing game result \"won\"."},
        {"1-0", "*", "1-0", "OrvanDll: conflicting game result: \"1-0\" versus *."},
    };
    for (const auto& c : cases) {
        const std::string text = "[White \"w\"]\n" + (c.tag ? "[Result \"" + std::string(c.tag) + "\"]\n" : "") +
                                 "1. e4 " + c.token + "\n";
        TraceCapture trace;
        EXPECT_EQ(ReadOne(text).Tag(TagResult), c.result) << text;
        const std::vector<std::string> expected{c.trace ? c.trace : "", "OrvanDll: Game result set to " +
                                                                            std::string(c.result) + ".\n"};
        EXPECT_EQ(trace.lines, c.trace ? expected : std::vector<std::string>{}) << text;
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
    EXPECT_EQ(game.Words(), (Words{"e8d7", "e2e4|"}));

    // SetUp 2 gives the castling fields their rook squares.
    const char* castling = "[FEN \"r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1\"]\n1. O-O *\n";
    game = ReadOne(std::string("[SetUp \"2\"]\n") + castling);
    const sPosition& p = game.position;
    EXPECT_EQ((std::vector<int>{p.castleWhiteShort, p.castleWhiteLong, p.castleBlackShort, p.castleBlackLong}),
              (std::vector<int>{8, 1, 64, 57}));
    EXPECT_EQ(game.Words(), Words{"e1g1|"});
    EXPECT_EQ(ReadOne(std::string("[SetUp \"1\"]\n") + castling).position.castleWhiteShort, 1);
}

TEST(PgnGameReader, TagsOnlyLeavesMovesAndResultAlone)
{
    ReadGame game = ReadOne("[White \"?\"]\n[Result \"1-0\"]\n\n1. e4 {c} e5 0-1\n", PgnTagsOnly);
    EXPECT_EQ((std::vector<int>{game.movesRead, game.resultToken, game.hasComment, int(game.moveCount)}),
              (std::vector<int>{0, 2, 1, 0}));
}

TEST(PgnGameReader, SwappedColoursMirrorPositionAndMoves)
{
    ReadGame game = ReadOne("[Result \"1-0\"]\n1. e4 e5 2. Nf3 1-0\n", PgnSwapColours);
    EXPECT_EQ(game.position.sideToMove, 0);
    EXPECT_EQ(game.Words(), (Words{"e7e5", "e2e4", "g8f6|"}));
    EXPECT_EQ(game.Tag(TagResult), "1-0");

    // Colours and ranks swap; the castling rights and en passant square go with them.
    sPosition position, expected;
    uint32_t firstMoveNumber = 0;
    ASSERT_EQ(ReadFen(&position, &firstMoveNumber, "r3k3/8/8/3Pp3/8/8/8/4K2R w Kq e6 0 1"), 0);
    ASSERT_EQ(ReadFen(&expected, &firstMoveNumber, "4k2r/8/8/8/3pP3/8/8/R3K3 b Qk e3 0 1"), 0);
    SwapColours(&position);
    EXPECT_EQ(std::memcmp(&position, &expected, sizeof expected), 0);
}

TEST(PgnGameReader, ReadStopsWhenTheCallbackSaysSo)
{
    const char* text = "[Event \"1\"]\n1. e4 *\n[Event \"2\"]\n1. d4 *\n[Event \"3\"]\n1. c4 *\n";
    int32_t result = -1;
    EXPECT_EQ(ReadText(text, 0, "NBRQK", 2, &result).size(), 2u);
    EXPECT_EQ(result, 1);

    // Without a callback the first game that is not skipped ends the read,
    // and the record keeps it.
    std::string memory = std::string("[White \"?\"]\n1.\n") + text;
    PgnGameStorage storage;
    const PgnSource source{nullptr, memory.c_str(), static_cast<int32_t>(memory.size() + 1)};
    EXPECT_EQ(PgnReadGames(source, storage.Game(), 0, nullptr, nullptr, 0), 1);
    EXPECT_STREQ(storage.Game()->tags[TagEvent - 1], "1");
    EXPECT_EQ(storage.Game()->moveCount, 1u);
    EXPECT_EQ(PgnReadGames(source, nullptr, 0, nullptr, nullptr, 0), 0);
}

TEST(PgnGameReader, TagsAndMovetextKeepTheirMeaningFromTheBlock)
{
    // Move numbers with and without dots, moves glued to them, a move broken
    // behind a hyphen and a word that reads as a result.
    ReadGame game = ReadOne("[Event \"e\"]\n1.e4 e5 2 Nf3 2...Nc6 3.. Bb5! e2-\n  e4 O-1 Nf6 *\n");
    EXPECT_EQ(game.Words(), (Words{"e2e4", "e7e5", "g1f3", "b8c6", "f1b5|"}))
        << "\"e2-\" \"e4\" is one word, illegal here, and ends the line";
    EXPECT_EQ(game.Tag(TagResult), "0-1");

    // A file comes in blocks of 64 KiB: wherever a block ends in the tags or
    // the movetext, the file gives the game the same text gives from memory.
    constexpr size_t Block = 1 << 16;
    const std::string pgn = "[Event \"e\"]\n[White \" Some One \"] [Black\"b\"]\n[Opening \"x\"]\n"
                             "1. e4 e5 2.Nf3 Nc6 3. Bb5 a6 4. Ba4 Nf6 5. O-O Be7 6. Re1 b5 $1 7. Bb3 d6 1/2-1/2\n";
    const std::string expected = ReadOne(pgn).Record();
    for (size_t cut = 0; cut <= pgn.size(); cut += 3) {
        const std::string text = '%' + std::string(Block - cut - 2, 'x') + '\n' + pgn;
        std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), &std::fclose);
        ASSERT_NE(file, nullptr);
        ASSERT_EQ(std::fwrite(text.data(), 1, text.size(), file.get()), text.size());
        std::rewind(file.get());
        PgnGameStorage storage;
        std::vector<ReadGame> games;
        auto keep = [](PgnGame* read, int32_t hasComment, int32_t movesRead, intptr_t context) {
            reinterpret_cast<std::vector<ReadGame>*>(context)->push_back(Capture(*read, hasComment, movesRead));
            return 1;
        };
        PgnReadGames(PgnSource{file.get(), nullptr, 0}, storage.Game(), 0, "NBRQK", keep,
                     reinterpret_cast<intptr_t>(&games));
        ASSERT_EQ(games.size(), 1u) << "block ends " << cut << " characters into the game";
        EXPECT_EQ(games[0].Record() + games[0].Tag(TagWhite) + games[0].Tag(TagBlack), expected + "Some Oneb")
            << "block ends " << cut << " characters into the game";
    }
}

}  // namespace
