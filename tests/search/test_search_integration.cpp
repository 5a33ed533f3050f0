// The searches on the real game store, over a prefix of the self-play corpus
// imported through the library. Header hits are checked against the tags as
// the PGN text states them, position hits against pgn-extract's count.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "orvan.h"
#include "pgn/write/fen_writer.h"
#include "search/corpus_support.h"
#include "search/query_builder.h"
#include "tests/store/store_helpers.h"

namespace {

namespace fs = std::filesystem;

const char* const PgnExtract = "/usr/games/pgn-extract";
constexpr int PrefixGames = 2000;

struct Corpus {
    TempDir directory;
    std::string pgnPath = directory.File("prefix.pgn");
    std::vector<Tags> games;  // game n is games[n - 1]
    OvGameFile file = 0;
};

Corpus* TheCorpus = nullptr;

Hits Search(const sQuery& query)
{
    Hits hits;
    OvSearchGameHdrs(TheCorpus->file, &query, &CollectHits, UserOf(hits));
    return hits;
}

std::vector<int32_t> NumbersWhere(const std::function<bool(const Tags&)>& holds)
{
    std::vector<int32_t> numbers;
    for (size_t index = 0; index < TheCorpus->games.size(); ++index)
        if (holds(TheCorpus->games[index]))
            numbers.push_back(static_cast<int32_t>(index + 1));
    return numbers;
}

std::string Tag(const Tags& tags, const char* name) { return tags.contains(name) ? tags.at(name) : ""; }

int Number(const Tags& tags, const char* name) { return std::atoi(Tag(tags, name).c_str()); }

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return text;
}

class SearchCorpus : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        TheCorpus = fs::exists(CorpusPath) ? new Corpus : nullptr;
        if (TheCorpus == nullptr)
            return;
        TheCorpus->games = CopyCorpusPrefix(TheCorpus->pgnPath, PrefixGames);
        TheCorpus->file = OvCreateGamefile(TheCorpus->directory.File("prefix.ovg").c_str());
        OvPgnImport(TheCorpus->pgnPath.c_str(), TheCorpus->file, 0, nullptr, nullptr, 0);
    }
    static void TearDownTestSuite()
    {
        if (TheCorpus != nullptr)
            OvCloseGamefile(TheCorpus->file);
        delete std::exchange(TheCorpus, nullptr);
    }
    void SetUp() override
    {
        if (TheCorpus == nullptr)
            GTEST_SKIP() << "corpus not found at " << CorpusPath;
        ASSERT_EQ(OvGetGamesCount(TheCorpus->file), PrefixGames) << "every game of the prefix is stored";
    }
};

// Two groups: the wins of the player with the most White games.
TEST_F(SearchCorpus, HeaderQueriesAgreeWithTheTags)
{
    std::map<std::string, int> gamesOf;
    for (const Tags& tags : TheCorpus->games)
        ++gamesOf[Tag(tags, "White")];
    const std::string player =
        std::max_element(gamesOf.begin(), gamesOf.end(), [](auto& a, auto& b) { return a.second < b.second; })->first;

    sQuery query = MakeQuery(QueryHeader);
    SetCondition(query, 0, 0, QfWhite, QopEquals, Lower(player).c_str());
    SetCondition(query, 1, 0, QfResult, QopEquals, "1-0");
    SetCondition(query, 0, 1, QfBlack, QopEquals, player.c_str());
    SetCondition(query, 1, 1, QfResult, QopEquals, "0-1");
    const Hits hits = Search(query);
    const auto expected = NumbersWhere([&](const Tags& tags) {
        return (Tag(tags, "White") == player && Tag(tags, "Result") == "1-0") ||
               (Tag(tags, "Black") == player && Tag(tags, "Result") == "0-1");
    });
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(hits.numbers, expected) << player;
    EXPECT_EQ(hits.total, PrefixGames);

    // Single conditions, in the last column of the first group; the matching
    // of each field and operator is tested on single games.
    const struct {
        const char* name;
        int32_t field, op;
        const char* value;
        std::function<bool(const Tags&)> holds;
    } cases[] = {
        {"either Elo at least 2500", QfElo, QopNotBeginsWith, "2500",
         [](const Tags& t) { return Number(t, "WhiteElo") >= 2500 || Number(t, "BlackElo") >= 2500; }},
        {"year 1994", QfDate, QopEquals, "1994", [](const Tags& t) { return Number(t, "Date") == 1994; }},
        {"key code B2x", QfKeycode, QopBeginsWith, "b2", [](const Tags& t) { return Tag(t, "ECO").starts_with("B2"); }},
        {"a player named Ulrich", QfPlayer, QopContains, "ULRICH",
         [](const Tags& t) { return Lower(Tag(t, "White") + Tag(t, "Black")).find("ulrich") != std::string::npos; }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        sQuery query = MakeQuery(QueryHeader);
        SetCondition(query, 0, 2, c.field, c.op, c.value);
        EXPECT_EQ(Search(query).numbers, NumbersWhere(c.holds));
    }

    sQuery firstTen = MakeQuery(QueryHeader);
    SetCondition(firstTen, 0, 0, QfLoadnumber, QopContains, "10");
    EXPECT_EQ(Search(firstTen).numbers, (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}))
        << "the number each game has in the searched file";
}

// Games of the prefix that reach `position` by pgn-extract's count; -1 when
// the tool cannot be run.
int CountWithPgnExtract(const sPosition& position)
{
    char fen[FenTextSize];
    PositionToFen(position, 0, fen);
    const std::string text(fen), board = text.substr(0, text.find(' ', text.find(' ') + 1));  // placement and side
    const std::string criteria = TheCorpus->directory.File("criteria.txt");
    std::ofstream(criteria) << "FENPattern \"" << board << "\"\n";
    const std::string command = std::string(PgnExtract) + " -s -t " + criteria + " " + TheCorpus->pgnPath;
    FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
    if (pipe == nullptr)
        return -1;
    int games = 0;
    char line[4096];
    while (std::fgets(line, sizeof line, pipe) != nullptr)
        games += std::string_view(line).starts_with("[Event ");
    return pclose(pipe) == 0 ? games : -1;
}

TEST_F(SearchCorpus, PositionSearchAgreesWithPgnExtract)
{
    if (!fs::exists(PgnExtract))
        GTEST_SKIP() << PgnExtract << " not installed";
    const OvGameBuffer game = OvAllocGameBuffer();
    for (const auto& [number, ply] : {std::pair{17, 9}, {1200, 16}}) {
        SCOPED_TRACE("game " + std::to_string(number) + " ply " + std::to_string(ply));
        ASSERT_EQ(OvReadGame(game, TheCorpus->file, number), 1);
        OvGotoMove(game, ply);
        sPosition position;
        OvGetCurrentPos(game, &position);
        const int expected = CountWithPgnExtract(position);
        ASSERT_GE(expected, 1);
        Hits hits;
        OvSearchPosGames(TheCorpus->file, &position, 0, &CollectHits, UserOf(hits));
        EXPECT_EQ(int(hits.numbers.size()), expected);
        EXPECT_TRUE(std::find(hits.numbers.begin(), hits.numbers.end(), number) != hits.numbers.end());
    }
    OvFreeGameBuffer(game);
}

}  // namespace
