#include "pgn_snapshot.h"

#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"

namespace {

struct Collector {
    std::vector<GameSnapshot> games;
    size_t limit;
};

int32_t Collect(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    auto& collector = *reinterpret_cast<Collector*>(context);
    collector.games.push_back(Snapshot(*game));
    return collector.games.size() < collector.limit ? 1 : 0;
}

std::vector<GameSnapshot> Read(const PgnSource& source, size_t limit)
{
    PgnGameStorage storage;
    Collector collector{{}, limit};
    PgnReadGames(source, storage.Game(), 0, "NBRQK", Collect, reinterpret_cast<intptr_t>(&collector));
    return collector.games;
}

}  // namespace

GameSnapshot Snapshot(const PgnGame& game)
{
    GameSnapshot snapshot;
    for (int i = 0; i < PGN_TAG_COUNT; ++i)
        snapshot.tags[i] = game.tags[i];
    snapshot.resultToken = game.resultToken;
    snapshot.moveCount = game.moveCount;
    snapshot.treeCount = game.treeCount;
    snapshot.firstMoveNumber = game.firstMoveNumber;
    snapshot.position.assign(reinterpret_cast<const char*>(game.position), sizeof(sPosition));
    const uint32_t entries = game.treeCount != 0 ? game.treeCount : game.moveCount;
    snapshot.moves.assign(game.moves, game.moves + entries);
    for (uint32_t index = 0; index <= entries; ++index) {
        if (game.nags[index] != 0)
            snapshot.nags[index] = game.nags[index];
        if (game.commentIndex[index] != 0)
            snapshot.comments[index] = game.commentText + game.commentIndex[index];
    }
    return snapshot;
}

std::vector<GameSnapshot> ReadPgnFile(const std::string& path, size_t limit)
{
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return {};
    PgnSource source;
    source.file = file;
    std::vector<GameSnapshot> games = Read(source, limit);
    std::fclose(file);
    return games;
}

std::vector<GameSnapshot> ReadPgnText(std::string_view text)
{
    const std::string terminated(text);
    PgnSource source;
    source.text = terminated.c_str();
    source.size = static_cast<int32_t>(terminated.size() + 1);
    return Read(source, SIZE_MAX);
}

HGLOBAL MemoryText(std::string_view text)
{
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, text.size() + 1);
    std::memcpy(GlobalLock(block), text.data(), text.size());
    GlobalUnlock(block);
    return block;
}

std::string TextOfBlock(HGLOBAL block)
{
    const auto* data = static_cast<const char*>(GlobalLock(block));
    std::string text(data, strnlen(data, GlobalSize(block)));
    GlobalUnlock(block);
    return text;
}

ScratchPath::ScratchPath(const std::string& name)
    : directory_(std::filesystem::temp_directory_path() /
                 ("orvan_ie_" + std::to_string(getpid()) + "_" + name)),
      path_((directory_ / name).string())
{
    std::filesystem::remove_all(directory_);
    std::filesystem::create_directories(directory_);
}
