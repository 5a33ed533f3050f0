#include "fake_header_store.h"

#include "siblings/game_driver.h"

FakeHeader& FakeGameHeader()
{
    static FakeHeader header;
    return header;
}

namespace {

FakeHeader* Open(uint32_t game)
{
    return game == FakeOpenGame ? &FakeGameHeader() : nullptr;
}

const char* Text(uint32_t game, std::string FakeHeader::* field)
{
    FakeHeader* header = Open(game);
    return header != nullptr ? (header->*field).c_str() : nullptr;
}

const char* SideText(uint32_t game, int32_t side, std::array<std::string, 2> FakeHeader::* field)
{
    FakeHeader* header = Open(game);
    return header != nullptr ? (header->*field)[side].c_str() : nullptr;
}

int32_t Put(uint32_t game, std::string FakeHeader::* field, const char* text)
{
    FakeHeader* header = Open(game);
    if (header == nullptr)
        return 0;
    header->*field = text != nullptr ? text : "";
    return 1;
}

int32_t PutSide(uint32_t game, int32_t side, std::array<std::string, 2> FakeHeader::* field,
                const char* text)
{
    FakeHeader* header = Open(game);
    if (header == nullptr)
        return 0;
    (header->*field)[side] = text != nullptr ? text : "";
    return 1;
}

}  // namespace

extern "C" {

const char* IGGameGetPlace(uint32_t game, char*) { return Text(game, &FakeHeader::place); }
const char* IGGameGetSite(uint32_t game, char*) { return Text(game, &FakeHeader::site); }
const char* IGGameGetAnnotator(uint32_t game, char*) { return Text(game, &FakeHeader::annotator); }
const char* IGGameGetKeycode(uint32_t game, char*) { return Text(game, &FakeHeader::keycode); }
const char* IGGameGetRemark(uint32_t game, char*) { return Text(game, &FakeHeader::remark); }
const char* IGGameGetPlayer(uint32_t game, int32_t side, char*)
{
    return SideText(game, side, &FakeHeader::player);
}
const char* IGGameGetCountry(uint32_t game, int32_t side, char*)
{
    return SideText(game, side, &FakeHeader::country);
}
const char* IGGameGetTitle(uint32_t game, int32_t side, char*)
{
    return SideText(game, side, &FakeHeader::title);
}
int32_t IGGameGetRound(uint32_t game) { return Open(game) ? FakeGameHeader().round : 0; }
int32_t IGGameGetElo(uint32_t game, int32_t side) { return Open(game) ? FakeGameHeader().elo[side] : 0; }
int32_t IGGameGetTime(uint32_t game, int32_t side) { return Open(game) ? FakeGameHeader().time[side] : 0; }
int32_t IGGameGetResult(uint32_t game, int32_t) { return Open(game) ? FakeGameHeader().result : 0; }
int32_t IGGameGetSourceLoadnumber(uint32_t game) { return Open(game) ? FakeGameHeader().loadnumber : 0; }
int32_t IGGameGetGamelength(uint32_t game) { return Open(game) ? FakeGameHeader().gamelength : 0; }
int32_t IGGameGetStatus(uint32_t game, int32_t number)
{
    return Open(game) ? FakeGameHeader().status[number] : 0;
}
const int32_t* IGGameGetDate(uint32_t game, int32_t* triple)
{
    FakeHeader* header = Open(game);
    if (header == nullptr)
        return nullptr;
    if (triple == nullptr)
        return header->date.data();
    for (int i = 0; i < 3; ++i)
        triple[i] = header->date[i];
    return triple;
}

int32_t IGGamePutPlace(uint32_t game, const char* text) { return Put(game, &FakeHeader::place, text); }
int32_t IGGamePutSite(uint32_t game, const char* text) { return Put(game, &FakeHeader::site, text); }
int32_t IGGamePutAnnotator(uint32_t game, const char* text)
{
    return Put(game, &FakeHeader::annotator, text);
}
int32_t IGGamePutKeycode(uint32_t game, const char* text) { return Put(game, &FakeHeader::keycode, text); }
int32_t IGGamePutRemark(uint32_t game, const char* text) { return Put(game, &FakeHeader::remark, text); }
int32_t IGGamePutPlayer(uint32_t game, int32_t side, const char* text)
{
    return PutSide(game, side, &FakeHeader::player, text);
}
int32_t IGGamePutCountry(uint32_t game, int32_t side, const char* text)
{
    return PutSide(game, side, &FakeHeader::country, text);
}
int32_t IGGamePutTitle(uint32_t game, int32_t side, const char* text)
{
    return PutSide(game, side, &FakeHeader::title, text);
}

}  // extern "C"
