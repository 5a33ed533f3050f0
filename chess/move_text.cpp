// The text of a move from its word and its description byte.
#include <cstddef>

#include "chess/move_notation.h"
#include "chess/packed_move.h"
#include "chess/piece_codes.h"

namespace {

// Table places of the suffixes, two characters each.
constexpr int CheckSuffix = 8;
constexpr int MateSuffix = 10;
constexpr int StalemateSuffix = 12;
constexpr int EnPassantSuffix = 14;
constexpr int CastlingLetter = 5;
constexpr int CastlingSeparator = 6;
constexpr int CaptureMark = 7;

// Appends to a text of at most OV_MOVE_TEXT_SIZE - 1 characters. The
// longest text any byte can ask for has 9, so nothing is ever cut; the
// bound only makes sure of it.
struct TextWriter {
    char* text;
    int length = 0;
    void Put(char c)
    {
        if (length < OV_MOVE_TEXT_SIZE - 1)
            text[length++] = c;
    }
    void PutSquare(int square)
    {
        Put(static_cast<char>('a' + (square & 7)));
        Put(static_cast<char>('1' + (square >> 3)));
    }
    // A suffix place holding a blank writes nothing.
    void PutSuffix(const char* symbols, int place)
    {
        for (int i = place; i < place + 2; ++i)
            if (symbols[i] != ' ')
                Put(symbols[i]);
    }
};

const char* SymbolsOf(const NotationTable* table) { return (table != nullptr ? table : &DefaultNotation)->symbols; }

}  // namespace

bool StalemateMarked(const NotationTable* table)
{
    const char* symbols = SymbolsOf(table);
    return symbols[StalemateSuffix] != ' ' || symbols[StalemateSuffix + 1] != ' ';
}

int32_t OvMoveToText(uint32_t move, uint32_t info, char* text, TextMode mode, const NotationTable* table)
{
    if (text == nullptr)
        return 0;
    const char* symbols = SymbolsOf(table);
    const int kind = static_cast<int>(info & OV_MOVE_KIND_MASK);
    const int from = MoveFrom(move);
    TextWriter out{text};

    if (kind == OV_MOVE_KING && (info & (OV_MOVE_SHOW_FILE | OV_MOVE_SHOW_RANK)) != 0) {
        if (info & OV_MOVE_SHOW_RANK) {
            out.Put(symbols[CastlingLetter]);
            out.Put(symbols[CastlingSeparator]);
        }
        out.Put(symbols[CastlingLetter]);
        out.Put(symbols[CastlingSeparator]);
        out.Put(symbols[CastlingLetter]);
    } else {
        const bool longForm = (mode & OV_TEXT_LONG) != 0;
        if (kind <= OV_MOVE_KING && (mode & OV_TEXT_NO_PIECE_LETTER) == 0)
            out.Put(symbols[kind]);
        if ((info & OV_MOVE_SHOW_FILE) || longForm)
            out.Put(static_cast<char>('a' + (from & 7)));
        if ((info & OV_MOVE_SHOW_RANK) || longForm)
            out.Put(static_cast<char>('1' + (from >> 3)));
        if (info & OV_MOVE_CAPTURE)
            out.Put(symbols[CaptureMark]);
        else if (longForm)
            out.Put('-');
        out.PutSquare(MoveTo(move));
        if (kind == OV_MOVE_EN_PASSANT)
            out.PutSuffix(symbols, EnPassantSuffix);
        if (kind == OV_MOVE_PROMOTION) {
            if (mode & OV_TEXT_PROMOTION_SIGN)
                out.Put('=');
            // Promotion bits 0 to 3 (queen, rook, bishop, knight) give the
            // piece letters at places 3 to 0.
            out.Put(symbols[BlackPromotionPieces[MovePromotion(move)] - 2]);
        }
    }
    switch (info & OV_MOVE_OUTCOME_MASK) {
    case OV_MOVE_CHECK:
        out.PutSuffix(symbols, CheckSuffix);
        break;
    case OV_MOVE_STALEMATE:
        out.PutSuffix(symbols, StalemateSuffix);
        break;
    case OV_MOVE_MATE:
        out.PutSuffix(symbols, MateSuffix);
        break;
    default:
        break;
    }
    text[out.length] = '\0';
    return out.length;
}
