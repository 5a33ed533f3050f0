#include "pgn/read/move_tree.h"

#include <cstdio>

#include "chess/move_generator.h"
#include "frame/diagnostics.h"
#include "pgn/read/move_token.h"

namespace {

constexpr uint16_t MarkerBits = MoveLineEnd | MoveBranch;
constexpr NotationTable DefaultNotation = OV_DEFAULT_NOTATION_TABLE;

// Everything a line of the tree shares with its sub-lines.
struct TreeWalk {
    PgnReadContext& reader;
    PgnGame* game;
    const uint32_t* tokenComments;
    const uint16_t* tokenNags;
    uint32_t tokenEnd;
    int32_t fischer;
    int32_t swap;
};

// The move as the token tells it, in the input's piece letters.
void TraceIllegalMove(const PgnPieceLetters& letters, uint32_t token)
{
    const char* pieceLetters = letters.Letters();
    char text[16];
    if (token & (MoveTokenBits::ShortCastling | MoveTokenBits::LongCastling)) {
        DebugTrace("Illegal move: O-O%s\n", (token & MoveTokenBits::ShortCastling) ? "" : "-O");
        return;
    }
    int length = 0;
    uint32_t piece = TokenPiece(token);
    if (piece >= PieceKnight && piece <= PieceKing) {
        text[length++] = pieceLetters[piece - PieceKnight];
    }
    if (token & MoveTokenBits::FromFileGiven) {
        text[length++] = static_cast<char>('a' + TokenFromFile(token));
    }
    if (token & MoveTokenBits::FromRankGiven) {
        text[length++] = static_cast<char>('1' + TokenFromRank(token));
    }
    text[length++] = static_cast<char>('a' + TokenToFile(token));
    if (!(token & MoveTokenBits::NoToRank)) {
        text[length++] = static_cast<char>('1' + TokenToRank(token));
    }
    uint32_t promotion = TokenPromotion(token);
    if (promotion >= PieceKnight && promotion <= PieceKing) {
        text[length++] = pieceLetters[promotion - PieceKnight];
    }
    text[length] = '\0';
    DebugTrace("Illegal move: %s\n", text);
}

// Reports the move that cannot be played and the moves of the line before it.
// Kept out of line so that the frames of the recursion over lines stay small.
[[gnu::noinline]] void ReportIllegalMove(const TreeWalk& walk, const sPosition& line, const sPosition* start,
                       uint32_t firstEntry, uint32_t out, uint32_t tokenIndex)
{
    uint32_t token = walk.reader.tokens[tokenIndex];
    DumpBoard(&line);
    DebugTrace("PgnMove pce %d bfrom %d from %d bsqre %d sqre %d prompce %d castle %d\n",
               static_cast<int>(TokenPiece(token)), static_cast<int>((token >> 3) & 3),
               static_cast<int>((token >> 5) & 63), static_cast<int>((token >> 11) & 1),
               static_cast<int>((token >> 12) & 63), static_cast<int>(TokenPromotion(token)),
               static_cast<int>((token >> 21) & 3));
    TraceIllegalMove(walk.reader.pieceLetters, token);
    if (out > 0) {
        DebugTrace("previous moves: ");
        sPosition replay = *start;
        for (uint32_t entry = firstEntry; entry < out; ++entry) {
            uint32_t move = walk.game->moves[entry] & ~MarkerBits;
            char text[OV_MOVE_TEXT_SIZE];
            uint32_t info = static_cast<uint32_t>(OvGetMoveInfo(&replay, move));
            OvMoveToText(move, info, text, OV_TEXT_PROMOTION_SIGN, &DefaultNotation);
            DebugTrace("%s ", text);
            ApplyMove(&replay, move);
        }
        DebugTrace("\n");
    }
    DebugTrace("%d%c (%d/%d) illegal, game truncated.", static_cast<int>(out / 2 + 1),
               tokenIndex % 2 == 0 ? 'w' : 'b', static_cast<int>(tokenIndex + 1),
               static_cast<int>(walk.tokenEnd));
}

uint32_t ResolveLine(const TreeWalk& walk, uint32_t firstEntry, int32_t stackBase,
                     const sPosition* start, uint32_t token)
{
    PgnGame* game = walk.game;
    const uint32_t* tokens = walk.reader.tokens;
    PgnBranch* stack = walk.reader.branchStack;
    TrackedPosition line;
    TrackPosition(line, *start);
    uint32_t previous = 0;
    int32_t depth = 0;
    uint32_t out = firstEntry;
    int32_t sp = stackBase;

    while (token < walk.tokenEnd && depth >= 0) {
        // The move array holds as many entries as the token list; a line never
        // writes past it, whatever the brackets say.
        if (out >= PGN_MAX_MOVES) {
            break;
        }
        if (previous != 0) {
            PlayTrackedMove(line, previous);
        }
        previous = ResolveMoveToken(line, tokens[token], walk.fischer, walk.swap);
        if (previous == 0) {
            ReportIllegalMove(walk, line.record, start, firstEntry, out, token);
            if (out > firstEntry) {
                game->moves[out - 1] |= MoveLineEnd;
            }
            return out;
        }
        game->moves[out++] = static_cast<PackedMove>(previous);
        ++token;
        if (walk.tokenComments != nullptr) {
            game->commentIndex[out] = walk.tokenComments[token];
            game->nags[out] = walk.tokenNags[token];
        }
        if (token >= walk.tokenEnd) {
            break;
        }
        if (TokenCloseCount(tokens[token]) != 0) {
            break;  // this line ends in front of the next token
        }
        // Alternatives to `previous` are set aside and played after this line.
        while (TokenOpens(tokens[token])) {
            depth = 0;
            for (;;) {
                uint32_t word = tokens[token];
                depth += (TokenOpens(word) ? 1 : 0) - static_cast<int32_t>(TokenCloseCount(word));
                if (TokenOpens(word) && depth == 1) {
                    // A full stack drops the alternative: its moves are passed
                    // over with the others and never played.
                    if (sp < PgnBranchStackSize) {
                        stack[sp++] = {out - 1, token, line.record};
                    } else {
                        DebugTrace("too many pending variations, skipping variation.");
                    }
                }
                if (depth <= 0) {
                    break;
                }
                if (++token >= walk.tokenEnd) {
                    break;
                }
            }
            if (token >= walk.tokenEnd || depth < 0) {
                break;
            }
        }
    }
    if (out > firstEntry) {
        game->moves[out - 1] |= MoveLineEnd;
    }

    // Sub-lines, from the latest move with alternatives back to the first.
    while (sp > stackBase) {
        int32_t top = sp - 1;
        uint32_t parent = stack[top].parentIndex;
        int32_t low = top;
        while (low > stackBase && stack[low - 1].parentIndex == parent) {
            --low;
        }
        uint32_t lastAlternative = parent;
        for (int32_t i = low; i <= top; ++i) {
            uint32_t before = out;
            out = ResolveLine(walk, out, sp, &stack[i].startPosition, stack[i].firstToken);
            if (out > before) {
                if (!(game->moves[parent] & MoveBranch)) {
                    game->moves[parent] |= MoveBranch;
                } else {
                    game->moves[lastAlternative] |= MoveBranch;
                }
                lastAlternative = before;
            }
        }
        sp = low;
    }
    return out;
}

}  // namespace

uint32_t ResolvePgnMoves(PgnReadContext& reader, PgnGame* game, const uint32_t* tokenComments,
                         const uint16_t* tokenNags, uint32_t firstEntry, int32_t stackBase,
                         const sPosition* start, uint32_t firstToken, uint32_t tokenEnd,
                         int32_t fischer, int32_t swap)
{
    TreeWalk walk{reader, game, tokenComments, tokenNags, tokenEnd, fischer, swap};
    return ResolveLine(walk, firstEntry, stackBase, start, firstToken);
}

void DumpBoard(const sPosition* position)
{
    constexpr char Letters[] = "?PNBRQK?";
    for (int rank = 7; rank >= 0; --rank) {
        char text[8 * 3 + 2];
        int length = 0;
        for (int file = 0; file < 8; ++file) {
            uint8_t code = position->board[8 * rank + file];
            if (code == 0) {
                text[length++] = '.';
                text[length++] = '.';
            } else {
                text[length++] = (code & 8) ? 'W' : 'B';
                text[length++] = Letters[code & 7];
            }
            text[length++] = ' ';
        }
        text[length++] = '\n';
        text[length] = '\0';
        DebugTrace("%s", text);
    }
}
