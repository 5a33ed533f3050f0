#include "ovkey/eco_tree/eco_tree.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "ovkey/key_tree.h"
#include "pgn/pgn_game.h"
#include "pgn/read/pgn_read.h"
#include "siblings/game_driver.h"

namespace ovkey {
namespace {

// The reader keeps only its own tag set: the opening and variation names
// travel in the Event and Site slots.
std::string RenameNameTags(std::string_view text)
{
    std::string renamed(text);
    for (auto [from, to] : {std::pair<std::string_view, std::string_view>{"[Opening ", "[Event "},
                            {"[Variation ", "[Site "}})
        for (size_t at = renamed.find(from); at != std::string::npos;
             at = renamed.find(from, at + to.size()))
            renamed.replace(at, from.size(), to);
    return renamed;
}

int32_t CollectLine(PgnGame* game, int32_t, int32_t, intptr_t context)
{
    if (game->tags[TagFen - 1][0] != '\0')
        return 1;
    EcoLine line;
    line.code = game->tags[TagEco - 1];
    line.name = game->tags[TagEvent - 1];
    if (const std::string variation = game->tags[TagSite - 1]; !variation.empty())
        line.name += ": " + variation;
    for (uint32_t i = 0; i < game->moveCount; ++i)
        line.moves.push_back(static_cast<PackedMove>(game->moves[i] & ~(MoveLineEnd | MoveBranch)));
    reinterpret_cast<std::vector<EcoLine>*>(context)->push_back(std::move(line));
    return 1;
}

MoveXY ToMoveXY(PackedMove move)
{
    const int from = move & 0x3F, to = (move >> 8) & 0x3F;
    return {(from & 7) + 1, (from >> 3) + 1, (to & 7) + 1, (to >> 3) + 1, 0};
}

// Plays `moves` from the start in `game`; false when the store refuses one.
bool PlayFromStart(uint32_t game, const std::vector<PackedMove>& moves)
{
    if (NewGameErase(game) == 0)
        return false;
    for (PackedMove move : moves) {
        MoveXY xy = ToMoveXY(move);
        if (LegalMove(game, &xy) == 0 || AcceptMove(game, &xy) == 0)
            return false;
    }
    return true;
}

}  // namespace

std::vector<EcoLine> ReadEcoLines(std::string_view pgnText)
{
    std::vector<EcoLine> lines;
    const std::string text = RenameNameTags(pgnText);
    PgnGameStorage storage;
    if (!storage.Allocated() || text.size() >= INT32_MAX)
        return lines;
    PgnSource source;
    source.text = text.c_str();
    source.size = static_cast<int32_t>(text.size() + 1);  // the NUL ends the text
    PgnReadGames(source, storage.Game(), 0, nullptr, CollectLine,
                 reinterpret_cast<intptr_t>(&lines));
    return lines;
}

EcoTreeResult BuildEcoTree(std::span<const EcoLine> lines)
{
    EcoTreeResult result;
    const uint32_t game = IGGameOpenGame();
    if (game == 0)
        return result;
    // Shorter lines first, so that each line finds the lines it extends.
    std::vector<size_t> order(lines.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        return lines[a].moves.size() < lines[b].moves.size();
    });

    KeyTreeBatch batch;
    std::map<std::vector<PackedMove>, int32_t> keyOfLine;
    if (PlayFromStart(game, {}))
        if (const int32_t root = AddKey({"", "Start position", "", IGGameGetBoard(game), 0, {}})) {
            keyOfLine[{}] = root;
            ++result.keys;
        }
    for (size_t index : order) {
        const EcoLine& line = lines[index];
        if (result.keys == 0 || !PlayFromStart(game, line.moves)) {
            ++result.skipped;
            continue;
        }
        int32_t parent = 0;
        for (size_t length = line.moves.size(); length-- > 0 && parent == 0;) {
            const auto found = keyOfLine.find(std::vector<PackedMove>(
                line.moves.begin(), line.moves.begin() + static_cast<std::ptrdiff_t>(length)));
            if (found != keyOfLine.end())
                parent = found->second;
        }
        const int32_t key = AddKey({line.code, line.name, "", IGGameGetBoard(game), parent, line.moves});
        if (key == 0) {
            ++result.skipped;
            continue;
        }
        keyOfLine.emplace(line.moves, key);
        ++result.keys;
    }
    IGGameCloseGame(game);
    return result;
}

}  // namespace ovkey
