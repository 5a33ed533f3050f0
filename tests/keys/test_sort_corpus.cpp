// Sorting a game file of the corpus by every sortable kind, both ways,
// checked against a stable sort of the same headers made here; and the
// index files, which later sorts use while the file grows and changes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "keydb/key_test_support.h"
#include "keys/keys_corpus.h"
#include "keys/sort_kinds.h"

namespace {

namespace fs = std::filesystem;

constexpr int PrefixGames = 2000;

// A field's value as the sort must order it: the number first, then the
// text in the store's code page, byte by byte.
struct Value {
    int64_t number = 0;
    std::string text;
    auto operator<=>(const Value&) const = default;
};

std::string Text(const char* text) { return text == nullptr ? std::string() : std::string(text); }

int32_t HeaderInt(OvGameBuffer game, int32_t field)
{
    int32_t value = 0;
    OvGetHeaderInfoInt(game, field, &value);
    return value;
}

// The value of `kind` for the game in `game`, read through the header layer
// and the store's getters (for texts as stored).
Value ValueOf(OvGameBuffer game, int32_t number, int32_t kind)
{
    char moves[16];
    switch (kind) {
    case HdrPlace: return {0, Text(IGGameGetPlace(game, nullptr))};
    case HdrSite: return {0, Text(IGGameGetSite(game, nullptr))};
    case HdrAnnotator: return {0, Text(IGGameGetAnnotator(game, nullptr))};
    case HdrWhite: case HdrPlayers: case HdrPlayersFull: case HdrWhiteFull:
        return {0, Text(IGGameGetPlayer(game, 0, nullptr))};
    case HdrBlack: case HdrBlackFull: return {0, Text(IGGameGetPlayer(game, 1, nullptr))};
    case HdrWhiteCountry: return {0, Text(IGGameGetCountry(game, 0, nullptr))};
    case HdrBlackCountry: return {0, Text(IGGameGetCountry(game, 1, nullptr))};
    case HdrWhiteTitle: return {0, Text(IGGameGetTitle(game, 0, nullptr))};
    case HdrBlackTitle: return {0, Text(IGGameGetTitle(game, 1, nullptr))};
    case HdrKeycode: return {0, Text(IGGameGetKeycode(game, nullptr))};
    case HdrRemark: return {0, Text(IGGameGetRemark(game, nullptr))};
    case HdrRound: return {IGGameGetRound(game), ""};
    case HdrWhiteElo: return {HeaderInt(game, HdrWhiteElo), ""};
    case HdrBlackElo: return {HeaderInt(game, HdrBlackElo), ""};
    case HdrResult: return {IGGameGetResult(game, 0), ""};
    case HdrDate: return {uint32_t(HeaderInt(game, HdrDate)), ""};
    case HdrSourceLoadnumber: return {number, ""};
    case HdrMoves: OvGetHeaderInfo(game, HdrMoves, moves, sizeof moves); return {std::atoi(moves), ""};
    case HdrStatus: return {HeaderInt(game, HdrStatus), ""};
    }
    ADD_FAILURE() << "no value for kind " << kind;
    return {};
}

std::vector<int32_t> SortableKinds()
{
    std::vector<int32_t> kinds;
    for (const SortKind* kind = SortKinds; kind->headerField != 0; ++kind)
        if (kind->driverCode != 0)
            kinds.push_back(kind->headerField);
    return kinds;
}

struct SortedCorpus {
    TempDir scratch;
    fs::path directory{scratch.Path()};
    OvGameFile file = 0;
    OvGameBuffer game = 0;
    // values[kind][n - 1], and whether game n is deleted.
    std::map<int32_t, std::vector<Value>> values;
    std::vector<bool> deleted;

    void ReadHeaders()
    {
        const int32_t count = OvGetGamesCount(file);
        values.clear();
        deleted.assign(size_t(count), false);
        for (int32_t n = 1; n <= count; ++n) {
            OvReadGameHeader(game, file, n);
            for (const int32_t kind : SortableKinds())
                values[kind].push_back(ValueOf(game, n, kind));
            deleted[size_t(n - 1)] = HeaderInt(game, HdrStatus) & OV_STATUS_DELETED;
        }
    }

    std::vector<int32_t> Expected(int32_t kind, int32_t order, int32_t first, bool skipDeleted) const
    {
        std::vector<int32_t> numbers;
        for (int32_t n = std::max(first, 1); n <= int32_t(deleted.size()); ++n)
            if (!(skipDeleted && deleted[size_t(n - 1)]))
                numbers.push_back(n);
        const std::vector<Value>& of = values.at(kind);
        std::stable_sort(numbers.begin(), numbers.end(), [&](int32_t a, int32_t b) {
            return order != 0 ? of[size_t(a - 1)] < of[size_t(b - 1)] : of[size_t(b - 1)] < of[size_t(a - 1)];
        });
        return numbers;
    }
};
SortedCorpus* Corpus = nullptr;

std::vector<int32_t> Sort(int32_t kind, int32_t order, int32_t first = 1, bool skipDeleted = false,
                          int32_t* result = nullptr)
{
    std::vector<int32_t> numbers(Corpus->deleted.size(), 0);
    const int32_t code = OvIndexSort(Corpus->file, reinterpret_cast<intptr_t>(numbers.data()), first, skipDeleted,
                                     int32_t(numbers.size()), kind, order);
    if (result != nullptr)
        *result = code;
    const size_t stored = Corpus->Expected(kind, order, first, skipDeleted).size();
    numbers.resize(std::min(stored, numbers.size()));
    return numbers;
}

void ExpectEverySortRight(const char* stage)
{
    for (const int32_t kind : SortableKinds())
        for (const int32_t order : {1, 0})
            EXPECT_EQ(Sort(kind, order), Corpus->Expected(kind, order, 1, false))
                << stage << ": kind " << kind << " order " << order;
}

class SortedCorpusTest : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        auto corpus = std::make_unique<SortedCorpus>();
        const fs::path prefix = corpus->directory / "prefix.pgn";
        if (!CutCorpusPrefix(prefix, PrefixGames))
            return;
        corpus->file = OvCreateGamefile((corpus->directory / "games.ovg").c_str());
        OvPgnImport(prefix.c_str(), corpus->file, 0, nullptr, nullptr, 0);
        for (int32_t n = 3; n <= PrefixGames; n += 7)
            OvDeleteGame(corpus->file, n);
        corpus->game = OvAllocGameBuffer();
        Corpus = corpus.release();
        Corpus->ReadHeaders();
    }
    static void TearDownTestSuite()
    {
        if (Corpus == nullptr)
            return;
        OvFreeGameBuffer(Corpus->game);
        OvCloseGamefile(Corpus->file);
        delete Corpus;
        Corpus = nullptr;
    }
    void SetUp() override
    {
        if (Corpus == nullptr)
            GTEST_SKIP() << "needs the corpus " << CorpusPath;
    }
};

TEST_F(SortedCorpusTest, EveryKindSortsBothWaysLikeTheHeaders)
{
    ASSERT_EQ(Corpus->deleted.size(), size_t(PrefixGames));
    ExpectEverySortRight("without index files");
}

TEST_F(SortedCorpusTest, FirstGameDeletedGamesAndCount)
{
    const std::vector<int32_t> expected = Corpus->Expected(HdrBlack, 1, 500, true);
    ASSERT_LT(expected.size(), size_t(PrefixGames - 499));
    std::vector<int32_t> numbers(expected.size() + 1, -1);
    const auto sort = [&](int32_t count) {
        return OvIndexSort(Corpus->file, reinterpret_cast<intptr_t>(numbers.data()), 500, 1, count, HdrBlack, 1);
    };
    EXPECT_EQ(sort(int32_t(expected.size())), OV_SORT_DONE);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), numbers.begin()));
    EXPECT_EQ(numbers.back(), -1);
    EXPECT_EQ(sort(int32_t(expected.size()) + 1), OV_SORT_FAILED) << "fewer games than asked for";
    std::fill(numbers.begin(), numbers.end(), -1);
    EXPECT_EQ(sort(10), OV_SORT_DONE);
    EXPECT_TRUE(std::equal(expected.begin(), expected.begin() + 10, numbers.begin()));
    EXPECT_EQ(numbers[10], -1);
    EXPECT_EQ(OvIndexSort(Corpus->file, 0, PrefixGames + 1, 0, 0, HdrWhite, 1), OV_SORT_NO_GAMES);
    EXPECT_EQ(OvIndexSort(Corpus->file, 0, 1, 0, 5, HdrWhite, 1), OV_SORT_FAILED) << "no room given";
    EXPECT_EQ(OvIndexSort(0, 0, 1, 0, 0, HdrWhite, 1), OV_SORT_FAILED) << "no file";
}

TEST_F(SortedCorpusTest, IndexFilesServeSortsAsTheFileChanges)
{
    const fs::path directory = Corpus->directory / "index";
    ASSERT_EQ(OvIndexCreateUpdate(Corpus->file, directory.c_str(), 0, 0, 0, 0, 0), 19);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory), fs::directory_iterator()), 19);
    ExpectEverySortRight("fresh index files");

    // More games behind those the files cover, and damaged files.
    const fs::path more = Corpus->directory / "more.pgn";
    ASSERT_TRUE(CutCorpusPrefix(more, 40));
    OvPgnImport(more.c_str(), Corpus->file, 0, nullptr, nullptr, 0);
    fs::resize_file(*fs::directory_iterator(directory), 30);
    Corpus->ReadHeaders();
    ExpectEverySortRight("grown file");

    // With no deleted game left, the status index serves too.
    for (int32_t n = 3; n <= PrefixGames; n += 7)
        OvUndeleteGame(Corpus->file, n);
    Corpus->ReadHeaders();
    EXPECT_EQ(Sort(HdrStatus, 0), Corpus->Expected(HdrStatus, 0, 1, false));
    for (int32_t n = 3; n <= PrefixGames; n += 7)
        OvDeleteGame(Corpus->file, n);
    Corpus->ReadHeaders();
    EXPECT_EQ(Sort(HdrStatus, 1), Corpus->Expected(HdrStatus, 1, 1, false));

    EXPECT_EQ(OvIndexDelete(Corpus->file, HdrStatus, directory.c_str()), 0);
    EXPECT_EQ(OvIndexDelete(Corpus->file, HdrStatus, directory.c_str()), -1);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory), fs::directory_iterator()), 18);
    EXPECT_EQ(OvIndexCreateUpdate(Corpus->file, directory.c_str(), 1 << 19, 0, 0, 0, 0), 0) << "no such code";
    EXPECT_EQ(OvIndexCreateUpdate(Corpus->file, directory.c_str(), 3, 0, 0, 0, 0), 2);
}

}  // namespace
