// The header and the start position of a PgnGame to the store.
#include <algorithm>
#include <cstdint>
#include <string_view>

#include "chess/piece_codes.h"
#include "header/result_texts.h"
#include "orvan.h"
#include "pgn/pgn_game.h"
#include "pgn/read/game_builder.h"
#include "pgn/read/text_tag_fields.h"
#include "pgn/write/tag_formats.h"
#include "siblings/game_driver.h"

namespace {

const char* Tag(const PgnGame& pgn, PgnTagNumber tag)
{
    return pgn.tags[tag - 1];
}

bool TagIsSet(const PgnGame& pgn, PgnTagNumber tag)
{
    return Tag(pgn, tag)[0] != '\0';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

int32_t ClampToInt32(int64_t value)
{
    return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

}  // namespace

int32_t PgnTimeToMinutes(const char* text)
{
    const std::string_view time(text);
    const int64_t hours = LeadingNumber(time);
    size_t at = time.find_first_not_of(' ');
    if (at != std::string_view::npos && (time[at] == '+' || time[at] == '-'))
        ++at;
    while (at < time.size() && IsDigit(time[at]))
        ++at;
    while (at < time.size() && !IsDigit(time[at]))
        ++at;
    const int64_t minutes = at < time.size() ? LeadingNumber(time.substr(at)) : 0;
    return ClampToInt32(60 * hours + minutes);
}

void PutPgnHeader(const PgnGame& pgn, OvGameBuffer game)
{
    for (const TextTagField& text : TextTagFields)
        OvPutHeaderInfo(game, text.field, Tag(pgn, text.tag));

    if (TagIsSet(pgn, TagWhiteTime))
        IGGamePutTime(game, 0, PgnTimeToMinutes(Tag(pgn, TagWhiteTime)));
    if (TagIsSet(pgn, TagBlackTime))
        IGGamePutTime(game, 1, PgnTimeToMinutes(Tag(pgn, TagBlackTime)));
    if (TagIsSet(pgn, TagWhiteElo))
        IGGamePutElo(game, 0, LeadingNumber(Tag(pgn, TagWhiteElo)));
    if (TagIsSet(pgn, TagBlackElo))
        IGGamePutElo(game, 1, LeadingNumber(Tag(pgn, TagBlackElo)));
    if (TagIsSet(pgn, TagRound))
        IGGamePutRound(game, LeadingNumber(Tag(pgn, TagRound)));

    int32_t date[3] = {0, 0, 0};
    ParseDateText(Tag(pgn, TagDate), date[0], date[1], date[2]);
    IGGamePutDate(game, date);

    const int32_t result = DriverResultOfPgnResult(pgn.resultToken);
    if (result != DriverResultNone)
        IGGamePutResult(game, result, 0);
}

void PutPgnStartPosition(const sPosition& position, uint32_t firstMoveNumber, OvGameBuffer game)
{
    BoardRecord board;
    IGNewBoard(&board);
    for (int square = 0; square < 64; ++square)
        board.squares[BoardIndex(square & 7, square >> 3)] = DriverPieceFromPosition(position.board[square]);

    int32_t castling = (position.castleWhiteShort != 0 ? DrvCastleWhiteShort : 0) |
                       (position.castleWhiteLong != 0 ? DrvCastleWhiteLong : 0) |
                       (position.castleBlackShort != 0 ? DrvCastleBlackShort : 0) |
                       (position.castleBlackLong != 0 ? DrvCastleBlackLong : 0);
    castling &= CastlingRights(&board);
    const int32_t epFile = position.epSquare < 64 ? (position.epSquare & 7) + 1 : 0;
    const int32_t ply = ClampToInt32(2 * int64_t{firstMoveNumber} + (WhiteToMove(position) ? 1 : 2));
    BoardToInitialPosition(game, &board, castling, epFile, ply);
}
