// Move texts of PGN as MoveTokens, and a token as a move in a position.
#ifndef ORVAN_PGN_READ_MOVE_TOKEN_H
#define ORVAN_PGN_READ_MOVE_TOKEN_H

#include <cstdint>

#include "chess/tracked_position.h"
#include "orvan.h"

// A move of the text, read without a board. Piece numbers are colourless:
// 1 pawn, 2 knight, 3 bishop, 4 rook, 5 queen, 6 king.
namespace MoveTokenBits {
inline constexpr uint32_t PieceMask = 0x7;           // bits 0-2
inline constexpr uint32_t FromFileGiven = 1u << 3;
inline constexpr uint32_t FromRankGiven = 1u << 4;
inline constexpr int FromFileShift = 5;              // bits 5-7
inline constexpr int FromRankShift = 8;              // bits 8-10
inline constexpr uint32_t NoToRank = 1u << 11;       // pawn capture by files alone
inline constexpr int ToFileShift = 12;               // bits 12-14
inline constexpr int ToRankShift = 15;               // bits 15-17
inline constexpr int PromotionShift = 18;            // bits 18-20, 0 none
inline constexpr uint32_t ShortCastling = 1u << 21;
inline constexpr uint32_t LongCastling = 1u << 22;
inline constexpr uint32_t OpensVariation = 1u << 23;
inline constexpr int CloseCountShift = 24;           // bits 24-31
inline constexpr uint32_t MoveBits = (1u << 23) - 1; // what the move text gives
}  // namespace MoveTokenBits

enum PgnPiece : uint32_t {
    PiecePawn = 1, PieceKnight, PieceBishop, PieceRook, PieceQueen, PieceKing
};

inline uint32_t TokenPiece(uint32_t token) { return token & MoveTokenBits::PieceMask; }
inline uint32_t TokenFromFile(uint32_t token) { return (token >> MoveTokenBits::FromFileShift) & 7; }
inline uint32_t TokenFromRank(uint32_t token) { return (token >> MoveTokenBits::FromRankShift) & 7; }
inline uint32_t TokenToFile(uint32_t token) { return (token >> MoveTokenBits::ToFileShift) & 7; }
inline uint32_t TokenToRank(uint32_t token) { return (token >> MoveTokenBits::ToRankShift) & 7; }
inline uint32_t TokenPromotion(uint32_t token) { return (token >> MoveTokenBits::PromotionShift) & 7; }
inline uint32_t TokenCloseCount(uint32_t token) { return token >> MoveTokenBits::CloseCountShift; }
inline bool TokenOpens(uint32_t token) { return (token & MoveTokenBits::OpensVariation) != 0; }

// The letters the input uses for knight, bishop, rook, queen and king, with
// tables from character to meaning for the move reader's inner loops.
class PgnPieceLetters {
public:
    PgnPieceLetters() { Set(nullptr); }

    // Takes the first five characters of `letters`; null means "NBRQK".
    void Set(const char* letters);

    const char* Letters() const { return letters_; }

    // What a character means behind the target file of a move, read from the
    // end of the text: a promotion piece (TailPromotion plus its number 2 to
    // 5), the "p" of an "ep" suffix, a rank digit, the letter "e" (a file, or
    // the "e" of "ep"), another file letter, or nothing (0). The earlier
    // meaning in this order wins for a character that has two.
    enum : uint8_t { TailPromotion = 0x10, TailP = 0x20, TailRank = 0x30, TailE = 0x40, TailFile = 0x50 };
    uint8_t TailClass(char c) const { return tail_[static_cast<uint8_t>(c)]; }

    // What a character in front of the target file makes of a MoveToken: a
    // file letter gives the from-file, a rank digit the from-rank, a piece
    // letter the piece, each in place of what stood there; any other
    // character leaves it alone.
    uint32_t WithHead(uint32_t word, char c) const
    {
        const HeadStep& step = head_[static_cast<uint8_t>(c)];
        return (word & ~step.clear) | step.set;
    }

private:
    struct HeadStep {
        uint32_t clear;  // the field the character gives
        uint32_t set;    // its value, with the bit that tells it is given
    };

    char letters_[6] = {};
    uint8_t tail_[256] = {};
    HeadStep head_[256] = {};
};

// True for a text that is never a move: empty, starting with ".", or starting
// with a digit that no "-" follows (a move number; "0-0" may be castling).
inline bool IsNeverAMove(const char* text, int32_t length)
{
    return length <= 0 || text[0] == '.' ||
           (text[0] >= '0' && text[0] <= '9' && (length < 2 || text[1] != '-'));
}

// Reads a text without a target file as castling: two of O, o or 0 are
// short, three are long. Returns 1 and puts the king and the castling bit
// into *word, else 0.
int32_t ParseCastlingToken(const char* text, int32_t length, uint32_t* word);

// Reads `text` of `length` characters as a move, from its end: standard or
// long algebraic, pawn captures by files alone, castling with letters or
// digits, suffixes passed over. Returns 1 and sets bits 0-22 of *token for a
// move, else 0 with *token untouched. Inline: it runs for every move.
inline int32_t ParseMoveToken(const PgnPieceLetters& pieceLetters, const char* text, int32_t length, uint32_t* token)
{
    using namespace MoveTokenBits;
    if (IsNeverAMove(text, length)) {
        return 0;
    }
    uint32_t word = PiecePawn;
    int rank = -1;
    bool sawP = false;
    int32_t fileAt = length - 1;
    for (; fileAt >= 0; --fileAt) {
        char c = text[fileAt];
        uint8_t meaning = pieceLetters.TailClass(c);
        if (meaning == PgnPieceLetters::TailFile) {
            break;
        }
        switch (meaning & 0xF0) {
        case PgnPieceLetters::TailPromotion:
            word = (word & ~(7u << PromotionShift)) | (static_cast<uint32_t>(meaning & 7) << PromotionShift);
            continue;
        case PgnPieceLetters::TailP:
            sawP = true;
            continue;
        case PgnPieceLetters::TailRank:
            rank = c - '1';
            continue;
        case PgnPieceLetters::TailE:
            if (sawP && rank < 0) {
                continue;  // the "e" of a suffix written "ep"
            }
            break;
        default:
            continue;
        }
        break;
    }
    if (fileAt < 0) {
        if (!ParseCastlingToken(text, length, &word)) {
            return 0;
        }
        *token = word;
        return 1;
    }
    word |= static_cast<uint32_t>(text[fileAt] - 'a') << ToFileShift;
    if (rank >= 0) {
        word |= static_cast<uint32_t>(rank) << ToRankShift;
    } else {
        word |= NoToRank;
    }
    // Walking to the front, the first of two characters that give one
    // field wins.
    for (int32_t i = fileAt - 1; i >= 0; --i) {
        word = pieceLetters.WithHead(word, text[i]);
    }
    *token = word;
    return 1;
}

// The PackedMove that `token` means in `position` (left as it was), or 0 when
// it is illegal or ambiguous.
// `fischer` allows castling with the king going to its rook's square; `swap`
// mirrors the token's ranks first, for a game read with colours exchanged.
uint32_t ResolveMoveToken(TrackedPosition& position, uint32_t token, int32_t fischer, int32_t swap);

#endif
