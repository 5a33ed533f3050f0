// The host's text helpers: encodings, game ranges, query words and FEN errors.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "cli/cli_error.h"
#include "cli/encoding.h"
#include "cli/game_range.h"
#include "cli/position_text.h"
#include "cli/query_text.h"

namespace {

using namespace orvan_cli;

// The message of the usage error `call` throws; "accepted" when it throws none.
std::string UsageError(const std::function<void()>& call)
{
    try {
        call();
    } catch (const CliError& error) {
        EXPECT_EQ(error.Code(), kExitUsage);
        return error.what();
    }
    return "accepted";
}

TEST(CliEncoding, Windows1252RoundTripsAndBadUtf8BecomesQuestionMarks)
{
    for (int byte = 1; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        const bool unassigned = byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
        EXPECT_EQ(Utf8ToWindows1252(Windows1252ToUtf8(one)), unassigned ? "?" : one) << "byte " << byte;
    }
    EXPECT_EQ(Windows1252ToUtf8("M\xFCller \x80"), "M\xC3\xBCller \xE2\x82\xAC");
    // Unmappable, cut, leading nothing, overlong, a surrogate, beyond the basic plane.
    EXPECT_EQ(Utf8ToWindows1252("\xE2\x98\x83|a\xC3|\xFF\xFE|\xE0\x80\xAF|\xED\xA0\x80|\xF0\x9F\x98\x80x"),
              "?|a?|??|?|?|?x");
}

TEST(CliEncoding, StreamingAndDetectionWhereverThePiecesSplit)
{
    const std::string text = "[White \"M\xC3\xBCller\"] \xE2\x82\xAC \xC5\x93 \xE2\x98\x83 end";
    for (size_t split = 0; split <= text.size(); ++split) {
        Utf8ToWindows1252Stream stream;
        std::string out;
        stream.Convert(std::string_view(text).substr(0, split), out);
        stream.Convert(std::string_view(text).substr(split), out);
        stream.Finish(out);
        EXPECT_EQ(out, Utf8ToWindows1252(text)) << "split at " << split;
    }
    for (const auto& [first, second, utf8] : {std::tuple{"M\xC3", "\xBCller", true}, {"plain ascii", "", false},
                                              {"ok \xC3\xBC then ", "\xFC", false}}) {
        Utf8Detector detector;
        detector.Feed(first);
        detector.Feed(second);
        EXPECT_EQ(detector.IsUtf8(), utf8) << first;
    }
}

TEST(CliGameRange, ReadsNumbersListsAndOpenEndsAndRefusesWhatNamesNoGame)
{
    EXPECT_EQ(ParseGameRange("5,1-3,8-", 10), (std::vector<int32_t>{5, 1, 2, 3, 8, 9, 10}));
    for (const char* bad : {"", "0", "11", "3-2", "1,", "-3", "99999999999"})
        EXPECT_NE(UsageError([&] { ParseGameRange(bad, 10); }).find("bad game range"), std::string::npos) << bad;
}

TEST(CliQuery, ConditionsFillGroupsColumnByColumnWithTheLibraryCodes)
{
    sQuery query{};
    ParseQueryWords({"white=M\xC3\xBCller", "elo>=2400", "or", "black^=Tal", "result=1-0"}, query);
    EXPECT_EQ(query.kind, static_cast<uint32_t>(QueryHeader));
    EXPECT_STREQ(query.conditions[0][0].value, "M\xFCller");  // handed on in Windows-1252
    const sQueryCondition& c = query.conditions[0][0];
    EXPECT_EQ(std::vector<int32_t>({c.field, c.op, query.conditions[0][1].field, query.conditions[0][1].op,
                                    query.conditions[1][0].field, query.conditions[1][1].field,
                                    query.conditions[0][2].field}),
              std::vector<int32_t>({QfWhite, QopEquals, QfBlack, QopBeginsWith, QfElo, QfResult, 0}));
    // Number comparisons reuse the text operator codes: "<" is "begins with", ">=" "not begins with".
    const std::pair<const char*, int32_t> ops[] = {
        {"moves<40", QopBeginsWith}, {"moves>=40", QopNotBeginsWith}, {"moves<=40", QopContains}};
    for (const auto& [word, op] : ops) {
        sQuery one{};
        ParseQueryWords({word}, one);
        EXPECT_EQ(one.conditions[0][0].op, op) << word;
    }
}

TEST(CliText, BadQueriesAndFensNameTheirFault)
{
    const std::pair<std::vector<std::string>, const char*> queries[] = {
        {{"elo=12a"}, "not a number"},
        {{"white=" + std::string(64, 'x')}, "longer than 63"},
        {{"white=A", "or", "white=B", "or", "white=C", "or", "white=D"}, "at most 3 groups"},
    };
    for (const auto& [words, says] : queries) {
        sQuery query{};
        EXPECT_NE(UsageError([&] { ParseQueryWords(words, query); }).find(says), std::string::npos) << says;
    }
    const std::pair<const char*, const char*> fens[] = {
        {"rnbqkbnr/pppppppp w KQkq -", "8 ranks of 8"},
        {"rnbqkbnx/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -", "'x' is no piece"},
        {"rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e5", "en passant field"},
    };
    for (const auto& [fen, says] : fens)
        EXPECT_NE(UsageError([&] { ParseFen(fen); }).find(says), std::string::npos) << says;
}

}  // namespace
