// Sorting a game file of the corpus by every sortable kind, both ways,
// checked against a stable sort of the same headers made here; and the
// index files, which later sorts use while the file grows and changes.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "keydb/key_test_support.h"
#include "keys/keys_corpus.h"
#include "keys/sort_kinds.h"

namespace {

namespace fs = std::filesystem;

constexpr int PrefixGames = 2000;

// A field's value as the sort must order it: the number first, then the
// text in the store's code page, byte by byte.
using Value = std::pair<int64_t, std::string>;

int32_t HeaderInt(OvGameBuffer game, int32_t field)
{
    int32_t value = 0;
    OvGetHeaderInfoInt(game, field, &value);
    return value;
}

// The value of `kind` for the game in `game`, through the header layer and
// the store's getters (for texts as stored).
Value ValueOf(OvGameBuffer game, int32_t number, int32_t kind)
{
    char moves[16];
    switch (kind) {
    case HdrPlace: return {0, IGGameGetPlace(game, nullptr)};
    case HdrSite: return {0, IGGameGetSite(game, nullptr)};
    case HdrAnnotator: return {0, IGGameGetAnnotator(game, nullptr)};
    case HdrWhite: case HdrPlayers: case HdrPlayersFull: case HdrWhiteFull:
        return {0, IGGameGetPlayer(game, 0, nullptr)};
    case HdrBlack: case HdrBlackFull: return {0, IGGameGetPlayer(game, 1, nullptr)};
    case HdrWhiteCountry: return {0, IGGameGetCountry(game, 0, nullptr)};
    case HdrBlackCountry: return {0, IGGameGetCountry(game, 1, nullptr)};
    case HdrWhiteTitle: return {0, IGGameGetTitle(game, 0, nullptr)};
    case HdrBlackTitle: return {0, IGGameGetTitle(game, 1, nullptr)};
    case HdrKeycode: return {0, IGGameGetKeycode(game, nullptr)};
    case HdrRemark: return {0, IGGameGetRemark(game, nullptr)};
    case HdrRound: return {IGGameGetRound(game), ""};
    case HdrResult: return {IGGameGetResult(game, 0), ""};
    case HdrDate: return {uint32_t(HeaderInt(game, HdrDate)), ""};
    case HdrSourceLoadnumber: return {number, ""};
    case HdrMoves: OvGetHeaderInfo(game, HdrMoves, moves, sizeof moves); return {std::atoi(moves), ""};
    default: return {HeaderInt(game, kind), ""};  // the Elo fields and the status
    }
}

// The corpus prefix in a game file with every seventh game deleted, the
// values of every sortable kind per game, and sorts checked against a
// stable sort of those values.
struct SortedCorpus {
    TempDir scratch;
    fs::path directory{scratch.Path()};
    OvGameFile file = 0;
    OvGameBuffer game = OvAllocGameBuffer();
    std::vector<int32_t> kinds;
    std::map<int32_t, std::vector<Value>> values;  // values[kind][n - 1]
    std::vector<bool> deleted;

    SortedCorpus()
    {
        for (const SortKind* kind = SortKinds; kind->headerField != 0; ++kind)
            if (kind->driverCode != 0)
                kinds.push_back(kind->headerField);
    }
    ~SortedCorpus()
    {
        OvFreeGameBuffer(game);
        OvCloseGamefile(file);
    }

    void ReadHeaders()
    {
        const int32_t count = OvGetGamesCount(file);
        values.clear();
        deleted.assign(size_t(count), false);
        for (int32_t n = 1; n <= count; ++n) {
            OvReadGameHeader(game, file, n);
            for (const int32_t kind : kinds)
                values[kind].push_back(ValueOf(game, n, kind));
            deleted[size_t(n - 1)] = HeaderInt(game, HdrStatus) & OV_STATUS_DELETED;
        }
    }

    std::vector<int32_t> Expected(int32_t kind, int32_t order, int32_t first = 1, bool skipDeleted = false) const
    {
        std::vector<int32_t> numbers;
        for (int32_t n = first; n <= int32_t(deleted.size()); ++n)
            if (!(skipDeleted && deleted[size_t(n - 1)]))
                numbers.push_back(n);
        const std::vector<Value>& of = values.at(kind);
        std::stable_sort(numbers.begin(), numbers.end(), [&](int32_t a, int32_t b) {
            return order != 0 ? of[size_t(a - 1)] < of[size_t(b - 1)] : of[size_t(b - 1)] < of[size_t(a - 1)];
        });
        return numbers;
    }

    void ExpectSortRight(int32_t kind, int32_t order)
    {
        std::vector<int32_t> numbers(deleted.size(), 0);
        EXPECT_EQ(OvIndexSort(file, reinterpret_cast<intptr_t>(numbers.data()), 1, 0, int32_t(numbers.size()),
                              kind, order), OV_SORT_DONE);
        EXPECT_EQ(numbers, Expected(kind, order)) << "kind " << kind << " order " << order;
    }

    void ExpectEverySortRight(const char* stage)
    {
        SCOPED_TRACE(stage);
        for (const int32_t kind : kinds)
            for (const int32_t order : {1, 0})
                ExpectSortRight(kind, order);
    }

    void MarkDeleted(bool mark)
    {
        for (int32_t n = 3; n <= PrefixGames; n += 7)
            mark ? OvDeleteGame(file, n) : OvUndeleteGame(file, n);
        ReadHeaders();
    }
};

TEST(SortedCorpus, EveryKindSortsBothWaysLikeTheHeadersWithAndWithoutIndexFiles)
{
    SortedCorpus corpus;
    const fs::path prefix = corpus.directory / "prefix.pgn";
    if (!CutCorpusPrefix(prefix, PrefixGames))
        GTEST_SKIP() << "needs the corpus " << CorpusPath;
    corpus.file = OvCreateGamefile((corpus.directory / "games.ovg").c_str());
    OvPgnImport(prefix.c_str(), corpus.file, 0, nullptr, nullptr, 0);
    corpus.MarkDeleted(true);
    ASSERT_EQ(corpus.deleted.size(), size_t(PrefixGames));
    corpus.ExpectEverySortRight("without index files");

    // From a first game on, without deleted games, and at most `count` of them.
    const std::vector<int32_t> expected = corpus.Expected(HdrBlack, 1, 500, true);
    std::vector<int32_t> numbers(expected.size() + 1, -1);
    const auto sort = [&](int32_t count) {
        return OvIndexSort(corpus.file, reinterpret_cast<intptr_t>(numbers.data()), 500, 1, count, HdrBlack, 1);
    };
    EXPECT_EQ(sort(10), OV_SORT_DONE);
    EXPECT_TRUE(std::equal(expected.begin(), expected.begin() + 10, numbers.begin()));
    EXPECT_EQ(numbers[10], -1);
    EXPECT_EQ(sort(int32_t(expected.size()) + 1), OV_SORT_FAILED) << "fewer games than asked for";
    EXPECT_EQ(OvIndexSort(corpus.file, 0, PrefixGames + 1, 0, 0, HdrWhite, 1), OV_SORT_NO_GAMES);

    // Index files, then more games behind those they cover and a damaged file.
    const fs::path directory = corpus.directory / "index";
    ASSERT_EQ(OvIndexCreateUpdate(corpus.file, directory.c_str(), 0, 0, 0, 0, 0), 19);
    ASSERT_TRUE(CutCorpusPrefix(corpus.directory / "more.pgn", 40));
    OvPgnImport((corpus.directory / "more.pgn").c_str(), corpus.file, 0, nullptr, nullptr, 0);
    fs::resize_file(*fs::directory_iterator(directory), 30);
    corpus.ReadHeaders();
    corpus.ExpectEverySortRight("grown file with index files");
    // With no deleted game left, the status index serves too.
    corpus.MarkDeleted(false);
    corpus.ExpectSortRight(HdrStatus, 0);
    corpus.MarkDeleted(true);
    corpus.ExpectSortRight(HdrStatus, 1);

    EXPECT_EQ(OvIndexDelete(corpus.file, HdrStatus, directory.c_str()), 0);
    EXPECT_EQ(OvIndexDelete(corpus.file, HdrStatus, directory.c_str()), -1);
    EXPECT_EQ(std::distance(fs::directory_iterator(directory), fs::directory_iterator()), 18);
    EXPECT_EQ(OvIndexCreateUpdate(corpus.file, directory.c_str(), 1 << 19, 0, 0, 0, 0), 0) << "no such code";
    EXPECT_EQ(OvIndexCreateUpdate(corpus.file, directory.c_str(), 3, 0, 0, 0, 0), 2);
}

}  // namespace
