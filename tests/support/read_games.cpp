#include "support/read_games.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"

namespace {

struct Collector { std::vector<ReadGame> games; size_t stopAfter; };

int32_t Collect(PgnGame* game, int32_t hasComment, int32_t movesRead, intptr_t context)
{
    auto* collector = reinterpret_cast<Collector*>(context);
    collector->games.push_back(Capture(*game, hasComment, movesRead));
    return collector->games.size() < collector->stopAfter ? 1 : 0;
}

std::vector<ReadGame> Read(const PgnSource& source, uint32_t flags, const char* pieceLetters,
                           size_t stopAfter, int32_t* result)
{
    PgnGameStorage storage;
    EXPECT_TRUE(storage.Allocated());
    Collector collector{{}, stopAfter};
    const int32_t read =
        PgnReadGames(source, storage.Game(), flags, pieceLetters, &Collect, reinterpret_cast<intptr_t>(&collector));
    if (result != nullptr)
        *result = read;
    return collector.games;
}

}  // namespace

std::string MoveWord(uint16_t move)
{
    std::string word;
    for (int square : {move & 63, (move >> 8) & 63}) {
        word += static_cast<char>('a' + (square & 7));
        word += static_cast<char>('1' + (square >> 3));
    }
    if (move >> 14)
        word += "rbn"[(move >> 14) - 1];
    if (move & MoveBranch)
        word += '*';
    if (move & MoveLineEnd)
        word += '|';
    return word;
}

std::vector<std::string> ReadGame::Words() const
{
    std::vector<std::string> words(moves.size());
    std::transform(moves.begin(), moves.end(), words.begin(), MoveWord);
    return words;
}

std::string ReadGame::Record() const
{
    std::string text = "main " + std::to_string(moveCount) + " tree " + std::to_string(treeCount) + " first " +
                       std::to_string(firstMoveNumber) + " position";
    for (uint8_t byte : std::string_view(reinterpret_cast<const char*>(&position), sizeof position))
        text += ' ' + std::to_string(byte);
    text += " moves";
    for (const std::string& word : Words())
        text += ' ' + word;
    for (const auto& [index, nag] : nags)
        text += " $" + std::to_string(index) + ":" + std::to_string(nag);
    for (const auto& [index, comment] : comments)
        text += " {" + std::to_string(index) + ":" + comment + "}";
    return text;
}

ReadGame Capture(const PgnGame& game, int32_t hasComment, int32_t movesRead)
{
    ReadGame read;
    for (int i = 0; i < PGN_TAG_COUNT; ++i)
        read.tags[i] = game.tags[i];
    read.moveCount = game.moveCount;
    read.treeCount = game.treeCount;
    read.firstMoveNumber = game.firstMoveNumber;
    read.resultToken = game.resultToken;
    read.hasComment = hasComment;
    read.movesRead = movesRead;
    if (!movesRead)
        return read;
    read.position = *game.position;
    const uint32_t entries = game.treeCount != 0 ? game.treeCount : game.moveCount;
    read.moves.assign(game.moves, game.moves + entries);
    for (uint32_t i = 0; i <= entries; ++i) {
        if (game.nags[i] != 0)
            read.nags[i] = game.nags[i];
        if (game.commentIndex[i] != 0)
            read.comments[i] = game.commentText + game.commentIndex[i];
    }
    return read;
}

std::vector<ReadGame> ReadText(std::string_view text, uint32_t flags, const char* pieceLetters,
                               size_t stopAfter, int32_t* result)
{
    const std::string copy(text);
    return Read(PgnSource{nullptr, copy.c_str(), static_cast<int32_t>(copy.size() + 1)}, flags, pieceLetters, stopAfter, result);
}

ReadGame ReadOne(std::string_view text, uint32_t flags, const char* pieceLetters)
{
    const std::vector<ReadGame> games = ReadText(text, flags, pieceLetters);
    EXPECT_EQ(games.size(), 1u) << text;
    return games.empty() ? ReadGame{} : games.front();
}

std::vector<ReadGame> ReadGamesOfFile(const std::string& path, size_t limit)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file)
        return {};
    return Read(PgnSource{file.get(), nullptr, 0}, 0, "NBRQK", limit, nullptr);
}
