// The driver's header field getters and putters, status flags and source
// number of a game buffer.
#include <cstring>

#include "ovgame/game_buffer.h"
#include "siblings/game_driver.h"

using namespace ovg;

namespace {

GameBuffer* Find(uint32_t game)
{
    return Buffers().Find(game);
}

bool ValidSide(int32_t side)
{
    return side == 0 || side == 1;
}

const char* GetText(uint32_t game, TextField field, char* copy)
{
    GameBuffer* g = Find(game);
    if (g == nullptr)
        return nullptr;
    const HeaderText& text = ReadyText(*g, field);
    if (copy != nullptr)
        std::memcpy(copy, text.text, text.length + 1u);
    return text.text;
}

const char* GetSideText(uint32_t game, int32_t side, TextField white, char* copy)
{
    return ValidSide(side) ? GetText(game, TextField(white + side), copy) : nullptr;
}

int32_t PutText(uint32_t game, TextField field, const char* text)
{
    GameBuffer* g = Find(game);
    if (g == nullptr)
        return 0;
    PutFieldText(*g, field, text);
    return 1;
}

int32_t PutSideText(uint32_t game, int32_t side, TextField white, const char* text)
{
    return ValidSide(side) ? PutText(game, TextField(white + side), text) : 0;
}

// The number field chosen by `pick` from the buffer's header, 0 for a bad handle.
template <class Pick>
int32_t GetNumber(uint32_t game, Pick pick)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? 0 : pick(g->header);
}

template <class Put>
int32_t PutNumber(uint32_t game, Put put)
{
    GameBuffer* g = Find(game);
    if (g == nullptr)
        return 0;
    put(g->header);
    return 1;
}

}  // namespace

const char* IGGameGetPlace(uint32_t game, char* copy) { return GetText(game, FieldPlace, copy); }
const char* IGGameGetSite(uint32_t game, char* copy) { return GetText(game, FieldSite, copy); }
const char* IGGameGetAnnotator(uint32_t game, char* copy) { return GetText(game, FieldAnnotator, copy); }
const char* IGGameGetKeycode(uint32_t game, char* copy) { return GetText(game, FieldKeycode, copy); }
const char* IGGameGetRemark(uint32_t game, char* copy) { return GetText(game, FieldRemark, copy); }

const char* IGGameGetPlayer(uint32_t game, int32_t side, char* copy)
{
    return GetSideText(game, side, FieldWhite, copy);
}

const char* IGGameGetCountry(uint32_t game, int32_t side, char* copy)
{
    return GetSideText(game, side, FieldWhiteCountry, copy);
}

const char* IGGameGetTitle(uint32_t game, int32_t side, char* copy)
{
    return GetSideText(game, side, FieldWhiteTitle, copy);
}

int32_t IGGamePutPlace(uint32_t game, const char* text) { return PutText(game, FieldPlace, text); }
int32_t IGGamePutSite(uint32_t game, const char* text) { return PutText(game, FieldSite, text); }
int32_t IGGamePutAnnotator(uint32_t game, const char* text) { return PutText(game, FieldAnnotator, text); }
int32_t IGGamePutKeycode(uint32_t game, const char* text) { return PutText(game, FieldKeycode, text); }
int32_t IGGamePutRemark(uint32_t game, const char* text) { return PutText(game, FieldRemark, text); }

int32_t IGGamePutPlayer(uint32_t game, int32_t side, const char* text)
{
    return PutSideText(game, side, FieldWhite, text);
}

int32_t IGGamePutCountry(uint32_t game, int32_t side, const char* text)
{
    return PutSideText(game, side, FieldWhiteCountry, text);
}

int32_t IGGamePutTitle(uint32_t game, int32_t side, const char* text)
{
    return PutSideText(game, side, FieldWhiteTitle, text);
}

int32_t IGGameGetRound(uint32_t game)
{
    return GetNumber(game, [](const Header& h) { return h.round; });
}

int32_t IGGameGetElo(uint32_t game, int32_t side)
{
    return ValidSide(side) ? GetNumber(game, [side](const Header& h) { return h.elo[side]; }) : 0;
}

int32_t IGGameGetTime(uint32_t game, int32_t side)
{
    return ValidSide(side) ? GetNumber(game, [side](const Header& h) { return h.time[side]; }) : 0;
}

int32_t IGGameGetResult(uint32_t game, int32_t part)
{
    return part == 0 ? GetNumber(game, [](const Header& h) { return h.result; }) : 0;
}

int32_t IGGamePutRound(uint32_t game, int32_t round)
{
    return PutNumber(game, [round](Header& h) { h.round = round; });
}

int32_t IGGamePutElo(uint32_t game, int32_t side, int32_t elo)
{
    return ValidSide(side) ? PutNumber(game, [side, elo](Header& h) { h.elo[side] = elo; }) : 0;
}

int32_t IGGamePutTime(uint32_t game, int32_t side, int32_t minutes)
{
    return ValidSide(side) ? PutNumber(game, [side, minutes](Header& h) { h.time[side] = minutes; }) : 0;
}

int32_t IGGamePutResult(uint32_t game, int32_t result, int32_t part)
{
    if (part != 0)
        return 0;
    return PutNumber(game, [result](Header& h) { h.result = result >= 1 && result <= 3 ? result : 0; });
}

const int32_t* IGGameGetDate(uint32_t game, int32_t* triple)
{
    GameBuffer* g = Find(game);
    if (g == nullptr)
        return nullptr;
    if (triple == nullptr)
        return g->header.date;
    std::memcpy(triple, g->header.date, sizeof g->header.date);
    return triple;
}

int32_t IGGamePutDate(uint32_t game, const int32_t* triple)
{
    return PutNumber(game, [triple](Header& h) {
        for (int i = 0; i < 3; ++i)
            h.date[i] = triple == nullptr ? 0 : triple[i];
    });
}

int32_t IGGameGetSourceLoadnumber(uint32_t game)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? 0 : g->sourceNumber;
}

int32_t IGGamePutSourceLoadnumber(uint32_t game, int32_t number)
{
    GameBuffer* g = Find(game);
    if (g == nullptr)
        return 0;
    g->sourceNumber = number;
    return 1;
}

int32_t IGGameGetGamelength(uint32_t game)
{
    GameBuffer* g = Find(game);
    return g == nullptr ? 0 : MainLineLength(*g);
}

int32_t IGGameGetStatus(uint32_t game, int32_t number)
{
    GameBuffer* g = Find(game);
    if (g == nullptr || number < 0 || number > 7)
        return 0;
    return (g->status >> number) & 1;
}

int32_t IGGamePutStatus(uint32_t game, int32_t number, int32_t value)
{
    GameBuffer* g = Find(game);
    if (g == nullptr || number < 0 || number > 7)
        return 0;
    if (value != 0)
        g->status |= uint8_t(1u << number);
    else
        g->status &= uint8_t(~(1u << number));
    return 1;
}
