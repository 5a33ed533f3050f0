// Reading the square-set view of a record, sixteen squares at a time.
#include "chess/board_view.h"

#include <emmintrin.h>

#include <bit>

#include "chess/piece_codes.h"

namespace {

// The squares of one 16-byte row group whose bytes satisfy a comparison.
SquareSet Mask(__m128i matches, int group)
{
    return static_cast<SquareSet>(static_cast<uint16_t>(_mm_movemask_epi8(matches))) << (16 * group);
}

__m128i Row(const sPosition& position, int group)
{
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(position.board + 16 * group));
}

// FinishView; then whether the record is ordinary, all its codes being pieces.
bool FinishOrdinaryView(const sPosition& position, BoardView& view)
{
    FinishView(position, view);
    return OneSquare(view.Pieces(KingKind, true)) && OneSquare(view.Pieces(KingKind, false)) &&
           (view.kinds[PawnKind] & EdgeRanks) == 0 && EnPassantSquareOrdinary(position, view);
}

}  // namespace

bool EnPassantSquareOrdinary(const sPosition& position, const BoardView& view)
{
    const int ep = position.epSquare;
    if (ep >= OV_NO_EP_SQUARE)
        return true;
    const bool white = view.whiteToMove;
    const int victim = white ? ep - 8 : ep + 8;
    return (white ? ep >= 40 && ep < 48 : ep >= 16 && ep < 24) && (view.occupied & SquareBit(ep)) == 0 &&
           (view.Pieces(PawnKind, !white) & SquareBit(victim)) != 0;
}

SquareSet SquaresHolding(const sPosition& position, uint8_t code)
{
    const __m128i wanted = _mm_set1_epi8(static_cast<char>(code));
    SquareSet squares = 0;
    for (int group = 0; group < 4; ++group)
        squares |= Mask(_mm_cmpeq_epi8(Row(position, group), wanted), group);
    return squares;
}

bool ReadOrdinaryView(const sPosition& position, BoardView& view)
{
    // Each of the low four bits of the codes as a square set, by shifting the
    // bit up to the sign bit that movemask reads; the squares whose byte is
    // below 16 by a comparison of the high half.
    SquareSet bits[4] = {};
    SquareSet lowCodes = 0;
    const __m128i highNibble = _mm_set1_epi8(static_cast<char>(0xF0));
    for (int group = 0; group < 4; ++group) {
        const __m128i bytes = Row(position, group);
        bits[0] |= Mask(_mm_slli_epi16(bytes, 7), group);
        bits[1] |= Mask(_mm_slli_epi16(bytes, 6), group);
        bits[2] |= Mask(_mm_slli_epi16(bytes, 5), group);
        bits[3] |= Mask(_mm_slli_epi16(bytes, 4), group);
        lowCodes |= Mask(_mm_cmpeq_epi8(_mm_and_si128(bytes, highNibble), _mm_setzero_si128()), group);
    }
    for (int kind = 0; kind < 8; ++kind)
        view.kinds[kind] = (kind & 1 ? bits[0] : ~bits[0]) & (kind & 2 ? bits[1] : ~bits[1]) &
                           (kind & 4 ? bits[2] : ~bits[2]);
    view.white = bits[3];
    // Codes 7, 8, 15 and anything above 15 are no pieces.
    if ((~lowCodes | view.kinds[7] | (view.kinds[0] & view.white)) != 0)
        return false;
    return FinishOrdinaryView(position, view);
}
