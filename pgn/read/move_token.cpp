#include "pgn/read/move_token.h"

#include <bit>
#include <cstring>

#include "chess/position.h"
#include "chess/tracked_position.h"
#include "frame/diagnostics.h"

namespace {

using namespace MoveTokenBits;

bool IsFileLetter(char c) { return c >= 'a' && c <= 'h'; }
bool IsRankDigit(char c) { return c >= '1' && c <= '8'; }

// PackedMove promotion code by piece number: queen 0, rook 1, bishop 2, knight 3.
uint32_t PromotionCode(uint32_t piece)
{
    switch (piece) {
    case PieceRook: return 1;
    case PieceBishop: return 2;
    case PieceKnight: return 3;
    default: return 0;
    }
}

uint32_t Packed(int from, int to, uint32_t promotionCode = 0)
{
    return static_cast<uint32_t>(from) | (static_cast<uint32_t>(to) << 8) | (promotionCode << 14);
}

uint32_t MirrorRanks(uint32_t token)
{
    if (token & FromRankGiven) {
        token ^= 7u << FromRankShift;
    }
    return token ^ (7u << ToRankShift);
}

// The resolvers of the kinds of moves are kept out of line: each then saves
// only the registers it needs, and the dispatch in ResolveMoveToken none.

[[gnu::noinline]] uint32_t ResolvePawnCapture(TrackedPosition& position, uint32_t token, int to, uint32_t promotion)
{
    const sPosition& record = position.record;
    int forward = record.sideToMove ? 8 : -8;
    int fromFile = static_cast<int>(TokenFromFile(token));
    if (!(token & NoToRank)) {
        int from = to - forward - (to & 7) + fromFile;
        if (from < 0 || from > 63) {
            return 0;
        }
        uint32_t move = Packed(from, to, promotion);
        return TrackedMoveIsLegal(position, move) ? move : 0;
    }
    // Files alone: any own pawn on the from-file that can take on the to-file.
    uint8_t ownPawn = record.sideToMove ? OV_WHITE_PAWN : OV_BLACK_PAWN;
    int toFile = to & 7;
    uint32_t found = 0;
    for (int from = fromFile; from < 64; from += 8) {
        int target = from + forward - fromFile + toFile;
        if (record.board[from] != ownPawn || target < 0 || target > 63) {
            continue;
        }
        uint32_t move = Packed(from, target, promotion);
        if (TrackedMoveIsLegal(position, move)) {
            if (found != 0) {
                return 0;
            }
            found = move;
        }
    }
    return found;
}

[[gnu::noinline]] uint32_t ResolvePawnAdvance(TrackedPosition& position, int to, uint32_t promotion)
{
    const sPosition& record = position.record;
    int rank = to >> 3;
    int from;
    if (record.sideToMove) {
        if (rank == 0) {
            return 0;
        }
        from = to - 8;
        if (rank == 3 && record.board[from] != OV_WHITE_PAWN) {
            from -= 8;
        }
    } else {
        if (rank == 7) {
            return 0;
        }
        from = to + 8;
        if (rank == 4 && record.board[from] != OV_BLACK_PAWN) {
            from += 8;
        }
    }
    uint32_t move = Packed(from, to, promotion);
    if (TrackedMoveIsLegal(position, move)) {
        return move;
    }
    // A capture written without its from-file, "d5" for "exd5".
    uint32_t found = 0;
    int candidates = 0;
    if ((from & 7) > 0 && TrackedMoveIsLegal(position, move = Packed(from - 1, to, promotion))) {
        found = move;
        ++candidates;
    }
    if ((from & 7) < 7 && TrackedMoveIsLegal(position, move = Packed(from + 1, to, promotion))) {
        found = move;
        ++candidates;
    }
    return candidates == 1 ? found : 0;
}

[[gnu::noinline]] uint32_t ResolvePieceMove(TrackedPosition& position, uint32_t token, int to)
{
    const SquareSet origins = TrackedPieceOrigins(position, static_cast<int>(TokenPiece(token)), to);
    if (OneSquare(origins)) {
        return Packed(std::countr_zero(origins), to);
    }
    bool byFile = (token & FromFileGiven) != 0;
    bool byRank = (token & FromRankGiven) != 0;
    if (origins == 0 || (!byFile && !byRank)) {
        return 0;
    }
    // Several men can go: the first in square order, a1 first, that stands
    // on the given file and rank.
    for (SquareSet men = origins; men != 0; men &= men - 1) {
        int from = std::countr_zero(men);
        if ((!byFile || (from & 7) == static_cast<int>(TokenFromFile(token))) &&
            (!byRank || (from >> 3) == static_cast<int>(TokenFromRank(token)))) {
            return Packed(from, to);
        }
    }
    return 0;
}

[[gnu::noinline]] uint32_t ResolveKingMove(TrackedPosition& position, int to)
{
    const sPosition& record = position.record;
    uint64_t kings = TrackedSquaresHolding(position, record.sideToMove ? OV_WHITE_KING : OV_BLACK_KING);
    if (kings == 0) {
        return 0;
    }
    uint32_t move = Packed(std::countr_zero(kings), to);
    return TrackedMoveIsLegal(position, move) ? move : 0;
}

[[gnu::noinline]] uint32_t ResolveCastling(TrackedPosition& position, bool isShort, int32_t fischer)
{
    const sPosition& record = position.record;
    bool white = record.sideToMove != 0;
    int base = white ? 0 : 56;
    uint32_t classical = Packed(base + 4, base + (isShort ? 6 : 2));
    if (TrackedMoveIsLegal(position, classical)) {
        return classical;
    }
    if (!fischer) {
        return 0;
    }
    uint8_t king = white ? OV_WHITE_KING : OV_BLACK_KING;
    int kingSquare = -1;
    for (int square = base + 1; square <= base + 6; ++square) {
        if (record.board[square] == king) {
            kingSquare = square;
            break;
        }
    }
    if (kingSquare < 0) {
        return 0;
    }
    // Field order of CastlingFields: white long, white short, black long, black short.
    int field = (white ? 0 : 2) + (isShort ? 1 : 0);
    uint8_t value = record.*CastlingFields[field];
    if (value == 0) {
        return 0;
    }
    int rookSquare = CastlingRookSquare(field, value);
    if (rookSquare > 63 || record.board[rookSquare] != (white ? OV_WHITE_ROOK : OV_BLACK_ROOK)) {
        return 0;
    }
    DebugTrace("skipping legality check on %s %s Fischer castling.", isShort ? "short" : "long",
               white ? "white" : "black");
    return Packed(kingSquare, rookSquare);
}

}  // namespace

int32_t ParseCastlingToken(const char* text, int32_t length, uint32_t* word)
{
    int count = 0;
    for (int32_t i = 0; i < length; ++i) {
        count += text[i] == 'O' || text[i] == 'o' || text[i] == '0';
    }
    if (count != 2 && count != 3) {
        return 0;
    }
    *word = (*word & ~PieceMask) | PieceKing | (count == 2 ? ShortCastling : LongCastling);
    return 1;
}

void PgnPieceLetters::Set(const char* letters)
{
    const char* given = letters != nullptr ? letters : "NBRQK";
    std::memset(letters_, 0, sizeof letters_);
    for (int i = 0; i < 5 && given[i] != '\0'; ++i) {
        letters_[i] = given[i];
    }
    // The piece of each letter; the first place wins for a letter given twice.
    uint8_t pieceOf[256] = {};
    for (int i = 4; i >= 0; --i) {
        if (letters_[i] != '\0') {
            pieceOf[static_cast<uint8_t>(letters_[i])] = static_cast<uint8_t>(PieceKnight + i);
        }
    }
    for (int code = 0; code < 256; ++code) {
        char c = static_cast<char>(code);
        uint8_t piece = pieceOf[code];
        tail_[code] = piece != 0 && piece != PieceKing ? static_cast<uint8_t>(TailPromotion | piece)
                      : c == 'p'                       ? TailP
                      : IsRankDigit(c)                 ? TailRank
                      : c == 'e'                       ? TailE
                      : IsFileLetter(c)                ? TailFile
                                                       : 0;
        if (IsFileLetter(c)) {
            head_[code] = {7u << FromFileShift, FromFileGiven | static_cast<uint32_t>(c - 'a') << FromFileShift};
        } else if (IsRankDigit(c)) {
            head_[code] = {7u << FromRankShift, FromRankGiven | static_cast<uint32_t>(c - '1') << FromRankShift};
        } else if (piece != 0) {
            head_[code] = {PieceMask, piece};
        } else {
            head_[code] = {0, 0};
        }
    }
}

uint32_t ResolveMoveToken(TrackedPosition& position, uint32_t token, int32_t fischer, int32_t swap)
{
    if (swap) {
        token = MirrorRanks(token);
    }
    int to = static_cast<int>(TokenToFile(token) + 8 * TokenToRank(token));
    uint32_t piece = TokenPiece(token);
    switch (piece) {
    case PiecePawn: {
        uint32_t promotion = PromotionCode(TokenPromotion(token));
        if ((token & FromFileGiven) && TokenFromFile(token) != TokenToFile(token)) {
            return ResolvePawnCapture(position, token, to, promotion);
        }
        return ResolvePawnAdvance(position, to, promotion);
    }
    case PieceKnight:
    case PieceBishop:
    case PieceRook:
    case PieceQueen:
        return ResolvePieceMove(position, token, to);
    case PieceKing:
        if (token & (ShortCastling | LongCastling)) {
            return ResolveCastling(position, (token & ShortCastling) != 0, fischer);
        }
        return ResolveKingMove(position, to);
    default:
        return 0;
    }
}
