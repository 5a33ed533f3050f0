#include "pgn/read/game_builder.h"

#include <algorithm>

#include "chess/position.h"
#include "frame/diagnostics.h"
#include "pgn/pgn_game.h"
#include "siblings/game_driver.h"

namespace {

// A move with alternatives, waiting for its side lines to be built.
struct PendingBranch {
    int32_t played;  // moves from the start position to the branch point
    uint32_t index;  // entry in moves of the move with MoveBranch
};

class BranchStack {
public:
    bool Empty() const { return size_ == 0; }
    bool Push(PendingBranch branch)
    {
        if (size_ == BuilderBranchStackSize)
            return false;
        entries_[size_++] = branch;
        return true;
    }
    PendingBranch Pop() { return entries_[--size_]; }

private:
    PendingBranch entries_[BuilderBranchStackSize];
    int size_ = 0;
};

// The store marks a promotion with the queen; the piece of the move replaces it.
void SetPromotionPiece(MoveXY& xy, uint32_t move)
{
    constexpr int32_t WhitePieces[4] = {DrvWhiteQueen, DrvWhiteRook, DrvWhiteBishop, DrvWhiteKnight};
    constexpr int32_t BlackPieces[4] = {DrvBlackQueen, DrvBlackRook, DrvBlackBishop, DrvBlackKnight};
    const uint32_t promotion = (move >> 14) & 3;
    if (xy.promotion == DrvWhiteQueen)
        xy.promotion = WhitePieces[promotion];
    else if (xy.promotion == DrvBlackQueen)
        xy.promotion = BlackPieces[promotion];
}

void MarkAnnotated(OvGameBuffer game)
{
    IGGamePutStatus(game, OvgStatusAnnotated, 1);
}

// Glyphs and comment of annotation entry `entry` to the store's current node.
void PutAnnotations(const PgnGame& pgn, uint32_t entry, OvGameBuffer game)
{
    if (pgn.nags[entry] != 0) {
        PutPgnGlyphs(pgn.nags[entry], IGGameGetMovePtr(game));
        MarkAnnotated(game);
    }
    if (pgn.commentIndex[entry] != 0) {
        PutPgnComment(pgn.commentText + pgn.commentIndex[entry], IGGameGetMovePtr(game));
        MarkAnnotated(game);
    }
}

}  // namespace

MoveXY MoveXYFromPacked(uint32_t move)
{
    const int32_t from = static_cast<int32_t>(move & 63);
    const int32_t to = static_cast<int32_t>((move >> 8) & 63);
    return MoveXY{(from & 7) + 1, (from >> 3) + 1, (to & 7) + 1, (to >> 3) + 1, 0};
}

int32_t BuildPgnGame(const PgnGame& pgn, OvGameBuffer game)
{
    NewGameErase(game);
    PutPgnHeader(pgn, game);
    if (!IsStartPosition(pgn.position))
        PutPgnStartPosition(*pgn.position, pgn.firstMoveNumber, game);
    if (pgn.nags[0] != 0) {
        PutPgnGlyphs(pgn.nags[0], IGGameGetMovePtr(game));
        MarkAnnotated(game);
    }
    if (pgn.commentIndex[0] != 0) {
        // The comment ahead of the first move goes whole, as one line.
        IGMovePutLComment(IGGameGetMovePtr(game), pgn.commentText + pgn.commentIndex[0], 1);
        MarkAnnotated(game);
    }
    if (pgn.treeCount != 0)
        IGGamePutStatus(game, OvgStatusVariations, 1);

    const uint32_t total = std::min<uint32_t>(pgn.treeCount != 0 ? pgn.treeCount : pgn.moveCount,
                                              PGN_MAX_MOVES);
    BranchStack branches;
    uint32_t i = 0;
    int32_t played = 0;
    uint32_t current = 0;
    do {
        if (!branches.Empty()) {
            const PendingBranch branch = branches.Pop();
            PlayMoves(game, branch.played - played);
            played = branch.played;
            i = PgnAlternativeEntry(pgn.moves, branch.index, total);
            if (i >= total) {
                InternalErrorBox(nullptr, "Move tree corrupt.");
                return 1;
            }
            const uint32_t node = IGGameGetMovePtr(game);
            IGMovePutAL(node, IGMoveFirstFreeSubline(node, 1));
            current = 0;
        }
        while (i < total && !(current & MoveLineEnd)) {
            current = pgn.moves[i];
            MoveXY xy = MoveXYFromPacked(current);
            if ((current & MoveBranch) && !branches.Push({played, i}))
                DebugTrace("too many variations pending, side lines of move %u skipped.", i);
            if (LegalMove(game, &xy) == 0) {
                DebugTrace("move %d rejected by OV-driver, game truncated.", static_cast<int>(i));
                break;
            }
            SetPromotionPiece(xy, current);
            if (AcceptMove(game, &xy) == 0) {
                // A full tree: the line ends as for a refused move.
                DebugTrace("move %d rejected by OV-driver, game truncated.", static_cast<int>(i));
                break;
            }
            PutAnnotations(pgn, i + 1, game);
            ++played;
            ++i;
        }
    } while (!branches.Empty());
    return 0;
}
