#include "pgn/write/movetext_writer.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>

#include "chess/move_notation.h"
#include "chess/tracked_position.h"
#include "frame/diagnostics.h"
#include "pgn/pgn_game.h"

namespace {

// Room for a number token or a move text, terminator included.
constexpr size_t TokenRoom = 20;
static_assert(TokenRoom >= OV_MOVE_TEXT_SIZE);

int32_t ClampColumn(int64_t column)
{
    return static_cast<int32_t>(std::min<int64_t>(column, std::numeric_limits<int32_t>::max()));
}

// The number token of `ply`: "12." for White, and in full form "12..." for
// Black, with "(" in front when a variation opens with it.
std::string_view NumberToken(char (&room)[TokenRoom], uint32_t ply, bool full, bool openBracket)
{
    char* at = room;
    if (openBracket)
        *at++ = '(';
    at = std::to_chars(at, room + TokenRoom, ply / 2 + 1).ptr;
    *at++ = '.';
    if (full && (ply & 1) != 0) {
        *at++ = '.';
        *at++ = '.';
    }
    return std::string_view(room, static_cast<size_t>(at - room));
}

// The comment at `offset` of the comment store, never reaching past the store.
std::string_view CommentAt(const char* commentText, uint32_t offset)
{
    const char* text = commentText + offset;
    return std::string_view(text, strnlen(text, PGN_COMMENT_STORE - offset));
}

// Writes the comment of annotation entry `entry` when it has one; false when
// it has none.
bool WriteCommentOf(PgnSink& sink, int32_t& column, int32_t width, const uint32_t* commentIndex,
                    const char* commentText, uint32_t entry)
{
    if (commentIndex == nullptr || commentText == nullptr)
        return false;
    uint32_t offset = commentIndex[entry];
    if (offset == 0 || offset >= PGN_COMMENT_STORE)
        return false;
    column = PgnWriteComment(sink, column, width, CommentAt(commentText, offset));
    return true;
}

void WriteNagsOf(PgnSink& sink, int32_t& column, int32_t width, const uint16_t* nags,
                 uint32_t entry)
{
    if (nags != nullptr && nags[entry] != 0)
        column = PgnWriteNags(sink, column, width, nags[entry]);
}

}  // namespace

int32_t PgnWriteNags(PgnSink& sink, int32_t column, int32_t width, uint16_t nagWord)
{
    for (uint32_t glyph : {nagWord & 0xFFu, uint32_t{nagWord} >> 8}) {
        if (glyph == 0)
            continue;
        char room[TokenRoom] = {'$'};
        char* stop = std::to_chars(room + 1, room + TokenRoom, glyph).ptr;
        column = PgnPutToken(sink, std::string_view(room, static_cast<size_t>(stop - room)),
                             column, width);
    }
    return column;
}

int32_t PgnWriteComment(PgnSink& sink, int32_t column, int32_t width, std::string_view text)
{
    column = PgnPutToken(sink, "{", column, width);
    bool firstWord = true;
    for (size_t start = text.find_first_not_of(' '); start != std::string_view::npos;
         start = text.find_first_not_of(' ', start)) {
        size_t stop = std::min(text.find(' ', start), text.size());
        std::string_view word = text.substr(start, stop - start);
        int64_t next = int64_t{column} + static_cast<int64_t>(word.size()) + (firstWord ? 0 : 1);
        if (next < width) {
            if (!firstWord)
                PgnPutChar(' ', sink);
            column = ClampColumn(next);
        } else {
            PgnPutChar('\n', sink);
            column = ClampColumn(static_cast<int64_t>(word.size()));
        }
        PgnPutText(sink, word);
        firstWord = false;
        start = stop;
    }
    if (int64_t{column} + 1 >= width) {
        PgnPutChar('\n', sink);
        column = 0;
    }
    PgnPutChar('}', sink);
    return ClampColumn(int64_t{column} + 1);
}

namespace {

// PgnWriteLine from a tracked position: each move's description also plays
// it. The position before a move is kept aside only when alternatives to the
// move follow, which start from it.
int32_t WriteLine(PgnSink& sink, const TrackedPosition& position, uint32_t ply,
                  const PackedMove* moves, uint32_t first, uint32_t end,
                  const uint32_t* commentIndex, const char* commentText, const uint16_t* nags,
                  int32_t column, int32_t width, uint32_t mode, const NotationTable* table)
{
    TrackedPosition line = position;
    TrackedPosition beforeMove;
    const bool findStalemate = StalemateMarked(table);
    uint32_t index = first;
    uint32_t currentPly = ply;
    uint32_t numberPly = ply;

    if (first >= end) {
        if (first == 0) {
            WriteNagsOf(sink, column, width, nags, 0);
            WriteCommentOf(sink, column, width, commentIndex, commentText, 0);
        }
        return column;
    }

    for (;;) {
        char room[TokenRoom];
        if (currentPly == numberPly) {
            if (index == 0) {
                WriteNagsOf(sink, column, width, nags, 0);
                WriteCommentOf(sink, column, width, commentIndex, commentText, 0);
            }
            column = PgnPutToken(sink,
                                 NumberToken(room, currentPly, true, (mode & LineOpenPending) != 0),
                                 column, width);
            mode &= ~LineOpenPending;
        } else if ((currentPly & 1) == 0) {
            column = PgnPutToken(sink, NumberToken(room, currentPly, false, false), column, width);
        }

        uint32_t move = moves[index] & ~uint32_t{MoveBranch | MoveLineEnd};
        // The alternatives to a line's first move belong to the line above.
        const bool alternativesFollow = (index > first || index == 0) && (moves[index] & MoveBranch) != 0;
        if (alternativesFollow)
            beforeMove = line;
        uint32_t info = static_cast<uint32_t>(DescribeTrackedMove(line, move, findStalemate));
        int32_t length = OvMoveToText(move, info, room, mode & LineTextModeMask, table);
        column = PgnPutToken(sink, std::string_view(room, static_cast<size_t>(length)), column,
                             width);

        WriteNagsOf(sink, column, width, nags, index + 1);
        if (WriteCommentOf(sink, column, width, commentIndex, commentText, index + 1))
            numberPly = currentPly + 1;

        if (alternativesFollow) {
            for (uint32_t alternative = index; moves[alternative] & MoveBranch;) {
                alternative = PgnAlternativeEntry(moves, alternative, end);
                if (alternative >= end) {
                    InternalErrorBox(nullptr, "Move tree corrupt.");
                    return 0;
                }
                column = WriteLine(sink, beforeMove, currentPly, moves, alternative, end, commentIndex,
                                   commentText, nags, column, width, mode | LineOpenPending | LineIsVariation,
                                   table);
                numberPly = currentPly + 1;
            }
        }

        if ((moves[index] & MoveLineEnd) || index + 1 >= end)
            break;
        ++index;
        ++currentPly;
    }

    if (mode & LineIsVariation) {
        if (int64_t{column} + 1 >= width) {
            PgnPutChar('\n', sink);
            column = 0;
        }
        PgnPutChar(')', sink);
        column = ClampColumn(int64_t{column} + 1);
    }
    return column;
}

}  // namespace

int32_t PgnWriteLine(PgnSink& sink, const sPosition& position, uint32_t ply,
                     const PackedMove* moves, uint32_t first, uint32_t end,
                     const uint32_t* commentIndex, const char* commentText, const uint16_t* nags,
                     int32_t column, int32_t width, uint32_t mode, const NotationTable* table)
{
    TrackedPosition start;
    TrackPosition(start, position);
    return WriteLine(sink, start, ply, moves, first, end, commentIndex, commentText, nags, column, width,
                     mode, table);
}
