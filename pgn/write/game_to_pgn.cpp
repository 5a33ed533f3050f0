// GameToPgnGame: the store's move tree walked into the flat tree of a PgnGame.
#include "pgn/write/game_to_pgn.h"

#include "chess/position.h"
#include "chess/tracked_position.h"
#include "frame/diagnostics.h"
#include "pgn/pgn_game.h"
#include "siblings/game_driver.h"

namespace {

// Storage of the comment block and the short comment of one move, reused for
// every move of a game.
struct CommentBlocks {
    alignas(uint16_t) char lines[OvgLongCommentBlockSize];
    char glyphs[OvgTextSize];
};

void StoreComments(PgnGame* pgn, uint32_t node, uint32_t index, CommentBlocks& blocks)
{
    if (GetLComment(node, blocks.lines) != 0)
        StoreLongComment(pgn, index, blocks.lines, sizeof blocks.lines);
    if (IGMoveGetSComment(node, blocks.glyphs) != 0)
        StoreShortComment(pgn, index, blocks.glyphs);
}

class LineStack {
public:
    explicit LineStack(PendingLine* entries) : entries_(entries) {}
    bool Empty() const { return size_ == 0; }
    // False when the stack is full after the push.
    bool Push(uint32_t node, const sPosition& position, uint32_t markedEntry)
    {
        entries_[size_++] = PendingLine{node, position, markedEntry};
        return size_ < PendingLineCount;
    }
    PendingLine Pop() { return entries_[--size_]; }

private:
    PendingLine* entries_;
    int32_t size_ = 0;
};

}  // namespace

int32_t GameToPgnGame(OvGameBuffer game, PgnGame* pgn, PendingLine* stack)
{
    // Only the annotation entries of this game are cleared, each as its move
    // is stored: zeroing all of them took a fifth of an export's time.
    ResetPgnGame(pgn);
    *pgn->position = StartPosition;
    HeaderToTags(pgn, game);
    const BoardRecord* board = IGGameGetBoard(game);
    if (board == nullptr)
        return 0;
    if (IGGameGetStatus(game, OvgStatusSetUp) != 0)
        PositionFromBoard(pgn->position, board, 1);
    pgn->firstMoveNumber = board->ply > 1 ? static_cast<uint32_t>(board->ply - 1) / 2 : 0;

    const uint32_t root = IGGameGetFirstMove(game);
    if (root == 0)
        return 1;
    // The store fills at most OvgLongCommentBlockSize bytes and leaves out
    // the lines that do not fit, so a root comment longer than the block is
    // lost, never written past it.
    CommentBlocks blocks;
    if (GetLComment(root, blocks.lines) != 0)
        StoreLongComment(pgn, 0, blocks.lines, sizeof blocks.lines);

    LineStack pending(stack);
    // The position of the line being walked, its view kept up to date move by
    // move; a pending line keeps only the record and is tracked anew.
    TrackedPosition current;
    TrackPosition(current, *pgn->position);
    uint32_t index = 0;
    uint32_t node = IGMoveGetNEXT(root);
    uint32_t markedEntry = 0;  // the entry whose MoveBranch leads to this line
    bool mainLine = true;
    for (;;) {
        const uint32_t lineStart = index;
        while (node != 0) {
            MoveXY xy{};
            IGMoveGetXY(node, &xy);
            const uint32_t move = PackMove(xy.fromFile, xy.fromRank, xy.toFile, xy.toRank, xy.promotion);
            pgn->moves[index] = static_cast<PackedMove>(move);
            const uint32_t alternative = IGMoveGetALT(node);
            if (alternative != 0) {
                pgn->moves[index] |= MoveBranch;
                if (!pending.Push(alternative, current.record, index))
                    return 0;
            }
            if (!TrackedMoveIsLegal(current, move)) {
                DebugTrace("%d%c illegal, game truncated.", static_cast<int>(index / 2 + 1),
                           index % 2 == 0 ? 'w' : 'b');
                if (alternative != 0) {
                    // The first alternative takes the place of the illegal
                    // move; its own alternatives stay alternatives to it.
                    pending.Pop();
                    node = alternative;
                    continue;
                }
                if (index > lineStart)
                    pgn->moves[index - 1] |= MoveLineEnd;
                else if (!mainLine)
                    // An alternative of which nothing is stored: the mark that
                    // announced it would lead a reader of the tree to the
                    // next line instead, so it goes.
                    pgn->moves[markedEntry] &= static_cast<PackedMove>(~MoveBranch);
                break;
            }
            pgn->nags[index + 1] = 0;
            pgn->commentIndex[index + 1] = 0;
            StoreComments(pgn, node, index + 1, blocks);
            PlayTrackedMove(current, move);
            const uint32_t next = IGMoveGetNEXT(node);
            if (next == 0)
                pgn->moves[index] |= MoveLineEnd;
            if (++index >= PGN_MAX_MOVES)
                return 0;
            node = next;
        }
        if (pgn->moveCount == 0)
            pgn->moveCount = index;
        if (pending.Empty())
            break;
        const PendingLine line = pending.Pop();
        node = line.node;
        TrackPosition(current, line.position);
        markedEntry = line.markedEntry;
        mainLine = false;
    }
    if (index > pgn->moveCount)
        pgn->treeCount = index;
    return 1;
}

int32_t MoverIsBlack(const sPosition& start, uint32_t moveIndex)
{
    const uint32_t blackStarts = (start.sideToMove & 1) == 0 ? 1 : 0;
    return static_cast<int32_t>(blackStarts ^ (moveIndex & 1));
}
