#include "pgn/write/game_writer.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "chess/move_notation.h"
#include "chess/position.h"
#include "pgn/pgn_game.h"
#include "pgn/write/fen_writer.h"
#include "pgn/write/movetext_writer.h"
#include "pgn/write/tag_formats.h"

namespace {

enum class TagRule {
    Always,        // slot text, "?" when empty
    AlwaysAsIs,    // slot text, also when empty
    WhenSet,       // slot text, no line when empty
    Date,          // always, in the form yyyy.mm.dd
    TimeWhenSet,   // in the form hh:mm:ss, no line when the three numbers add up to 0
};

struct TagPlace {
    PgnTagNumber tag;
    TagRule rule;
};

// The tag section in its order of writing; SetUp and FEN follow when the game
// has a set-up position.
constexpr TagPlace TagSection[] = {
    {TagEvent, TagRule::Always},          {TagSite, TagRule::Always},
    {TagDate, TagRule::Date},             {TagRound, TagRule::Always},
    {TagWhite, TagRule::Always},          {TagBlack, TagRule::Always},
    {TagResult, TagRule::AlwaysAsIs},     {TagWhiteTitle, TagRule::WhenSet},
    {TagWhiteElo, TagRule::WhenSet},      {TagWhiteCountry, TagRule::WhenSet},
    {TagWhiteTime, TagRule::TimeWhenSet}, {TagBlackTitle, TagRule::WhenSet},
    {TagBlackElo, TagRule::WhenSet},      {TagBlackCountry, TagRule::WhenSet},
    {TagBlackTime, TagRule::TimeWhenSet}, {TagAnnotator, TagRule::WhenSet},
    {TagEco, TagRule::WhenSet},           {TagRemark, TagRule::WhenSet},
};

std::string_view SlotText(const PgnGame& game, PgnTagNumber tag)
{
    const char* slot = game.tags[tag - 1];
    return std::string_view(slot, strnlen(slot, PGN_TAG_SIZE - 1));
}

// [Name "value"] and a line feed.
void WriteTagLine(PgnSink& sink, PgnTagNumber tag, std::string_view value)
{
    PgnPutChar('[', sink);
    PgnPutText(sink, PgnTagNames[tag - 1]);
    PgnPutText(sink, " \"");
    PgnPutText(sink, value);
    PgnPutText(sink, "\"]\n");
}

void WriteTagSection(PgnSink& sink, const PgnGame& game, const sPosition& start)
{
    for (const TagPlace& place : TagSection) {
        std::string_view value = SlotText(game, place.tag);
        switch (place.rule) {
        case TagRule::Always:
            WriteTagLine(sink, place.tag, value.empty() ? "?" : value);
            break;
        case TagRule::AlwaysAsIs:
            WriteTagLine(sink, place.tag, value);
            break;
        case TagRule::WhenSet:
            if (!value.empty())
                WriteTagLine(sink, place.tag, value);
            break;
        case TagRule::Date: {
            int32_t year, month, day;
            ParseDateText(value, year, month, day);
            char date[DateTagSize];
            FormatDateTag(date, year, month, day);
            WriteTagLine(sink, place.tag, date);
            break;
        }
        case TagRule::TimeWhenSet: {
            int32_t hours, minutes, seconds;
            ParseTimeText(value, hours, minutes, seconds);
            if (int64_t{hours} + minutes + seconds > 0) {
                char time[TimeTagSize];
                FormatTimeTag(time, hours, minutes, seconds);
                WriteTagLine(sink, place.tag, time);
            }
            break;
        }
        }
    }
    if (!IsStartPosition(&start)) {
        PgnPrintf(sink, "[%s \"%u\"]\n", PgnTagNames[TagSetUp - 1],
                  LeadingNumber(SlotText(game, TagSetUp)) == 2 ? 2u : 1u);
        char fen[FenTextSize];
        PositionToFen(start, game.firstMoveNumber, fen);
        WriteTagLine(sink, TagFen, fen);
    }
}

}  // namespace

void PgnWriteGame(PgnSink& sink, const PgnGame& game)
{
    const sPosition& start = *game.position;
    WriteTagSection(sink, game, start);
    PgnPutChar('\n', sink);

    uint32_t firstPly = 2 * game.firstMoveNumber + (start.sideToMove == 0 ? 1 : 0);
    uint32_t end = std::min<uint32_t>(game.treeCount != 0 ? game.treeCount : game.moveCount,
                                      PGN_MAX_MOVES);
    int32_t column = PgnWriteLine(sink, start, firstPly, game.moves, 0, end, game.commentIndex,
                                  game.commentText, game.nags, 0, PgnLineWidth, PgnMoveTextMode,
                                  &DefaultNotation);
    PgnPutToken(sink, SlotText(game, TagResult), column, PgnLineWidth);
    PgnPutText(sink, "\n\n");
    sink.Flush();
}
