// Input that is no PGN, or PGN pushed past every limit: the read ends with no
// crash and no write past an array (the sanitizer build checks the latter).
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "pgn/read/pgn_read.h"
#include "support/capture.h"
#include "support/read_games.h"

namespace {

const char* const SampleGame =
    "[Event \"e\"]\n[Site \"s\"]\n[FEN \"r3k2r/pppq1ppp/2n2n2/3pp3/3PP3/2N2N2/PPPQ1PPP/R3K2R w KQkq - 0 8\"]\n"
    "[SetUp \"2\"]\n\n8. O-O-O {c} $1 (8. O-O O-O-O ; 8. dxe5 Nxe5 (8... d4)) 8... O-O 9. exd5 Nxd5 "
    "10. Nxe5 Nxe5 11. dxe5 Qe6 12. Qxd5 Qxe5 13. Qxe5 1-0\n";

TEST(PgnHostileInput, RandomBytesAndMutatedGamesEndCleanly)
{
    TraceCapture trace;
    std::mt19937 random(20261123);
    std::string noise(200000, '\0');
    for (char& c : noise)
        c = static_cast<char>(random() % 255 + 1);
    ReadText(noise);
    ReadText(noise, PgnTagsOnly | PgnSwapColours);

    // Games with bytes changed into the characters that matter most.
    const std::string alphabet = "[]{}()<>;%\"\\!?$.*-/0123456789abcdefghKQRBNOx= \n";
    std::string base = SampleGame;
    size_t games = 0;
    for (int round = 0; round < 400; ++round) {
        std::string text;
        for (int copy = 0; copy < 5; ++copy) {
            std::string game = base;
            for (int change = 0; change < 4; ++change)
                game[random() % game.size()] = alphabet[random() % alphabet.size()];
            text += game;
        }
        games += ReadText(text, round % 4 == 0 ? uint32_t{PgnSwapColours} : 0u).size();
    }
    EXPECT_GT(games, 0u);
}

TEST(PgnHostileInput, DeepAndOddBracketsStayWithinTheirArrays)
{
    TraceCapture trace;
    std::string nested = "[Event \"e\"]\n1. e4 ";
    for (int i = 0; i < 3000; ++i)
        nested += "(1. d4 ";
    nested += std::string(3000, ')') + " e5 *\n";
    ReadGame game = ReadOne(nested);
    // e5's count holds 255 of its 3000 closing brackets, so for the main line
    // the variation never closes and e5 is not reached.
    EXPECT_EQ(MoveWord(game.moves.front()), "e2e4*|");
    EXPECT_EQ(game.moveCount, 1u);
    EXPECT_LE(game.treeCount, static_cast<uint32_t>(PGN_MAX_MOVES));

    std::string closing = "[Event \"e\"]\n1. e4 " + std::string(1000, ')') + " e5 ";
    for (int i = 0; i < 600; ++i)
        closing += "(( e6 ; ; e6 ";
    closing += "*\n";
    game = ReadOne(closing);
    EXPECT_LE(game.treeCount, static_cast<uint32_t>(PGN_MAX_MOVES));

    // Tokens up to the list's end, each opening a variation that never closes.
    std::string open = "[Event \"e\"]\n1. e4";
    for (int i = 0; i < PGN_MAX_MOVES + 50; ++i)
        open += " (1. d4";
    game = ReadOne(open + " *\n");
    EXPECT_LE(game.treeCount, static_cast<uint32_t>(PGN_MAX_MOVES));
}

}  // namespace
