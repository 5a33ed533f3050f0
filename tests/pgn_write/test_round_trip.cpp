// Real PGN files read, written, and read again: the second reading gives the
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
// the start position stands in the record itself.
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
    case TagWhiteTime: case TagBlackTime: {
        int32_t hours, minutes, seconds;
        ParseTimeText(value, hours, minutes, seconds);
        if (int64_t{hours} + minutes + seconds <= 0)
            return "";
        char time[TimeTagSize];
        FormatTimeTag(time, hours, minutes, seconds);
        return time;
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

struct FirstReading {
    std::string written;         // every game as the writer wrote it
    std::vector<size_t> ends;    // where each game's text ends in `written`
    std::vector<size_t> hashes;  // of each game's snapshot
};

int32_t KeepFirstReading(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& first = *reinterpret_cast<FirstReading*>(context);
    first.hashes.push_back(std::hash<std::string>{}(Snapshot(*game)));
    first.written += WriteToText(*game);
    first.ends.push_back(first.written.size());
    return first.ends.size() < CorpusGameLimit ? 1 : 0;
}

struct SecondReading {
    const FirstReading* first = nullptr;
    size_t count = 0;
    std::vector<std::string> faults;
};

int32_t CompareSecondReading(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& second = *reinterpret_cast<SecondReading*>(context);
    const FirstReading& first = *second.first;
    size_t index = second.count++;
    if (index >= first.ends.size()) {
        second.faults.push_back("more games than written");
        return 0;
    }
    size_t start = index == 0 ? 0 : first.ends[index - 1];
    std::string writtenFirst = first.written.substr(start, first.ends[index] - start);
    std::string snapshot = Snapshot(*game);
    if (std::hash<std::string>{}(snapshot) != first.hashes[index])
        second.faults.push_back("game " + std::to_string(index + 1) + " reads back differently:\n" +
                                writtenFirst + "read back as\n" + snapshot);
    else if (WriteToText(*game) != writtenFirst)
        second.faults.push_back("game " + std::to_string(index + 1) + " is written differently:\n" +
                                writtenFirst + "then\n" + WriteToText(*game));
    return second.faults.size() < 5 ? 1 : 0;
}

void RoundTrip(const std::string& path)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file)
        GTEST_SKIP() << path << " is not there";

    PgnGameStorage storage;
    ASSERT_TRUE(storage.Allocated());
    FirstReading first;
    PgnReadGames(PgnSource{file.get(), nullptr, 0}, storage.Game(), 0, "NBRQK", &KeepFirstReading,
                 reinterpret_cast<intptr_t>(&first));
    ASSERT_GT(first.ends.size(), 0u);

    SecondReading second;
    second.first = &first;
    PgnSource written{nullptr, first.written.c_str(), static_cast<int32_t>(first.written.size() + 1)};
    PgnReadGames(written, storage.Game(), 0, "NBRQK", &CompareSecondReading,
                 reinterpret_cast<intptr_t>(&second));
    for (const std::string& fault : second.faults)
        ADD_FAILURE() << fault;
    EXPECT_EQ(second.count, first.ends.size());
}

TEST(RoundTrip, EcoFile) { RoundTrip(EcoPath); }
TEST(RoundTrip, SelfPlayCorpus) { RoundTrip(CorpusPath); }

}  // namespace
