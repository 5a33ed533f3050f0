// HeaderToTags: the header of a stored game as the tag slots of a PgnGame.
#include <charconv>
#include <cstring>

#include "frame/copy_bounded.h"
#include "header/result_texts.h"
#include "orvan.h"
#include "pgn/pgn_game.h"
#include "pgn/read/text_tag_fields.h"
#include "pgn/write/game_to_pgn.h"
#include "pgn/write/tag_formats.h"
#include "siblings/game_driver.h"

namespace {

char* Slot(PgnGame* pgn, PgnTagNumber tag)
{
    return pgn->tags[tag - 1];
}

void PutNumberUnlessZero(PgnGame* pgn, PgnTagNumber tag, int32_t value)
{
    if (value != 0) {
        // An int32_t takes at most 11 characters, far below a slot's room.
        char* slot = Slot(pgn, tag);
        *std::to_chars(slot, slot + PGN_TAG_SIZE - 1, value).ptr = '\0';
    }
}

void PutTimeUnlessZero(PgnGame* pgn, PgnTagNumber tag, int32_t minutes)
{
    if (minutes != 0)
        MinutesToTimeTag(minutes, Slot(pgn, tag));
}

}  // namespace

void MinutesToTimeTag(int32_t minutes, char* dest)
{
    FormatTimeTag(dest, minutes / 60, minutes % 60, 0);
}

void HeaderToTags(PgnGame* pgn, OvGameBuffer game)
{
    for (const TextTagField& text : TextTagFields)
        OvGetHeaderInfo(game, text.field, Slot(pgn, text.tag), PGN_TAG_SIZE);
    PutNumberUnlessZero(pgn, TagWhiteElo, IGGameGetElo(game, 0));
    PutNumberUnlessZero(pgn, TagBlackElo, IGGameGetElo(game, 1));
    PutNumberUnlessZero(pgn, TagRound, IGGameGetRound(game));
    int32_t date[3] = {0, 0, 0};
    IGGameGetDate(game, date);
    FormatDateTag(Slot(pgn, TagDate), date[0], date[1], date[2]);
    PutTimeUnlessZero(pgn, TagWhiteTime, IGGameGetTime(game, 0));
    PutTimeUnlessZero(pgn, TagBlackTime, IGGameGetTime(game, 1));

    // One stored field may carry event and remark as "event|remark".
    char* bar = std::strchr(Slot(pgn, TagEvent), '|');
    if (bar != nullptr) {
        CopyBounded(Slot(pgn, TagRemark), bar + 1, PGN_TAG_SIZE);
        *bar = '\0';
    }

    pgn->resultToken = PgnResultOfDriverResult(IGGameGetResult(game, 0));
    ResultTokenText(Slot(pgn, TagResult), pgn->resultToken);
}
