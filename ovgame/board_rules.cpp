// The store's chess rules: target generation, move making, attacks.
#include "ovgame/board_rules.h"

#include <array>
#include <bit>
#include <cstring>

namespace ovg {
namespace {

struct Step {
    int8_t file;
    int8_t rank;
};

constexpr Step KnightSteps[8] = {{1, 2}, {2, 1}, {2, -1}, {1, -2}, {-1, -2}, {-2, -1}, {-2, 1}, {-1, 2}};
// Orthogonal directions at even places, diagonal ones at odd places.
constexpr Step KingSteps[8] = {{0, 1}, {1, 1}, {1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-1, 0}, {-1, 1}};

constexpr bool OnBoard(int file, int rank) { return file >= 0 && file < 8 && rank >= 0 && rank < 8; }

// For each square and step set, the squares one step away (-1 when off board).
struct StepTable {
    int8_t to[64][8];
};

constexpr StepTable MakeStepTable(const Step (&steps)[8])
{
    StepTable table{};
    for (int sq = 0; sq < 64; ++sq) {
        for (int d = 0; d < 8; ++d) {
            const int f = FileOf(sq) + steps[d].file;
            const int r = RankOf(sq) + steps[d].rank;
            table.to[sq][d] = OnBoard(f, r) ? int8_t(SquareOf(f, r)) : int8_t(-1);
        }
    }
    return table;
}

constexpr StepTable KnightTable = MakeStepTable(KnightSteps);
constexpr StepTable KingTable = MakeStepTable(KingSteps);

// For each square and direction of KingSteps, the squares along the ray,
// ended by -1, and their number.
struct RayTable {
    int8_t squares[64][8][8];
    int8_t length[64][8];
};

constexpr RayTable MakeRayTable()
{
    RayTable table{};
    for (int sq = 0; sq < 64; ++sq) {
        for (int d = 0; d < 8; ++d) {
            int n = 0;
            int f = FileOf(sq) + KingSteps[d].file;
            int r = RankOf(sq) + KingSteps[d].rank;
            for (; OnBoard(f, r); f += KingSteps[d].file, r += KingSteps[d].rank)
                table.squares[sq][d][n++] = int8_t(SquareOf(f, r));
            table.squares[sq][d][n] = -1;
            table.length[sq][d] = int8_t(n);
        }
    }
    return table;
}

constexpr RayTable Rays = MakeRayTable();

// The same squares as sets: for each square the knight and king steps, the
// squares of each ray, and per colour the squares a pawn attacks it from.
struct MaskTable {
    uint64_t knight[64];
    uint64_t king[64];
    uint64_t ray[64][8];
    uint64_t straight[64];  // the rays of the even directions
    uint64_t diagonal[64];  // the rays of the odd directions
    uint64_t pawnAttackers[2][64];
};

constexpr MaskTable MakeMaskTable()
{
    MaskTable table{};
    for (int sq = 0; sq < 64; ++sq) {
        for (int c = 0; c < 2; ++c) {
            // A pawn attacks from one rank behind, seen from its own side.
            const int rank = RankOf(sq) + (c == White ? -1 : 1);
            for (int file = FileOf(sq) - 1; file <= FileOf(sq) + 1; file += 2) {
                if (OnBoard(file, rank))
                    table.pawnAttackers[c][sq] |= uint64_t{1} << SquareOf(file, rank);
            }
        }
        for (int d = 0; d < 8; ++d) {
            if (KnightTable.to[sq][d] >= 0)
                table.knight[sq] |= uint64_t{1} << KnightTable.to[sq][d];
            if (KingTable.to[sq][d] >= 0)
                table.king[sq] |= uint64_t{1} << KingTable.to[sq][d];
            for (const int8_t* ray = Rays.squares[sq][d]; *ray >= 0; ++ray)
                table.ray[sq][d] |= uint64_t{1} << *ray;
            (d & 1 ? table.diagonal : table.straight)[sq] |= table.ray[sq][d];
        }
    }
    return table;
}

constexpr MaskTable Masks = MakeMaskTable();

// Whether the squares of a ray in direction `d` of KingSteps grow in number.
constexpr bool RayAscends(int d)
{
    return KingSteps[d].rank > 0 || (KingSteps[d].rank == 0 && KingSteps[d].file > 0);
}

// For each pair of squares on a line: the squares strictly between them and
// those a slider on the first meets before the second in the order of
// TargetsOf (the rays of the earlier directions and the squares between),
// which a slider's move reads together; and apart, the squares beyond the
// second, read only where men stand on the earlier rays.
struct PairSquares {
    uint64_t between;
    uint64_t preceding;
};

struct PairTable {
    PairSquares at[64][64];
    uint64_t beyond[64][64];
};

constexpr PairTable MakePairTable()
{
    PairTable table{};
    for (int from = 0; from < 64; ++from) {
        uint64_t earlierRays = 0;
        for (int d = 0; d < 8; ++d) {
            uint64_t passed = 0;
            for (int n = 0; n < Rays.length[from][d]; ++n) {
                const int sq = Rays.squares[from][d][n];
                table.at[from][sq].between = passed;
                table.beyond[from][sq] = Masks.ray[sq][d];
                table.at[from][sq].preceding = earlierRays | passed;
                passed |= uint64_t{1} << sq;
            }
            earlierRays |= passed;
        }
    }
    return table;
}

constexpr PairTable Pairs = MakePairTable();

// A square from which every knight and king step stays on the board.
constexpr int StepCenter = SquareOf(3, 3);
constexpr int StepOffset(const Step& step) { return step.file + 8 * step.rank; }

// For each knight or king step, indexed by its difference of squares plus 17
// (the two men's differences never coincide): the squares of the same man's
// steps that come before it in step order, taken from StepCenter. Rotated to
// any other square, the steps that would leave the board land on squares no
// step of that man reaches, since no two of its steps differ by a multiple of
// 64.
constexpr std::array<uint64_t, 35> EarlierSteps = [] {
    std::array<uint64_t, 35> table{};
    for (const auto* steps : {&KnightSteps, &KingSteps}) {
        uint64_t earlier = 0;
        for (const Step& step : *steps) {
            table[size_t(StepOffset(step) + 17)] = earlier;
            earlier |= uint64_t{1} << (StepCenter + StepOffset(step));
        }
    }
    return table;
}();

// For each set of open steps (bit d for step d) and place, the step at that
// place among the open ones; 8 when fewer are open.
constexpr std::array<std::array<uint8_t, 8>, 256> OpenSteps = [] {
    std::array<std::array<uint8_t, 8>, 256> table{};
    for (size_t open = 0; open < 256; ++open) {
        size_t place = 0;
        for (uint8_t d = 0; d < 8; ++d) {
            if ((open >> d) & 1)
                table[open][place++] = d;
        }
        for (; place < 8; ++place)
            table[open][place] = 8;
    }
    return table;
}();

// The first square holding a man along the ray in direction `d`; `blockers`
// are the men on the ray, not empty.
int FirstBlocker(uint64_t blockers, int d)
{
    return RayAscends(d) ? std::countr_zero(blockers) : 63 - std::countl_zero(blockers);
}

// How many targets a slider of `own` on `from` has in direction `d`.
int RayReach(const Position& pos, int from, int d, Color own)
{
    const uint64_t blockers = Masks.ray[from][d] & (pos.occupied[0] | pos.occupied[1]);
    if (blockers == 0)
        return Rays.length[from][d];
    // The squares up to the first man: those of the ray less those beyond him.
    const int first = FirstBlocker(blockers, d);
    return Rays.length[from][d] - Rays.length[first][d] - int((pos.occupied[own] >> first) & 1);
}

// The place of `to` among the targets of a slider of `own` on `from` whose
// rays cover `lines`; -1 when it is none of them. The targets before it are
// the squares of the rays it meets first, less those behind a man and those
// of its own men.
inline int SliderPlace(const Position& pos, int from, int to, Color own, uint64_t lines)
{
    const uint64_t allMen = pos.occupied[0] | pos.occupied[1];
    if (((lines >> to) & 1) == 0 || (Pairs.at[from][to].between & allMen) != 0 || ((pos.occupied[own] >> to) & 1))
        return -1;
    const uint64_t earlier = Pairs.at[from][to].preceding & lines;
    uint64_t hidden = pos.occupied[own];
    for (uint64_t men = earlier & allMen; men != 0; men &= men - 1)
        hidden |= Pairs.beyond[from][std::countr_zero(men)];
    return CountBits(earlier & ~hidden);
}

constexpr uint8_t HomeRookSquare[2][2] = {{7, 0}, {63, 56}};  // [color][short, long]
constexpr uint8_t CastleFlag[2][2] = {{DrvCastleWhiteShort, DrvCastleWhiteLong},
                                      {DrvCastleBlackShort, DrvCastleBlackLong}};
constexpr uint8_t HomeKingSquare[2] = {4, 60};

// For each square the castling flags a move from it and a move to it end: a
// rook's home square ends its wing, the king's home square both wings.
struct CastlingLossTable {
    uint8_t byFrom[64];
    uint8_t byTo[64];
};

constexpr CastlingLossTable MakeCastlingLossTable()
{
    CastlingLossTable table{};
    for (int c = 0; c < 2; ++c) {
        for (int wing = 0; wing < 2; ++wing) {
            table.byFrom[HomeRookSquare[c][wing]] |= CastleFlag[c][wing];
            table.byTo[HomeRookSquare[c][wing]] |= CastleFlag[c][wing];
            table.byFrom[HomeKingSquare[c]] |= CastleFlag[c][wing];
        }
    }
    return table;
}

constexpr CastlingLossTable CastlingLost = MakeCastlingLossTable();

// The kind of a code known to be a man.
constexpr Kind ManKind(uint8_t code) { return Kind(code & 7); }

// Puts `code`, a man, on the empty `square`.
void PlaceMan(Position& pos, int square, uint8_t code)
{
    const uint64_t bit = uint64_t{1} << square;
    pos.squares[square] = code;
    pos.occupied[ColorOf(code)] |= bit;
    pos.kinds[ManKind(code)] |= bit;
    if (ManKind(code) == King)
        pos.kingSquare[ColorOf(code)] = uint8_t(square);
    else
        ++pos.counts[ColorOf(code) * 5 + ManKind(code)];
}

// Takes the man on `square` off, if there is one.
inline void RemoveMan(Position& pos, int square)
{
    const uint8_t code = pos.squares[square];
    if (!IsPiece(code))
        return;
    const uint64_t bit = uint64_t{1} << square;
    pos.squares[square] = DrvEmpty;
    pos.occupied[ColorOf(code)] &= ~bit;
    pos.kinds[ManKind(code)] &= ~bit;
    if (ManKind(code) != King)
        --pos.counts[ColorOf(code) * 5 + ManKind(code)];
}

// Moves the man on `from`, if there is one, to `to`, taking what stands there.
inline void MoveMan(Position& pos, int from, int to)
{
    const uint8_t code = pos.squares[from];
    if (!IsPiece(code))
        return;
    RemoveMan(pos, to);
    const uint64_t bits = (uint64_t{1} << from) | (uint64_t{1} << to);
    pos.squares[to] = code;
    pos.squares[from] = DrvEmpty;
    pos.occupied[ColorOf(code)] ^= bits;
    pos.kinds[ManKind(code)] ^= bits;
    if (ManKind(code) == King)
        pos.kingSquare[ColorOf(code)] = uint8_t(to);
}

int AddRay(const Position& pos, int from, int direction, Color own, uint8_t* targets, int n)
{
    const uint64_t ownMen = pos.occupied[own];
    const uint64_t allMen = pos.occupied[0] | pos.occupied[1];
    for (const int8_t* sq = Rays.squares[from][direction]; *sq >= 0; ++sq) {
        const uint64_t bit = uint64_t{1} << *sq;
        if (bit & allMen) {
            if (!(bit & ownMen))
                targets[n++] = uint8_t(*sq);
            break;
        }
        targets[n++] = uint8_t(*sq);
    }
    return n;
}

bool CanTake(const Position& pos, int sq, Color own)
{
    return ((pos.occupied[own] >> sq) & 1) == 0;
}

// The step target of a man of `own` on `from` at `place` among the steps of
// `table` it may take, in step order; -1 when it has fewer.
int StepAt(const Position& pos, const StepTable& table, int from, Color own, int place)
{
    // The steps it may take as bits in step order, then the one at `place` by
    // table: no branch on which squares its own men hold.
    unsigned open = 0;
    for (int d = 0; d < 8; ++d) {
        const int to = table.to[from][d];
        open |= unsigned((to >= 0) & CanTake(pos, to & 63, own)) << d;
    }
    const int d = OpenSteps[open][place & 7];
    return unsigned(place) < 8 && d < 8 ? table.to[from][d] : -1;
}

// The place of `to` among the squares of `steps` (the knight's or the king's
// from `from`) that a man of `own` may take, in step order; -1 when it is
// none of them.
int StepPlace(const Position& pos, uint64_t steps, int from, int to, Color own)
{
    const uint64_t free = steps & ~pos.occupied[own];
    if (((free >> to) & 1) == 0)
        return -1;
    return CountBits(free & std::rotl(EarlierSteps[size_t(to - from + 17)], from - StepCenter));
}

// Whether a king's move from `from` to `to` is a castling move.
bool IsCastling(int from, int to)
{
    return to - from == 2 || from - to == 2;
}

// Whether `square` is attacked by one of `men` (men of `by` as `pos` has
// them), with `occupied` the squares that hold men.
inline bool AttackedAmong(const Position& pos, int square, Color by, uint64_t men, uint64_t occupied)
{
    if ((Masks.knight[square] & pos.kinds[Knight] & men) || (Masks.king[square] & pos.kinds[King] & men) ||
        (Masks.pawnAttackers[by][square] & pos.kinds[Pawn] & men))
        return true;
    // A slider on one of the square's lines attacks when nothing stands between.
    const uint64_t queens = pos.kinds[Queen];
    uint64_t sliders = (((pos.kinds[Rook] | queens) & Masks.straight[square]) |
                        ((pos.kinds[Bishop] | queens) & Masks.diagonal[square])) & men;
    for (; sliders != 0; sliders &= sliders - 1) {
        if ((Pairs.at[square][std::countr_zero(sliders)].between & occupied) == 0)
            return true;
    }
    return false;
}

// The targets a pawn may have, in their order: the step, the double step,
// the capture towards the a-file and the one towards the h-file; -1 for a
// square off the board or a double step not from the start rank.
struct PawnTargetSet {
    int squares[4];
    unsigned open;  // bit i set when squares[i] is a target
};

PawnTargetSet PawnTargetsOf(const Position& pos, int from, Color own)
{
    PawnTargetSet set{{-1, -1, -1, -1}, 0};
    const int dir = own == White ? 1 : -1;
    const int file = FileOf(from);
    const int rank = RankOf(from) + dir;
    if (rank < 0 || rank > 7)
        return set;
    const int ahead = SquareOf(file, rank);
    set.squares[0] = ahead;
    if (!IsPiece(pos.squares[ahead])) {
        set.open |= 1;
        if (RankOf(from) == (own == White ? 1 : 6)) {
            set.squares[1] = ahead + 8 * dir;
            set.open |= unsigned(!IsPiece(pos.squares[ahead + 8 * dir])) << 1;
        }
    }
    const int epRank = own == White ? 5 : 2;
    for (int side = 0; side < 2; ++side) {
        const int f = file + (side == 0 ? -1 : 1);
        if (f < 0 || f > 7)
            continue;
        const int sq = SquareOf(f, rank);
        const uint8_t code = pos.squares[sq];
        set.squares[2 + side] = sq;
        if (IsPiece(code) ? ColorOf(code) != own : (pos.epFile == f + 1 && rank == epRank))
            set.open |= 4u << side;
    }
    return set;
}

int PawnTargets(const Position& pos, int from, Color own, uint8_t* targets)
{
    const PawnTargetSet set = PawnTargetsOf(pos, from, own);
    int n = 0;
    for (int i = 0; i < 4; ++i) {
        if ((set.open >> i) & 1)
            targets[n++] = uint8_t(set.squares[i]);
    }
    return n;
}

int PawnAt(const Position& pos, int from, Color own, int place)
{
    const PawnTargetSet set = PawnTargetsOf(pos, from, own);
    for (int i = 0; i < 4; ++i) {
        if (((set.open >> i) & 1) && place-- == 0)
            return set.squares[i];
    }
    return -1;
}

int PawnPlace(const Position& pos, int from, int to, Color own)
{
    const PawnTargetSet set = PawnTargetsOf(pos, from, own);
    int place = 0;
    for (int i = 0; i < 4; ++i) {
        if (set.squares[i] == to)
            return ((set.open >> i) & 1) ? place : -1;
        place += int((set.open >> i) & 1);
    }
    return -1;
}

}  // namespace

void Normalise(Position& pos)
{
    pos.occupied[0] = pos.occupied[1] = 0;
    std::memset(pos.kinds, 0, sizeof pos.kinds);
    pos.kingSquare[0] = pos.kingSquare[1] = NoSquare;
    std::memset(pos.counts, 0, sizeof pos.counts);
    for (int sq = 0; sq < 64; ++sq) {
        const uint8_t code = pos.squares[sq];
        pos.squares[sq] = DrvEmpty;
        if (IsPiece(code))
            PlaceMan(pos, sq, code);
    }
    pos.side = pos.side == Black ? Black : White;
    pos.castling &= CastlingAllowed(pos);
    if (pos.epFile > 8)
        pos.epFile = 0;
}

const Position& StandardStart()
{
    static const Position start = StartPosition();
    return start;
}

Position StartPosition()
{
    Position pos{};
    constexpr Kind back[8] = {Rook, Knight, Bishop, Queen, King, Bishop, Knight, Rook};
    for (int f = 0; f < 8; ++f) {
        pos.squares[SquareOf(f, 0)] = PieceCode(White, back[f]);
        pos.squares[SquareOf(f, 1)] = PieceCode(White, Pawn);
        pos.squares[SquareOf(f, 6)] = PieceCode(Black, Pawn);
        pos.squares[SquareOf(f, 7)] = PieceCode(Black, back[f]);
    }
    pos.side = White;
    pos.castling = DrvCastleWhiteShort | DrvCastleWhiteLong | DrvCastleBlackShort | DrvCastleBlackLong;
    pos.ply = 1;
    Normalise(pos);
    return pos;
}

Position PositionFromRecord(const BoardRecord& board)
{
    Position pos{};
    for (int sq = 0; sq < 64; ++sq)
        pos.squares[sq] = board.squares[BoardIndex(FileOf(sq), RankOf(sq))];
    pos.side = board.sideToMove == 1 ? Black : White;
    pos.castling = board.castling;
    pos.epFile = board.epFile >= 1 && board.epFile <= 8 ? uint8_t(board.epFile) : 0;
    pos.ply = board.ply;
    Normalise(pos);
    return pos;
}

void RecordFromPosition(const Position& pos, BoardRecord& board)
{
    std::memset(&board, 0, sizeof board);
    std::memset(board.squares, 0xFF, sizeof board.squares);  // the border
    // The record keeps each file's squares together, rank by rank: the rows
    // of eight bytes are transposed into columns, half blocks, quarter
    // blocks, then single bytes swapped across the diagonal.
    static_assert(std::endian::native == std::endian::little);
    uint64_t lines[8];
    std::memcpy(lines, pos.squares, sizeof lines);
    const auto swap = [&](int a, int b, int shift, uint64_t mask) {
        const uint64_t t = ((lines[a] >> shift) ^ lines[b]) & mask;
        lines[a] ^= t << shift;
        lines[b] ^= t;
    };
    for (int r = 0; r < 4; ++r)
        swap(r, r + 4, 32, 0x00000000FFFFFFFFull);
    for (int r : {0, 1, 4, 5})
        swap(r, r + 2, 16, 0x0000FFFF0000FFFFull);
    for (int r : {0, 2, 4, 6})
        swap(r, r + 1, 8, 0x00FF00FF00FF00FFull);
    for (int file = 0; file < 8; ++file)
        std::memcpy(board.squares + BoardIndex(file, 0), &lines[file], 8);
    board.sideToMove = pos.side == Black ? 1 : 0;
    board.epFile = pos.epFile;
    board.castling = pos.castling;
    board.ply = pos.ply;
}

uint8_t CastlingAllowed(const Position& pos)
{
    uint8_t allowed = 0;
    for (int c = 0; c < 2; ++c) {
        const Color color = Color(c);
        if (pos.squares[HomeKingSquare[c]] != PieceCode(color, King))
            continue;
        for (int wing = 0; wing < 2; ++wing) {
            if (pos.squares[HomeRookSquare[c][wing]] == PieceCode(color, Rook))
                allowed |= CastleFlag[c][wing];
        }
    }
    return allowed;
}

int TargetsOf(const Position& pos, int from, uint8_t* targets, int limit)
{
    const uint8_t code = pos.squares[from];
    if (!IsPiece(code))
        return 0;
    const Color own = ColorOf(code);
    int n = 0;
    switch (KindOf(code)) {
    case Pawn:
        return PawnTargets(pos, from, own, targets);
    case Knight:
        for (int d = 0; d < 8 && n < limit; ++d) {
            const int to = KnightTable.to[from][d];
            if (to >= 0 && CanTake(pos, to, own))
                targets[n++] = uint8_t(to);
        }
        return n;
    case Bishop:
        for (int d = 1; d < 8 && n < limit; d += 2)
            n = AddRay(pos, from, d, own, targets, n);
        return n;
    case Rook:
        for (int d = 0; d < 8 && n < limit; d += 2)
            n = AddRay(pos, from, d, own, targets, n);
        return n;
    case Queen:
        for (int d = 0; d < 8 && n < limit; ++d)
            n = AddRay(pos, from, d, own, targets, n);
        return n;
    case King:
        for (int d = 0; d < 8; ++d) {
            const int to = KingTable.to[from][d];
            if (to >= 0 && CanTake(pos, to, own))
                targets[n++] = uint8_t(to);
        }
        if (from == HomeKingSquare[own] && n < limit && (pos.castling & (CastleFlag[own][0] | CastleFlag[own][1]))) {
            const uint8_t rook = PieceCode(own, Rook);
            const uint64_t allMen = pos.occupied[0] | pos.occupied[1];
            const auto empty = [&](int sq) { return ((allMen >> sq) & 1) == 0; };
            if ((pos.castling & CastleFlag[own][0]) && pos.squares[HomeRookSquare[own][0]] == rook &&
                empty(from + 1) && empty(from + 2))
                targets[n++] = uint8_t(from + 2);
            if ((pos.castling & CastleFlag[own][1]) && pos.squares[HomeRookSquare[own][1]] == rook &&
                empty(from - 1) && empty(from - 2) && empty(from - 3))
                targets[n++] = uint8_t(from - 2);
        }
        return n;
    default:
        return 0;
    }
}

int TargetAt(const Position& pos, int from, int place)
{
    const uint8_t code = pos.squares[from];
    int first = 0;
    int step = 1;
    switch (KindOf(code)) {
    case Bishop: first = 1; step = 2; break;
    case Rook: step = 2; break;
    case Queen: break;
    case Pawn: return PawnAt(pos, from, ColorOf(code), place);
    case Knight: return StepAt(pos, KnightTable, from, ColorOf(code), place);
    case King:
        // The castling targets follow the steps.
        if (const int to = StepAt(pos, KingTable, from, ColorOf(code), place); to >= 0)
            return to;
        [[fallthrough]];
    default: {
        // Castling, or an empty square with no targets.
        uint8_t targets[MaxTargets];
        return place < TargetsOf(pos, from, targets, place + 1) ? targets[place] : -1;
    }
    }
    // A slider's targets counted ray by ray, without listing them.
    for (int d = first; d < 8; d += step) {
        const int reach = RayReach(pos, from, d, ColorOf(code));
        if (place < reach)
            return from + (place + 1) * StepOffset(KingSteps[d]);
        place -= reach;
    }
    return -1;
}

bool IsAttacked(const Position& pos, int square, Color by)
{
    return AttackedAmong(pos, square, by, pos.occupied[by], pos.occupied[0] | pos.occupied[1]);
}

bool InCheck(const Position& pos, Color color)
{
    const uint8_t king = pos.kingSquare[color];
    return king != NoSquare && IsAttacked(pos, king, Color(color ^ 1));
}

namespace {

// What every move does besides moving men: the castling rights the squares
// left and reached end, no en passant file, the other side to move.
inline void PassTurn(Position& pos, int from, int to, Color own)
{
    pos.castling &= uint8_t(~(CastlingLost.byFrom[from] | CastlingLost.byTo[to]));
    pos.epFile = 0;
    pos.side = uint8_t(own ^ 1);
    ++pos.ply;
}

// A move that does more than move one man: a pawn's promotion, double step
// or capture en passant, castling; or a move from an empty square, which
// only passes the turn.
[[gnu::noinline]] void MakeRareMove(Position& pos, int from, int to, Kind promotion)
{
    const uint8_t code = pos.squares[from];
    const Color own = ColorOf(code);
    const Kind kind = KindOf(code);
    if (IsEnPassant(pos, from, to))
        RemoveMan(pos, SquareOf(FileOf(to), RankOf(from)));  // en passant
    else if (kind == King)
        MoveMan(pos, to > from ? from + 3 : from - 4, to > from ? from + 1 : from - 1);  // the rook
    MoveMan(pos, from, to);
    PassTurn(pos, from, to, own);
    if (kind != Pawn)
        return;
    if (RankOf(to) == 7 || RankOf(to) == 0) {
        RemoveMan(pos, to);
        PlaceMan(pos, to, PieceCode(own, promotion >= Knight && promotion <= Queen ? promotion : Queen));
    } else if (to - from == 16 || from - to == 16) {
        // Only a double step that an enemy pawn beside it could take sets the file.
        const uint8_t enemyPawn = PieceCode(Color(own ^ 1), Pawn);
        const int f = FileOf(to);
        if ((f > 0 && pos.squares[to - 1] == enemyPawn) || (f < 7 && pos.squares[to + 1] == enemyPawn))
            pos.epFile = uint8_t(f + 1);
    }
}

}  // namespace

void MakeMove(Position& pos, int from, int to, Kind promotion)
{
    const uint8_t code = pos.squares[from];
    const Kind kind = KindOf(code);
    // Most moves move one man, perhaps taking another; the rest stay out of
    // line, so that these pass with little to set up.
    const bool plain = kind == Pawn ? !IsPromotion(pos, from, to) && to - from != 16 && from - to != 16 &&
                                          !IsEnPassant(pos, from, to)
                       : kind == King ? !IsCastling(from, to)
                                      : kind != NoKind;
    if (!plain) {
        MakeRareMove(pos, from, to, promotion);
        return;
    }
    MoveMan(pos, from, to);
    PassTurn(pos, from, to, ColorOf(code));
}

namespace {

// The place of `to` among the targets of the man `code` on `from` (see
// TargetsOf), -1 when it is none of them.
int PlaceOf(const Position& pos, int from, int to, uint8_t code)
{
    const Color own = ColorOf(code);
    switch (KindOf(code)) {
    case Bishop: return SliderPlace(pos, from, to, own, Masks.diagonal[from]);
    case Rook: return SliderPlace(pos, from, to, own, Masks.straight[from]);
    case Queen: return SliderPlace(pos, from, to, own, Masks.diagonal[from] | Masks.straight[from]);
    case Pawn: return PawnPlace(pos, from, to, own);
    case Knight: return StepPlace(pos, Masks.knight[from], from, to, own);
    case King:
        if (!IsCastling(from, to))
            return StepPlace(pos, Masks.king[from], from, to, own);
        [[fallthrough]];
    default: {
        // Castling, or an empty square with no targets.
        uint8_t targets[MaxTargets];
        const int n = TargetsOf(pos, from, targets);
        int place = 0;
        while (place < n && targets[place] != to)
            ++place;
        return place == n ? -1 : place;
    }
    }
}

}  // namespace

int LegalTargetPlace(const Position& pos, int from, int to)
{
    if (((from | to) & ~63) != 0)
        return -1;
    const uint8_t code = pos.squares[from];
    if (!IsPiece(code) || ColorOf(code) != pos.side)
        return -1;
    const int place = PlaceOf(pos, from, to, code);
    if (place < 0)
        return -1;
    // The mover's king must not stand attacked once the move is made: the
    // enemy men and the occupied squares as MakeMove leaves them.
    const Color own = Color(pos.side);
    const Color enemy = Color(own ^ 1);
    const uint64_t toBit = uint64_t{1} << to;
    uint64_t occupied = ((pos.occupied[0] | pos.occupied[1]) & ~(uint64_t{1} << from)) | toBit;
    uint64_t enemies = pos.occupied[enemy] & ~toBit;
    int king = pos.kingSquare[own];
    const Kind kind = KindOf(code);
    if (kind == King) {
        king = to;
        if (IsCastling(from, to)) {
            if (InCheck(pos, own) || IsAttacked(pos, (from + to) / 2, enemy))
                return -1;
            const int rookFrom = to > from ? from + 3 : from - 4;
            const int rookTo = to > from ? from + 1 : from - 1;
            occupied = (occupied & ~(uint64_t{1} << rookFrom)) | (uint64_t{1} << rookTo);
        }
    } else if (IsEnPassant(pos, from, to)) {
        const uint64_t taken = uint64_t{1} << SquareOf(FileOf(to), RankOf(from));  // en passant
        occupied &= ~taken;
        enemies &= ~taken;
    }
    return king != NoSquare && AttackedAmong(pos, king, enemy, enemies, occupied) ? -1 : place;
}

}  // namespace ovg
