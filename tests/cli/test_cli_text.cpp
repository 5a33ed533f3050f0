// The host's text helpers: encodings, game ranges, query words and FEN.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/cli_error.h"
#include "cli/encoding.h"
#include "cli/game_range.h"
#include "cli/position_text.h"
#include "cli/query_text.h"

namespace {

using namespace orvan_cli;

TEST(CliEncoding, EveryAssignedWindows1252ByteSurvivesTheRoundTrip)
{
    const std::vector<unsigned char> unassigned = {0x81, 0x8D, 0x8F, 0x90, 0x9D};
    for (int byte = 1; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        const std::string utf8 = Windows1252ToUtf8(one);
        const bool isUnassigned =
            std::find(unassigned.begin(), unassigned.end(), byte) != unassigned.end();
        EXPECT_EQ(Utf8ToWindows1252(utf8), isUnassigned ? "?" : one) << "byte " << byte;
    }
    EXPECT_EQ(Windows1252ToUtf8("M\xFCller \x80"), "M\xC3\xBCller \xE2\x82\xAC");
}

TEST(CliEncoding, BadAndUnmappableUtf8BecomesQuestionMarks)
{
    const struct {
        std::string utf8, expected;
    } cases[] = {
        {"\xE2\x98\x83", "?"},           // a snowman has no Windows-1252 form
        {"a\xC3", "a?"},                 // cut at the end
        {"\xFF\xFE", "??"},              // bytes that lead nothing
        {"\xE0\x80\xAF", "?"},           // overlong form
        {"\xED\xA0\x80", "?"},           // a surrogate
        {"\xF0\x9F\x98\x80x", "?x"},     // beyond the basic plane
    };
    for (const auto& c : cases)
        EXPECT_EQ(Utf8ToWindows1252(c.utf8), c.expected);
}

TEST(CliEncoding, StreamingGivesTheSameTextWhereverThePiecesSplit)
{
    const std::string text = "[White \"M\xC3\xBCller\"] \xE2\x82\xAC \xC5\x93 \xE2\x98\x83 end";
    const std::string whole = Utf8ToWindows1252(text);
    for (size_t split = 0; split <= text.size(); ++split) {
        Utf8ToWindows1252Stream stream;
        std::string out;
        stream.Convert(std::string_view(text).substr(0, split), out);
        stream.Convert(std::string_view(text).substr(split), out);
        stream.Finish(out);
        EXPECT_EQ(out, whole) << "split at " << split;
    }
}

TEST(CliEncoding, DetectorTellsUtf8FromWindows1252)
{
    const std::pair<std::vector<std::string>, bool> cases[] = {
        {{"M\xC3", "\xBCller"}, true},           // split inside a character
        {{"plain ascii"}, false},                // nothing to decide: read as Windows-1252, the same bytes
        {{"ok \xC3\xBC then \xFC"}, false},       // one byte that is no UTF-8
    };
    for (const auto& [pieces, utf8] : cases) {
        Utf8Detector detector;
        for (const auto& piece : pieces)
            detector.Feed(piece);
        EXPECT_EQ(detector.IsUtf8(), utf8) << pieces.front();
    }
}

TEST(CliGameRange, ReadsNumbersListsAndOpenEndsAndRefusesWhatNamesNoGame)
{
    EXPECT_EQ(ParseGameRange("3", 10), (std::vector<int32_t>{3}));
    EXPECT_EQ(ParseGameRange("1-3,7", 10), (std::vector<int32_t>{1, 2, 3, 7}));
    EXPECT_EQ(ParseGameRange("8-", 10), (std::vector<int32_t>{8, 9, 10}));
    EXPECT_EQ(ParseGameRange("5,2", 10), (std::vector<int32_t>{5, 2}));
    for (const char* bad : {"", "0", "11", "3-2", "x", "1,", "-3", "1-x", "99999999999"}) {
        try {
            ParseGameRange(bad, 10);
            ADD_FAILURE() << "accepted '" << bad << "'";
        } catch (const CliError& error) {
            EXPECT_EQ(error.Code(), kExitUsage);
            EXPECT_NE(std::string(error.what()).find("bad game range"), std::string::npos);
        }
    }
}

TEST(CliQuery, ConditionsFillGroupsColumnByColumn)
{
    sQuery query{};
    ParseQueryWords({"white=M\xC3\xBCller", "elo>=2400", "or", "black^=Tal", "result=1-0"}, query);
    EXPECT_EQ(query.kind, static_cast<uint32_t>(QueryHeader));
    const sQueryCondition& first = query.conditions[0][0];
    EXPECT_EQ(first.field, QfWhite);
    EXPECT_EQ(first.op, QopEquals);
    EXPECT_STREQ(first.value, "M\xFCller");  // handed on in Windows-1252
    EXPECT_EQ(query.conditions[1][0].field, QfElo);
    EXPECT_EQ(query.conditions[1][0].op, QopNotBeginsWith);  // numbers: ">=" is "not below"
    EXPECT_EQ(query.conditions[0][1].field, QfBlack);
    EXPECT_EQ(query.conditions[0][1].op, QopBeginsWith);
    EXPECT_EQ(query.conditions[1][1].field, QfResult);
    EXPECT_EQ(query.conditions[0][2].field, 0);
}

TEST(CliQuery, NumberOperatorsMapToTheLibraryCodes)
{
    const struct {
        const char* word;
        int32_t op;
    } cases[] = {{"moves=40", QopEquals},       {"moves!=40", QopNotEquals}, {"moves<40", QopBeginsWith},
                 {"moves>=40", QopNotBeginsWith}, {"moves<=40", QopContains}, {"moves>40", QopNotContains},
                 {"event~Open", QopContains},   {"event!~Open", QopNotContains},
                 {"event!^=Op", QopNotBeginsWith}};
    for (const auto& c : cases) {
        sQuery query{};
        ParseQueryWords({c.word}, query);
        EXPECT_EQ(query.conditions[0][0].op, c.op) << c.word;
    }
}

TEST(CliQuery, BadQueriesNameTheirFault)
{
    const struct {
        std::vector<std::string> words;
        const char* says;
    } cases[] = {
        {{"nofield=1"}, "unknown field"},
        {{"white"}, "no operator"},
        {{"elo~24"}, "does not fit"},
        {{"elo=12a"}, "not a number"},
        {{"result=2-0"}, "a result is"},
        {{"white=" + std::string(64, 'x')}, "longer than 63"},
        {{"or", "white=A"}, "both sides"},
        {{"a=1", "or", "b=1"}, "unknown field"},
        {{"white=A", "or", "white=B", "or", "white=C", "or", "white=D"}, "at most 3 groups"},
        {{"elo=1", "elo=2", "elo=3", "elo=4", "elo=5", "elo=6"}, "at most 5 conditions"},
    };
    for (const auto& c : cases) {
        sQuery query{};
        try {
            ParseQueryWords(c.words, query);
            ADD_FAILURE() << "accepted " << c.words.front();
        } catch (const CliError& error) {
            EXPECT_EQ(error.Code(), kExitUsage);
            EXPECT_NE(std::string(error.what()).find(c.says), std::string::npos) << error.what();
        }
    }
}

TEST(CliFen, ReadsAndWritesPositions)
{
    const char* fens[] = {
        "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
        "rnbqkbnr/ppp1pppp/8/3pP3/8/8/PPPP1PPP/RNBQKBNR w KQkq d6 0 3",
        "4k3/8/8/8/8/8/8/4K2R w K - 0 40",
        "8/8/8/8/8/5k2/8/5K2 b - - 0 60",
    };
    for (const char* fen : fens) {
        const sPosition position = ParseFen(fen);
        const std::string text(fen);
        const int32_t fullMove = std::stoi(text.substr(text.rfind(' ') + 1));
        EXPECT_EQ(FormatFen(position, fullMove), fen);
    }
    const sPosition start = ParseFen(fens[0]);
    EXPECT_EQ(start.board[0], OV_WHITE_ROOK);
    EXPECT_EQ(start.board[60], OV_BLACK_KING);
    EXPECT_EQ(start.epSquare, OV_NO_EP_SQUARE);
    EXPECT_EQ(ParseFen(fens[1]).epSquare, 43);
}

TEST(CliFen, BadFensNameTheirFault)
{
    const struct {
        const char* fen;
        const char* says;
    } cases[] = {
        {"rnbqkbnr/pppppppp w KQkq -", "8 ranks of 8"},
        {"rnbqkbnr/pppppppp/62p/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", "more than 8 squares"},
        {"rnbqkbnr/pppppppp/7/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", "does not have 8 squares"},
        {"rnbqkbnx/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", "'x' is no piece"},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR x KQkq -", "side to move"},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KX -", "castling field"},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e5", "en passant field"},
        {"8/8/8/8/8/8/8/4K3 w - -", "king is missing"},
        {"4k3/8/8/8/8/8/4R3/4K3 w - -", "not to move is in check"},
        {"P3k3/8/8/8/8/8/8/4K3 w - -", "first or eighth rank"},
        {"", "at least the fields"},
    };
    for (const auto& c : cases) {
        try {
            ParseFen(c.fen);
            ADD_FAILURE() << "accepted " << c.fen;
        } catch (const CliError& error) {
            EXPECT_EQ(error.Code(), kExitUsage);
            EXPECT_NE(std::string(error.what()).find(c.says), std::string::npos) << error.what();
        }
    }
}

}  // namespace
