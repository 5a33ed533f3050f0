// The corpus read, written, and read again: the second reading gives the
// record of the first, and writing it again gives the same bytes.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "pgn/write/game_writer.h"
#include "pgn/write/tag_formats.h"
#include "pgn_write/sink_text.h"
#include "support/corpus.h"
#include "support/read_games.h"

namespace {

// A tag value in the form the writer gives it. SetUp and FEN are left out:
// the start position stands in the record itself. (The corpus has no time tags.)
std::string WrittenTagForm(const PgnGame& game, int32_t tag)
{
    std::string value = game.tags[tag - 1];
    switch (tag) {
    case TagEvent: case TagSite: case TagRound: case TagWhite: case TagBlack:
        return value.empty() ? "?" : value;
    case TagDate: {
        int32_t year, month, day;
        ParseDateText(value, year, month, day);
        char date[DateTagSize];
        FormatDateTag(date, year, month, day);
        return date;
    }
    case TagSetUp: case TagFen:
        return "";
    default:
        return value;
    }
}

// Everything the record says about the game, as text.
std::string Snapshot(const PgnGame& game)
{
    std::string text = Capture(game).Record() + " result " + std::to_string(game.resultToken);
    for (int32_t tag = TagEvent; tag <= TagRemark; ++tag)
        text.append("\n").append(PgnTagNames[tag - 1]).append("=").append(WrittenTagForm(game, tag));
    return text + "\n";
}

std::string WriteToText(const PgnGame& game)
{
    PgnSink sink;
    PgnWriteGame(sink, game);
    return TakeText(sink);
}

struct Readings {
    std::vector<std::string> written;  // each game as the writer wrote it at the first reading
    std::vector<size_t> hashes;        // of each game's snapshot at the first reading
    size_t count = 0;                  // games of the second reading
    std::vector<std::string> faults;
};

int32_t KeepFirstReading(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& readings = *reinterpret_cast<Readings*>(context);
    readings.hashes.push_back(std::hash<std::string>{}(Snapshot(*game)));
    readings.written.push_back(WriteToText(*game));
    return readings.written.size() < CorpusGameLimit ? 1 : 0;
}

int32_t CompareSecondReading(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& readings = *reinterpret_cast<Readings*>(context);
    const size_t index = readings.count++;
    if (index >= readings.written.size()) {
        readings.faults.push_back("more games than written");
        return 0;
    }
    const std::string& writtenFirst = readings.written[index];
    const std::string snapshot = Snapshot(*game);
    if (std::hash<std::string>{}(snapshot) != readings.hashes[index])
        readings.faults.push_back("game " + std::to_string(index + 1) + " reads back differently:\n" + writtenFirst +
                                  "read back as\n" + snapshot);
    else if (WriteToText(*game) != writtenFirst)
        readings.faults.push_back("game " + std::to_string(index + 1) + " is written differently:\n" + writtenFirst +
                                  "then\n" + WriteToText(*game));
    return readings.faults.size() < 5 ? 1 : 0;
}

TEST(RoundTrip, SelfPlayCorpus)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(CorpusPath, "rb"), &std::fclose);
    if (!file)
        GTEST_SKIP() << CorpusPath << " is not there";
    PgnGameStorage storage;
    ASSERT_TRUE(storage.Allocated());
    Readings readings;
    const auto context = reinterpret_cast<intptr_t>(&readings);
    PgnReadGames(PgnSource{file.get(), nullptr, 0}, storage.Game(), 0, "NBRQK", &KeepFirstReading, context);
    ASSERT_GT(readings.written.size(), 0u);

    std::string written;
    for (const std::string& game : readings.written)
        written += game;
    const PgnSource source{nullptr, written.c_str(), static_cast<int32_t>(written.size() + 1)};
    PgnReadGames(source, storage.Game(), 0, "NBRQK", &CompareSecondReading, context);
    for (const std::string& fault : readings.faults)
        ADD_FAILURE() << fault;
    EXPECT_EQ(readings.count, readings.written.size());
}

}  // namespace
