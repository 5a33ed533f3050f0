#include "pgn/pgn_game.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "chess/position.h"


void ResetPgnGame(PgnGame* game)
{
    for (char* slot : game->tags) {
        slot[0] = '\0';
    }
    game->moveCount = 0;
    game->treeCount = 0;
    game->firstMoveNumber = 0;
    game->moves[0] = 0;
    game->nags[0] = 0;
    game->commentIndex[0] = 0;
    game->commentUsed = 1;
    game->resultToken = PgnResultNone;
}

void ClearPgnGame(PgnGame* game)
{
    ResetPgnGame(game);
    std::fill_n(game->commentIndex, PgnAnnotationEntries, 0u);
    std::fill_n(game->nags, PgnAnnotationEntries, uint16_t{0});
    *game->position = StartPosition;
}

void ResultTokenText(char* dest, int32_t number)
{
    const char* text = PgnResultTokens[static_cast<uint32_t>(number) % PgnResultTokens.size()];
    std::memcpy(dest, text, std::strlen(text) + 1);
}

uint32_t PgnAlternativeEntry(const PackedMove* moves, uint32_t branch, uint32_t end)
{
    int32_t open = 0;
    for (uint32_t entry = branch; entry < end; ++entry) {
        if (moves[entry] & MoveBranch)
            ++open;
        if (moves[entry] & MoveLineEnd)
            --open;
        if (open == 0)
            return entry + 1;
    }
    return end;
}

uint16_t* AllocateNagArray()
{
    return new (std::nothrow) uint16_t[PgnAnnotationEntries];
}

uint32_t* AllocateCommentIndexArray()
{
    return new (std::nothrow) uint32_t[PgnAnnotationEntries];
}

void FreeNagArray(uint16_t* nags)
{
    delete[] nags;
}

void FreeCommentIndexArray(uint32_t* commentIndex)
{
    delete[] commentIndex;
}

PgnGameStorage::PgnGameStorage()
{
    game_.position = &position_;
    game_.moves = moves_;
    game_.commentText = commentText_;
    game_.nags = AllocateNagArray();
    game_.commentIndex = AllocateCommentIndexArray();
    if (Allocated()) {
        std::fill_n(game_.nags, PgnAnnotationEntries, uint16_t{0});
        std::fill_n(game_.commentIndex, PgnAnnotationEntries, 0u);
        ResetPgnGame(&game_);
    }
}

PgnGameStorage::~PgnGameStorage()
{
    FreeNagArray(game_.nags);
    FreeCommentIndexArray(game_.commentIndex);
}
