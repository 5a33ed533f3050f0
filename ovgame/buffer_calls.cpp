// The driver's game buffer calls: life, board, walking, move tree, building.
#include <atomic>
#include <cstring>
#include <new>

#include "ovgame/game_buffer.h"
#include "siblings/game_driver.h"

using namespace ovg;

namespace {

GameBuffer* Find(uint32_t game)
{
    return Buffers().Find(game);
}

// The buffer of `game` and the squares of `xy`; null when either is bad.
GameBuffer* FindWithMove(uint32_t game, const MoveXY* xy, int& from, int& to)
{
    GameBuffer* g = Find(game);
    if (g == nullptr || xy == nullptr)
        return nullptr;
    // Files and ranks from 1 to 8: each less one fits three bits.
    const uint32_t fromFile = uint32_t(xy->fromFile) - 1;
    const uint32_t fromRank = uint32_t(xy->fromRank) - 1;
    const uint32_t toFile = uint32_t(xy->toFile) - 1;
    const uint32_t toRank = uint32_t(xy->toRank) - 1;
    if ((fromFile | fromRank | toFile | toRank) > 7)
        return nullptr;
    from = SquareOf(int(fromFile), int(fromRank));
    to = SquareOf(int(toFile), int(toRank));
    return g;
}

Kind KindFromDriverCode(int32_t code)
{
    const Kind kind = code >= 0 && code <= 255 ? KindOf(uint8_t(code)) : NoKind;
    return kind >= Knight && kind <= Queen ? kind : Queen;
}

}  // namespace

uint32_t IGGameOpenGame(void)
{
    static std::atomic<uint8_t> generations{0};
    auto game = std::unique_ptr<GameBuffer>(new (std::nothrow) GameBuffer);
    if (!game)
        return 0;
    EraseGame(*game);
    game->treeGeneration = generations.fetch_add(7);
    return Buffers().Add(std::move(game));
}

int32_t IGGameCloseGame(uint32_t game)
{
    return Buffers().Remove(game) ? 1 : 0;
}

int32_t NewGameErase(uint32_t game)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? 0 : (EraseGame(*g), 1);
}

int32_t NewGameRewind(uint32_t game)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? 0 : (Rewind(*g), 1);
}

const BoardRecord* IGGameGetBoard(uint32_t game)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? nullptr : &CurrentBoard(*g);
}

int32_t GetInitialPosition(uint32_t game, BoardRecord* board)
{
    GameBuffer* g = Find(game);
    if (g == nullptr)
        return 0;
    if (board != nullptr)
        RecordFromPosition(g->initial, *board);
    return (g->status & (1u << OvgStatusSetUp)) ? 2 : 1;
}

int32_t IGNewBoard(BoardRecord* board)
{
    if (board == nullptr)
        return 0;
    RecordFromPosition(StandardStart(), *board);
    return 1;
}

int32_t CastlingRights(const BoardRecord* board)
{
    if (board == nullptr)
        return 0;
    return CastlingAllowed(PositionFromRecord(*board));
}

int32_t BoardToInitialPosition(uint32_t game, const BoardRecord* board, int32_t castling,
                               int32_t epFile, int32_t ply)
{
    GameBuffer* g = Find(game);
    if (g == nullptr || board == nullptr || ply < 1)
        return 0;
    Position pos = PositionFromRecord(*board);
    pos.side = (ply & 1) ? White : Black;
    pos.ply = ply;
    pos.castling = uint8_t(castling) & CastlingAllowed(pos);
    pos.epFile = 0;
    if (epFile >= 1 && epFile <= 8) {
        // The file stands only behind a pawn that has just made its double step.
        const Color mover = Color(pos.side ^ 1);
        const int pawnSquare = SquareOf(epFile - 1, mover == White ? 3 : 4);
        const int skipped = SquareOf(epFile - 1, mover == White ? 2 : 5);
        if (pos.squares[pawnSquare] == PieceCode(mover, Pawn) && !IsPiece(pos.squares[skipped]))
            pos.epFile = uint8_t(epFile);
    }
    g->initial = pos;
    const Position& start = StandardStart();
    const bool standard = std::memcmp(pos.squares, start.squares, 64) == 0 && pos.side == start.side &&
                          pos.castling == start.castling && pos.epFile == 0 && pos.ply == 1;
    if (standard)
        g->status &= uint8_t(~(1u << OvgStatusSetUp));
    else
        g->status |= uint8_t(1u << OvgStatusSetUp);
    ClearTree(*g);
    return 1;
}

int32_t PlayMoves(uint32_t game, int32_t count)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? 0 : Walk(*g, count);
}

int32_t IGGameGetCM(uint32_t game)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? 0 : int32_t(g->path.size());
}

uint32_t IGNextMove(uint32_t game)
{
    GameBuffer* g = Find(game);
    if (g == nullptr)
        return 0;
    const uint32_t next = g->nodes[g->path.back()].next;
    return next == 0 ? 0 : MoveHandle(*g, next);
}

int32_t PatExactPosition(uint32_t game)
{
    GameBuffer* g = Find(game);
    if (g == nullptr)
        return 0;
    g->pattern = g->positions.back();
    g->patternCounts = SignatureOf(g->pattern);
    g->hasPattern = true;
    return 1;
}

uint32_t IGGameGetFirstMove(uint32_t game)
{
    GameBuffer* g = Find(game);
    return g == nullptr || g->nodes[0].next == 0 ? 0 : MoveHandle(*g, 0);
}

uint32_t IGMoveGetNEXT(uint32_t move)
{
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    return g == nullptr || g->nodes[node].next == 0 ? 0 : MoveHandle(*g, g->nodes[node].next);
}

uint32_t IGMoveGetALT(uint32_t move)
{
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    return g == nullptr || g->nodes[node].alt == 0 ? 0 : MoveHandle(*g, g->nodes[node].alt);
}

int32_t IGMoveGetXY(uint32_t move, MoveXY* xy)
{
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    if (g == nullptr || node == 0 || xy == nullptr)
        return 0;
    const Node& n = g->nodes[node];
    xy->fromFile = FileOf(n.from) + 1;
    xy->fromRank = RankOf(n.from) + 1;
    xy->toFile = FileOf(n.to) + 1;
    xy->toRank = RankOf(n.to) + 1;
    xy->promotion = n.promotion == NoKind ? 0 : PieceCode(RankOf(n.to) == 7 ? White : Black, Kind(n.promotion));
    return 1;
}

uint32_t IGGameGetMovePtr(uint32_t game)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? 0 : MoveHandle(*g, g->path.back());
}

uint32_t IGMoveFirstFreeSubline(uint32_t move, int32_t from)
{
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    if (g == nullptr)
        return 0;
    const uint32_t used = ContinuationCount(*g, node);
    return from > 0 && uint32_t(from) > used ? uint32_t(from) : used;
}

int32_t IGMovePutAL(uint32_t move, uint32_t subline)
{
    uint32_t node = 0;
    GameBuffer* g = FindMove(move, node);
    if (g == nullptr || node != g->path.back() || subline < 1)
        return 0;
    g->armedNode = node;
    g->armedSubline = subline;
    return 1;
}

int32_t LegalMove(uint32_t game, MoveXY* xy)
{
    int from = 0;
    int to = 0;
    GameBuffer* g = FindWithMove(game, xy, from, to);
    if (g == nullptr)
        return 0;
    if (CheckMove(*g, from, to) < 0)
        return 0;
    const Position& here = g->positions.back();
    if (IsPromotion(here, from, to))
        xy->promotion = PieceCode(Color(here.side), Queen);
    return 1;
}

int32_t AcceptMove(uint32_t game, const MoveXY* xy)
{
    int from = 0;
    int to = 0;
    GameBuffer* g = FindWithMove(game, xy, from, to);
    if (g == nullptr)
        return 0;
    return Accept(*g, from, to, KindFromDriverCode(xy->promotion)) ? 1 : 0;
}
