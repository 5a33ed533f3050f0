// Move texts read without a board, and tokens resolved in a position.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "pgn/read/fen_reader.h"
#include "pgn/read/game_reader.h"
#include "pgn/read/move_token.h"
#include "support/capture.h"
#include "support/read_games.h"

namespace {

// A token as "P e2 e4 =Q O-O": piece, from-square hints ("?" where not
// given), to-square ("?" for a missing rank), promotion and castling.
std::string Describe(uint32_t token)
{
    std::string text = std::string(1, "?PNBRQK?"[TokenPiece(token)]) + ' ';
    text += (token & MoveTokenBits::FromFileGiven) ? static_cast<char>('a' + TokenFromFile(token)) : '?';
    text += (token & MoveTokenBits::FromRankGiven) ? static_cast<char>('1' + TokenFromRank(token)) : '?';
    if (token & (MoveTokenBits::ShortCastling | MoveTokenBits::LongCastling))
        return text + ((token & MoveTokenBits::ShortCastling) ? " O-O" : " O-O-O");
    text += ' ';
    text += static_cast<char>('a' + TokenToFile(token));
    text += (token & MoveTokenBits::NoToRank) ? '?' : static_cast<char>('1' + TokenToRank(token));
    return TokenPromotion(token) == 0 ? text : text + " =" + "?PNBRQK?"[TokenPromotion(token)];
}

std::string Parse(const char* text, const char* letters = "NBRQK")
{
    PgnPieceLetters pieceLetters;
    pieceLetters.Set(letters);
    uint32_t token = 0xFFFFFFFF;
    if (!ParseMoveToken(pieceLetters, text, static_cast<int32_t>(std::strlen(text)), &token)) {
        EXPECT_EQ(token, 0xFFFFFFFF) << "a text that is no move leaves the token alone";
        return "no move";
    }
    EXPECT_EQ(token & ~MoveTokenBits::MoveBits, 0u) << "only bits 0 to 22 come from the text";
    return Describe(token);
}

TEST(ParseMoveToken, ReadsEveryNotationFromTheEnd)
{
    const std::pair<const char*, const char*> cases[] = {
        {"e2-e4", "P e2 e4"},     {"Ng1f3", "N g1 f3"},     {"ed", "P e? d?"},      {"e:d5", "P e? d5"},
        {"exd6e.p.", "P e? d6"},  {"e8=Q+", "P ?? e8 =Q"},  {"e8N", "P ?? e8 =N"},  {"R1e1#", "R ?1 e1"},
        {"OO", "K ?? O-O"},       {"0-0-0#", "K ?? O-O-O"}, {"", "no move"},        {"1-0", "no move"},
        {"OOOO", "no move"},      {"Qx", "no move"},
    };
    for (const auto& [text, token] : cases)
        EXPECT_EQ(Parse(text), token) << text;

    EXPECT_EQ(Parse("Lb5", "SLTDK"), "B ?? b5");
    EXPECT_EQ(Parse("Nf3", "SLTDK"), "P ?? f3") << "N means nothing with these letters";
}

// Resolves `text` in the position of `fen`: "e2e4", or "-" for no move.
std::string Resolve(const char* fen, const char* text, int32_t fischer = 0, int32_t swap = 0)
{
    sPosition position;
    uint32_t firstMoveNumber = 0, token = 0;
    EXPECT_EQ(ReadFen(&position, &firstMoveNumber, fen), 0) << fen;
    if (swap)
        SwapColours(&position);
    EXPECT_TRUE(ParseMoveToken(PgnPieceLetters(), text, static_cast<int32_t>(std::strlen(text)), &token)) << text;
    TrackedPosition tracked;
    TrackPosition(tracked, position);
    const uint32_t move = ResolveMoveToken(tracked, token, fischer, swap);
    EXPECT_EQ(std::memcmp(&tracked.record, &position, sizeof position), 0) << "the position is only read";
    return move == 0 ? "-" : MoveWord(static_cast<uint16_t>(move));
}

constexpr const char* Start = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

TEST(ResolveMoveToken, FindsTheOneLegalMoveOrNone)
{
    const char* oneCapture = "4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1";
    const char* twoOnOneFile = "4k3/8/8/3p4/4P3/3p4/4P3/4K3 w - - 0 1";
    const char* twoKnights = "4k3/8/8/8/8/5N2/8/1N2K3 w - - 0 1";
    const char* threeQueens = "4k3/8/8/8/Q6Q/8/8/Q3K3 w - - 0 1";
    const char* promotion = "1r2k3/P7/8/8/8/8/8/4K3 w - - 0 1";
    const struct { const char *fen, *text, *move; } cases[] = {
        {Start, "e5", "-"},          {oneCapture, "ed", "e4d5"},      {twoOnOneFile, "ed", "-"},
        {twoOnOneFile, "exd3", "e2d3"}, {twoKnights, "Nd2", "-"},      {twoKnights, "Nxd2", "-"},
        {threeQueens, "Qd4", "-"},   {threeQueens, "Qa4d4", "a4d4"},  {promotion, "axb8=B", "a7b8b"},
        {"4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "ed", "e5d6"},
        {"4k3/8/8/8/8/5N2/8/N3K3 w - - 0 1", "Nbd2", "f3d2"},  // a wrong hint for the only knight
        {"4k3/8/8/8/8/8/8/8 w - - 0 1", "Kd2", "-"},
        {"4k3/4r3/8/8/8/8/4N3/4K3 w - - 0 1", "Nc3", "-"},
        {"r3k2r/8/8/8/8/8/8/R3K2R w Qkq - 0 1", "O-O", "-"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Resolve(c.fen, c.text), c.move) << c.fen << "  " << c.text;

    // A swapped read mirrors the ranks.
    EXPECT_EQ(Resolve(Start, "Ng1f3", 0, 1), "g8f6");
}

TEST(ResolveMoveToken, FischerCastlingGoesToTheRookWithoutLegalityTest)
{
    // The bishop on f1 blocks the classical move; the right stands.
    const char* blocked = "4k3/8/8/8/8/8/8/4KB1R w K - 0 1";
    TraceCapture trace;
    EXPECT_EQ(Resolve(blocked, "O-O", 0), "-");
    EXPECT_TRUE(trace.lines.empty());
    EXPECT_EQ(Resolve(blocked, "O-O", 1), "e1h1");
    const char* skipped = "OrvanDll: skipping legality check on short white Fischer castling.";
    EXPECT_EQ(trace.lines, std::vector<std::string>{skipped});
    EXPECT_EQ(Resolve(blocked, "O-O-O", 1), "-") << "no long right";
}

}  // namespace
