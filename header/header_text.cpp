// OvGetHeaderInfo: header fields as display text.
#include <cstdio>

#include "header/locale_date.h"
#include "header/player_description.h"
#include "header/result_texts.h"
#include "header/status_flags.h"
#include "header/text_cursor.h"
#include "orvan.h"
#include "siblings/game_driver.h"

namespace {

constexpr int32_t MinutesShownLimit = 6000;

// Room for numbers, times, status letters and the date.
using LocalText = char[LocaleDateSize];

// The stored text of a single text field; null for a code that is none.
const char* StoredText(OvGameBuffer game, int32_t field)
{
    switch (field) {
    case HdrPlace: return IGGameGetPlace(game, nullptr);
    case HdrSite: return IGGameGetSite(game, nullptr);
    case HdrAnnotator: return IGGameGetAnnotator(game, nullptr);
    case HdrWhite: return IGGameGetPlayer(game, 0, nullptr);
    case HdrBlack: return IGGameGetPlayer(game, 1, nullptr);
    case HdrWhiteCountry: return IGGameGetCountry(game, 0, nullptr);
    case HdrBlackCountry: return IGGameGetCountry(game, 1, nullptr);
    case HdrWhiteTitle: return IGGameGetTitle(game, 0, nullptr);
    case HdrBlackTitle: return IGGameGetTitle(game, 1, nullptr);
    case HdrKeycode: return IGGameGetKeycode(game, nullptr);
    case HdrRemark: return IGGameGetRemark(game, nullptr);
    default: return nullptr;
    }
}

const char* Decimal(LocalText local, int32_t value)
{
    std::snprintf(local, sizeof(LocalText), "%d", value);
    return local;
}

const char* PositiveDecimal(LocalText local, int32_t value)
{
    return value >= 1 ? Decimal(local, value) : nullptr;
}

const char* TimeText(LocalText local, int32_t minutes)
{
    if (minutes <= 0 || minutes >= MinutesShownLimit)
        return nullptr;
    std::snprintf(local, sizeof(LocalText), "%d:%02d", minutes / 60, minutes % 60);
    return local;
}

const char* StatusLetters(LocalText local, OvGameBuffer game)
{
    char* at = local;
    for (const StatusFlag& flag : ShownStatusFlags) {
        if (IGGameGetStatus(game, flag.driverNumber) != 0)
            *at++ = flag.letter;
    }
    *at = '\0';
    return local;
}

const char* DateText(LocalText local, OvGameBuffer game)
{
    const int32_t* triple = IGGameGetDate(game, nullptr);
    if (triple == nullptr)
        return nullptr;
    return FormatLocaleDate({triple[0], triple[1], triple[2]}, local, sizeof(LocalText));
}

// The text of a single field, or null when it has no value.
const char* SingleFieldText(LocalText local, OvGameBuffer game, int32_t field)
{
    switch (field) {
    case HdrRound: return PositiveDecimal(local, IGGameGetRound(game));
    case HdrWhiteElo: return PositiveDecimal(local, IGGameGetElo(game, 0));
    case HdrBlackElo: return PositiveDecimal(local, IGGameGetElo(game, 1));
    case HdrWhiteTime: return TimeText(local, IGGameGetTime(game, 0));
    case HdrBlackTime: return TimeText(local, IGGameGetTime(game, 1));
    case HdrResult: return ResultSymbolText(IGGameGetResult(game, 0));
    case HdrResultShort: return ResultShortText(IGGameGetResult(game, 0));
    case HdrDate: return DateText(local, game);
    case HdrSourceLoadnumber: return Decimal(local, IGGameGetSourceLoadnumber(game));
    case HdrMoves: return Decimal(local, (IGGameGetGamelength(game) + 1) / 2);
    case HdrStatus: return StatusLetters(local, game);
    default: return StoredText(game, field);
    }
}

// Composite fields; false for a code that is none or a game without text.
bool AppendComposite(AnsiTextCursor& out, OvGameBuffer game, int32_t field)
{
    switch (field) {
    case HdrPlayers:
        if (!AppendPlayerName(out, game, 0))
            return false;
        out.Append(" - ");
        return AppendPlayerName(out, game, 1);
    case HdrPlayersFull:
        if (!AppendPlayerDescription(out, game, 0))
            return false;
        out.Append(" - ");
        return AppendPlayerDescription(out, game, 1);
    case HdrWhiteFull: return AppendPlayerDescription(out, game, 0);
    case HdrBlackFull: return AppendPlayerDescription(out, game, 1);
    default: return false;
    }
}

bool IsComposite(int32_t field)
{
    return field >= HdrPlayers && field <= HdrBlackFull;
}

}  // namespace

extern "C" ORVAN_API int32_t OvGetHeaderInfo(OvGameBuffer game, int32_t field, char* text,
                                             int32_t textSize)
{
    if (text == nullptr)
        return 0;
    AnsiTextCursor out{text, textSize};
    out.Clear();
    // The date getter doubles as the test of the handle: the number getters
    // cannot tell a game that is not open from a zero.
    if (IGGameGetDate(game, nullptr) == nullptr)
        return 0;
    if (IsComposite(field)) {
        if (AppendComposite(out, game, field))
            return 1;
        out = {text, textSize};
        out.Clear();
        return 0;
    }
    LocalText local;
    const char* source = SingleFieldText(local, game, field);
    if (source == nullptr)
        return 0;
    out.Append(source);
    return 1;
}
