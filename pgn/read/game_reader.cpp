#include "pgn/read/game_reader.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <strings.h>

#include "chess/position.h"
#include "frame/diagnostics.h"
#include "pgn/pgn_game.h"
#include "pgn/read/fen_reader.h"
#include "pgn/read/move_tree.h"

namespace {

char* TagSlot(PgnGame* game, int32_t number)
{
    return game->tags[number - 1];
}

bool IsEmptySlot(const PgnGame* game, int32_t number)
{
    return game->tags[number - 1][0] == '\0';
}

// Settles resultToken between the Result tag and the movetext's token, then
// writes the settled text into the Result slot.
void SettleResult(PgnGame* game)
{
    char* slot = TagSlot(game, TagResult);
    int32_t tag = PgnResultFromTag(slot);
    int32_t token = game->resultToken;
    bool announce = false;
    if (tag < 0 && token < 0) {
        DebugTrace("bad or missing game result \"%s\".", slot);
        token = PgnResultUnknown;
        announce = true;
    } else if (token < 0) {
        token = tag;
    } else if (tag >= 0 && tag != token) {
        DebugTrace("conflicting game result: \"%s\" versus %s.", slot, PgnResultTokens[token]);
        if (tag != PgnResultUnknown) {
            token = tag;
        }
        announce = true;
    }
    game->resultToken = token;
    ResultTokenText(slot, token);
    if (announce) {
        DebugTrace("Game result set to %s.\n", slot);
    }
}

// For a game from a set-up position with SetUp 2: the castling fields of one
// back rank name the square of their rook (plus one), found from the rooks
// and the king on that rank. `longField` indexes CastlingFields; the short
// field follows it.
void SetFischerCastling(sPosition* position, int base, uint8_t rook, uint8_t king, int longField)
{
    uint8_t& longValue = CastlingField(*position, longField);
    uint8_t& shortValue = CastlingField(*position, longField + 1);
    const uint8_t* rank = position->board + base;
    int lastRook = 8;
    int lastKing = 8;
    for (int file = 0; file < 8; ++file) {
        if (rank[file] == rook) {
            if (lastKing < file && shortValue != 0) {
                shortValue = static_cast<uint8_t>(base + file + 1);
            }
            lastRook = file;
        } else if (rank[file] == king) {
            if (lastRook < file && longValue != 0) {
                longValue = static_cast<uint8_t>(base + lastRook + 1);
            }
            lastKing = file;
        }
    }
}

// Index of the first entry that ends a line, plus one: the main line's length.
uint32_t MainLineLength(const PgnGame* game, uint32_t entries)
{
    for (uint32_t i = 0; i < entries; ++i) {
        if (game->moves[i] & MoveLineEnd) {
            return i + 1;
        }
    }
    return 0;
}

// Resolves the game's tokens into the flat tree. With variations, the two
// annotation arrays, filled by token, are replaced by a pair filled by entry.
void ResolveMoves(PgnReadContext& reader, PgnGame* game, int32_t fischer, int32_t swap)
{
    uint32_t* tokenComments = nullptr;
    uint16_t* tokenNags = nullptr;
    if (game->treeCount != 0) {
        uint32_t* comments = AllocateCommentIndexArray();
        uint16_t* nags = AllocateNagArray();
        if (comments == nullptr || nags == nullptr) {
            FreeCommentIndexArray(comments);
            FreeNagArray(nags);
            InternalErrorBox(nullptr, "Insufficient memory to allocate tree buffer.");
            // The game goes on with the arrays by token: readable, though
            // they no longer line up with the entries behind a variation.
            game->treeCount = 0;
        } else {
            tokenComments = game->commentIndex;
            tokenNags = game->nags;
            comments[0] = tokenComments[0];
            nags[0] = tokenNags[0];
            game->commentIndex = comments;
            game->nags = nags;
        }
    }
    uint32_t entries = ResolvePgnMoves(reader, game, tokenComments, tokenNags, 0, 0,
                                       game->position, 0, reader.tokenCount, fischer, swap);
    if (tokenComments != nullptr) {
        FreeCommentIndexArray(tokenComments);
        FreeNagArray(tokenNags);
        game->treeCount = entries;
    }
    // Only the main line counts as moves, also when the tree arrays could not
    // be had and the variations stand behind it with treeCount 0.
    game->moveCount = MainLineLength(game, entries);
}

}  // namespace

int32_t FindPgnTag(const char* name, size_t length)
{
    // The tag numbers by the length of their names, 0 behind the last.
    constexpr size_t LongestName = 15;
    constexpr size_t MostOfOneLength = 7;
    static constexpr auto NumbersByLength = [] {
        std::array<std::array<uint8_t, MostOfOneLength + 1>, LongestName + 1> numbers{};
        for (size_t i = 0; i < PgnTagNames.size(); ++i) {
            auto& bucket = numbers[std::char_traits<char>::length(PgnTagNames[i])];
            size_t place = 0;
            while (bucket[place] != 0) {
                ++place;
            }
            bucket[place] = static_cast<uint8_t>(i + 1);
        }
        return numbers;
    }();
    if (length > LongestName) {
        return 0;
    }
    // Every name starts with a letter: a first character that differs from
    // it in more than case rules the name out before the full comparison.
    char folded = static_cast<char>(name[0] | 0x20);
    for (uint8_t number : NumbersByLength[length]) {
        if (number == 0) {
            break;
        }
        const char* candidate = PgnTagNames[number - 1];
        if ((candidate[0] | 0x20) == folded && strncasecmp(name, candidate, length) == 0) {
            return number;
        }
    }
    return 0;
}

int32_t PgnResultFromTag(const char* text)
{
    if (text[0] == '\0') {
        return PgnResultNone;
    }
    if (text[1] == '/' || (text[1] != '\0' && text[2] == '2')) {
        return PgnResultDraw;
    }
    switch (text[0]) {
    case '1': return PgnResultWhiteWins;
    case '0': return PgnResultBlackWins;
    case '*': return PgnResultUnknown;
    default: return PgnResultNone;
    }
}

bool StartsMovetext(const char* token)
{
    return (token[0] >= '0' && token[0] <= '9') || token[0] == '.';
}

void StorePgnTag(PgnGame* game, int32_t number, const char* value)
{
    char* slot = TagSlot(game, number);
    std::strncpy(slot, value, PGN_TAG_SIZE - 1);
    slot[PGN_TAG_SIZE - 1] = '\0';
}

void SwapColours(sPosition* position)
{
    sPosition mirrored = *position;
    for (int square = 0; square < 64; ++square) {
        uint8_t code = position->board[square];
        mirrored.board[square ^ 56] = code == 0 ? 0 : static_cast<uint8_t>(code ^ 8);
    }
    mirrored.sideToMove = position->sideToMove ^ 1;
    if (position->epSquare < 64) {
        mirrored.epSquare = position->epSquare ^ 56;
    }
    mirrored.castleWhiteLong = position->castleBlackLong;
    mirrored.castleBlackLong = position->castleWhiteLong;
    mirrored.castleWhiteShort = position->castleBlackShort;
    mirrored.castleBlackShort = position->castleWhiteShort;
    *position = mirrored;
}

int32_t PgnFinishGame(PgnReadContext& reader, PgnGame* game, int32_t hasComment, uint32_t flags,
                      PgnGameCallback callback, intptr_t context)
{
    for (char* slot : game->tags) {
        if (slot[0] == '?') {
            slot[0] = '\0';
        }
    }
    int32_t movesRead = 0;
    if (!(flags & PgnTagsOnly)) {
        movesRead = 1;
        if (reader.tokenCount == 0 && IsEmptySlot(game, TagWhite) && IsEmptySlot(game, TagBlack) &&
            IsEmptySlot(game, TagResult) && game->resultToken < 0) {
            DebugTrace("skipping empty game (no players, moves and result).");
            return 1;
        }
        SettleResult(game);

        int32_t fischer = 0;
        if (IsEmptySlot(game, TagFen)) {
            *game->position = StartPosition;
        } else {
            if (ReadFen(game->position, &game->firstMoveNumber, TagSlot(game, TagFen)) != 0) {
                DebugTrace("syntax error in FEN tag, skipping game.");
                return 1;
            }
            if (std::strtol(TagSlot(game, TagSetUp), nullptr, 10) == 2) {
                fischer = 1;
                SetFischerCastling(game->position, 0, OV_WHITE_ROOK, OV_WHITE_KING, 0);
                SetFischerCastling(game->position, 56, OV_BLACK_ROOK, OV_BLACK_KING, 2);
            }
        }
        int32_t swap = (flags & PgnSwapColours) ? 1 : 0;
        if (swap) {
            SwapColours(game->position);
        }
        ResolveMoves(reader, game, fischer, swap);
    }
    return callback != nullptr ? callback(game, hasComment, movesRead, context) : 0;
}
