// Sample games for the store tests: short move lists from the standard
// start, and a fully dressed game with header, side lines and comments.
#ifndef ORVAN_TESTS_GAME_SAMPLES_H
#define ORVAN_TESTS_GAME_SAMPLES_H

#include <cstring>
#include <sstream>

#include "tests/store/store_helpers.h"

inline const std::vector<std::vector<std::string>>& SampleLines()
{
    static const std::vector<std::vector<std::string>> lines = {
        {"e2e4", "e7e5", "g1f3", "b8c6", "f1b5", "a7a6", "b5a4", "g8f6", "e1g1", "f8e7"},
        {"d2d4", "g8f6", "c2c4", "e7e6", "b1c3", "f8b4", "d1c2", "e8g8", "a2a3", "b4c3", "c2c3"},
        {"e2e4", "c7c5", "g1f3", "d7d6", "d2d4", "c5d4", "f3d4", "g8f6", "b1c3", "a7a6"},
        {"c2c4", "e7e5", "b1c3", "g8f6", "g2g3", "d7d5", "c4d5", "f6d5", "f1g2", "d5b6"},
        {"e2e4", "d7d5", "e4d5", "d8d5", "b1c3", "d5a5", "d2d4", "g8f6", "g1f3", "c8f5"},
        {"f2f3", "e7e5", "g2g4", "d8h4"},
        {},
    };
    return lines;
}

// Erases `game` and plays sample line `index`, with Round `round` to tell it.
inline void WriteSample(uint32_t game, size_t index, int32_t round)
{
    NewGameErase(game);
    IGGamePutRound(game, round);
    IGGamePutPlayer(game, 0, round % 2 ? "Almasi, Oskar" : "Young, Anna");
    IGGamePutPlayer(game, 1, "Horvath, Xenia");
    IGGamePutPlace(game, "Geneva Masters 1950");
    IGGamePutResult(game, 1 + round % 3, 0);
    const auto& line = SampleLines()[index % SampleLines().size()];
    ASSERT_EQ(Play(game, line), int(line.size()));
}

// The dressed game: header, a set-up position, side lines, comments, glyphs.
inline void BuildDressedGame(uint32_t game)
{
    NewGameErase(game);
    const BoardRecord board = BoardFromPieces("r3k2r/pp3ppp/8/3pP3/8/8/PPP2PPP/R3K2R");
    ASSERT_EQ(BoardToInitialPosition(game, &board, 0xF0, 4, 21), 1);
    IGGamePutPlace(game, "Copenhagen Championship 1968");
    IGGamePutSite(game, "Copenhagen");
    IGGamePutAnnotator(game, "Annotator");
    IGGamePutPlayer(game, 0, "Lindqvist, Hanna");
    IGGamePutPlayer(game, 1, "Novak, Rosa");
    IGGamePutCountry(game, 0, "SWE");
    IGGamePutCountry(game, 1, "CZE");
    IGGamePutTitle(game, 0, "GM");
    IGGamePutTitle(game, 1, "IM");
    IGGamePutKeycode(game, "C26");
    IGGamePutRemark(game, "Rossi, Ma\xa4" "a");
    IGGamePutRound(game, 10);
    IGGamePutElo(game, 0, 2744);
    IGGamePutElo(game, 1, 2042);
    IGGamePutTime(game, 0, 90);
    IGGamePutTime(game, 1, 95);
    const int32_t date[3] = {1993, 5, 4};
    IGGamePutDate(game, date);
    IGGamePutResult(game, 2, 0);
    IGGamePutStatus(game, OvgStatusAnnotated, 1);
    IGGamePutStatus(game, OvgStatusVariations, 1);
    IGMovePutLComment(IGGameGetMovePtr(game), "before the first move", 1);
    ASSERT_EQ(Play(game, {"e5d6", "e8c8", "e1g1", "d8d6", "a2a4"}), 5);
    IGMovePutSComment(IGGameGetMovePtr(game), "!?");
    ASSERT_EQ(PlayMoves(game, -4), 4);
    uint32_t node = IGGameGetMovePtr(game);
    IGMovePutAL(node, IGMoveFirstFreeSubline(node, 1));
    ASSERT_EQ(Play(game, {"e8g8", "e1c1"}), 2);
    IGMovePutLComment(IGGameGetMovePtr(game), "long castling \0for white", 2);
    ASSERT_EQ(PlayMoves(game, -1), 1);
    node = IGGameGetMovePtr(game);
    IGMovePutAL(node, IGMoveFirstFreeSubline(node, 1));
    ASSERT_EQ(Play(game, {"d6d7", "f8d8"}), 2);
}

// A move as text with its long comment lines in braces and its glyph text.
inline std::string DescribeMove(uint32_t move)
{
    std::vector<char> block(OvgLongCommentBlockSize);
    char glyph[OvgTextSize];
    std::ostringstream out;
    out << MoveText(move);
    const int32_t lines = GetLComment(move, block.data());
    const char* line = block.data() + 2;
    for (int32_t i = 0; i < lines; line += std::strlen(line) + 1, ++i)
        out << '{' << line << '}';
    if (IGMoveGetSComment(move, glyph))
        out << glyph;
    return out.str();
}

// A line and its side lines in depth-first order.
inline std::string DescribeLine(uint32_t move)
{
    std::ostringstream out;
    for (; move != 0; move = IGMoveGetNEXT(move)) {
        out << DescribeMove(move) << ' ';
        for (uint32_t alt = IGMoveGetALT(move); alt != 0; alt = IGMoveGetALT(alt))
            out << '(' << DescribeMove(alt) << ' ' << DescribeLine(IGMoveGetNEXT(alt)) << ") ";
    }
    return out.str();
}

inline std::string DescribeTree(uint32_t game)
{
    std::ostringstream out;
    const uint32_t root = IGGameGetFirstMove(game);
    if (root == 0)
        return "";
    std::vector<char> block(OvgLongCommentBlockSize);
    if (GetLComment(root, block.data()) > 0)
        out << '{' << block.data() + 2 << "} ";
    out << DescribeLine(IGMoveGetNEXT(root));
    return out.str();
}

#endif
