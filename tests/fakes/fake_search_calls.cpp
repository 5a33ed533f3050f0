// Fakes of the game driver and key database calls that the searches make
// besides those of the other fakes: batch reads of numbered games, header
// loads, the pattern test, header getters (empty texts, numbers from
// `results`) and the key iteration.
#include "fakes/fake_search_calls.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "fakes/fake_siblings.h"
#include "siblings/game_driver.h"
#include "siblings/key_database.h"

FakeSearchStore& SearchFakes()
{
    static FakeSearchStore store;
    return store;
}

void ResetSearchFakes()
{
    SearchFakes() = FakeSearchStore{};
}

namespace {

int32_t PackedNumber(const void* packed)
{
    int32_t number = 0;
    if (packed != nullptr)
        std::memcpy(&number, packed, sizeof number);
    return number;
}

// "#n": the number of a fake packed game.
std::string PackedArg(int32_t number)
{
    std::string text(1, '#');
    text += FakeArg(number);
    return text;
}

bool GameIsOpen(uint32_t game) { return Fakes().games.contains(game); }

const char* EmptyText(std::string_view function, uint32_t game)
{
    RecordCall(function, {FakeArg(game)});
    return GameIsOpen(game) ? "" : nullptr;
}

}  // namespace

int32_t OvgReadGames(uint32_t file, int32_t first, void* buffer, uint32_t* places, int32_t bufferSize,
                     int32_t maxGames)
{
    RecordCall("OvgReadGames", {FakeArg(file), FakeArg(first), FakeArg(buffer), FakeArg(places),
                                FakeArg(bufferSize), FakeArg(maxGames)});
    if (Fakes().results.contains("OvgReadGames"))
        return FakeResult("OvgReadGames", 0);
    const FakeSearchStore& store = SearchFakes();
    int32_t count = std::min({maxGames, store.batchLimit, store.games - first});
    count = std::max(count, 0);
    auto* bytes = static_cast<uint8_t*>(buffer);
    for (int32_t k = 0; k <= count; ++k)
        places[k] = 500 + 4 * static_cast<uint32_t>(k);  // games lie 4 bytes apart, not from 0
    for (int32_t k = 0; k < count; ++k) {
        const int32_t number = first + k + 1;
        std::memcpy(bytes + 4 * k, &number, sizeof number);
    }
    return count;
}

int32_t GetGameHeader(uint32_t game, const void* packed, int32_t mode, int32_t withStatus)
{
    SearchFakes().loaded = PackedNumber(packed);
    RecordCall("GetGameHeader", {FakeArg(game), PackedArg(SearchFakes().loaded), FakeArg(mode), FakeArg(withStatus)});
    return GameIsOpen(game) ? 1 : 0;
}

int32_t UnpackGame(uint32_t game, const void* packed, int32_t mode)
{
    SearchFakes().loaded = PackedNumber(packed);
    RecordCall("UnpackGame", {FakeArg(game), PackedArg(SearchFakes().loaded), FakeArg(mode)});
    if (!GameIsOpen(game))
        return -1;
    return mode != 2 || SearchFakes().hits.contains(SearchFakes().loaded) ? 1 : 0;
}

int32_t IGGameGetStatus(uint32_t game, int32_t number)
{
    RecordCall("IGGameGetStatus", {FakeArg(game), FakeArg(number)});
    if (number != OvgStatusDeleted)
        return FakeResult("IGGameGetStatus", 0);
    return SearchFakes().deleted.contains(SearchFakes().loaded) ? 1 : 0;
}

int32_t NewGameErase(uint32_t game) FAKE_ANSWER(NewGameErase, GameIsOpen(game) ? 1 : 0, FakeArg(game))
int32_t NewGameRewind(uint32_t game) FAKE_ANSWER(NewGameRewind, GameIsOpen(game) ? 1 : 0, FakeArg(game))
int32_t PatExactPosition(uint32_t game) FAKE_ANSWER(PatExactPosition, GameIsOpen(game) ? 1 : 0, FakeArg(game))

int32_t DbsCBSearchKey(int32_t key, int32_t what, int32_t scope, DbsGameVisitor visitor)
{
    RecordCall("DbsCBSearchKey", {FakeArg(key), FakeArg(what), FakeArg(scope), FakeArg(reinterpret_cast<void*>(visitor))});
    int32_t calls = 0;
    for (const int32_t number : SearchFakes().keyGames) {
        ++calls;
        if (visitor(number) == 0)
            break;
    }
    return calls;
}

// ---- Header getters ----

const char* IGGameGetPlace(uint32_t game, char*) { return EmptyText("IGGameGetPlace", game); }
const char* IGGameGetSite(uint32_t game, char*) { return EmptyText("IGGameGetSite", game); }
const char* IGGameGetAnnotator(uint32_t game, char*) { return EmptyText("IGGameGetAnnotator", game); }
const char* IGGameGetKeycode(uint32_t game, char*) { return EmptyText("IGGameGetKeycode", game); }
const char* IGGameGetRemark(uint32_t game, char*) { return EmptyText("IGGameGetRemark", game); }
const char* IGGameGetPlayer(uint32_t game, int32_t, char*) { return EmptyText("IGGameGetPlayer", game); }
const char* IGGameGetCountry(uint32_t game, int32_t, char*) { return EmptyText("IGGameGetCountry", game); }
const char* IGGameGetTitle(uint32_t game, int32_t, char*) { return EmptyText("IGGameGetTitle", game); }

int32_t IGGameGetRound(uint32_t game) FAKE_ANSWER(IGGameGetRound, 0, FakeArg(game))
int32_t IGGameGetElo(uint32_t game, int32_t side) FAKE_ANSWER(IGGameGetElo, 0, FakeArg(game), FakeArg(side))
int32_t IGGameGetResult(uint32_t game, int32_t part) FAKE_ANSWER(IGGameGetResult, 0, FakeArg(game), FakeArg(part))
int32_t IGGameGetGamelength(uint32_t game) FAKE_ANSWER(IGGameGetGamelength, 0, FakeArg(game))
int32_t IGGameGetSourceLoadnumber(uint32_t game) FAKE_ANSWER(IGGameGetSourceLoadnumber, 0, FakeArg(game))

// An unknown date, (0, 0, 0).
const int32_t* IGGameGetDate(uint32_t game, int32_t* triple)
{
    RecordCall("IGGameGetDate", {FakeArg(game), FakeArg(triple)});
    static const int32_t unknown[3] = {0, 0, 0};
    if (triple != nullptr)
        std::fill(triple, triple + 3, 0);
    return !GameIsOpen(game) ? nullptr : triple != nullptr ? triple : unknown;
}

// ---- Putters, as the start position of a position search reaches them:
// recorded, answering 1 ----

int32_t IGGamePutPlace(uint32_t game, const char* text) FAKE_ANSWER(IGGamePutPlace, 1, FakeArg(game), FakeArg(text))
int32_t IGGamePutSite(uint32_t game, const char* text) FAKE_ANSWER(IGGamePutSite, 1, FakeArg(game), FakeArg(text))
int32_t IGGamePutAnnotator(uint32_t game, const char* text)
    FAKE_ANSWER(IGGamePutAnnotator, 1, FakeArg(game), FakeArg(text))
int32_t IGGamePutKeycode(uint32_t game, const char* text) FAKE_ANSWER(IGGamePutKeycode, 1, FakeArg(game), FakeArg(text))
int32_t IGGamePutRemark(uint32_t game, const char* text) FAKE_ANSWER(IGGamePutRemark, 1, FakeArg(game), FakeArg(text))
int32_t IGGamePutPlayer(uint32_t game, int32_t side, const char* text)
    FAKE_ANSWER(IGGamePutPlayer, 1, FakeArg(game), FakeArg(side), FakeArg(text))
int32_t IGGamePutCountry(uint32_t game, int32_t side, const char* text)
    FAKE_ANSWER(IGGamePutCountry, 1, FakeArg(game), FakeArg(side), FakeArg(text))
int32_t IGGamePutTitle(uint32_t game, int32_t side, const char* text)
    FAKE_ANSWER(IGGamePutTitle, 1, FakeArg(game), FakeArg(side), FakeArg(text))
int32_t IGGamePutRound(uint32_t game, int32_t round) FAKE_ANSWER(IGGamePutRound, 1, FakeArg(game), FakeArg(round))
int32_t IGGamePutElo(uint32_t game, int32_t side, int32_t elo)
    FAKE_ANSWER(IGGamePutElo, 1, FakeArg(game), FakeArg(side), FakeArg(elo))
int32_t IGGamePutTime(uint32_t game, int32_t side, int32_t minutes)
    FAKE_ANSWER(IGGamePutTime, 1, FakeArg(game), FakeArg(side), FakeArg(minutes))
int32_t IGGamePutResult(uint32_t game, int32_t result, int32_t part)
    FAKE_ANSWER(IGGamePutResult, 1, FakeArg(game), FakeArg(result), FakeArg(part))
int32_t IGGamePutDate(uint32_t game, const int32_t* triple)
    FAKE_ANSWER(IGGamePutDate, 1, FakeArg(game), FakeArg(triple))
int32_t CastlingRights(const BoardRecord* board) FAKE_ANSWER(CastlingRights, 1, FakeArg(board))
int32_t BoardToInitialPosition(uint32_t game, const BoardRecord* board, int32_t castling, int32_t epFile, int32_t ply)
    FAKE_ANSWER(BoardToInitialPosition, 1, FakeArg(game), FakeArg(board), FakeArg(castling), FakeArg(epFile),
                FakeArg(ply))

int32_t IGNewBoard(BoardRecord* board)
{
    RecordCall("IGNewBoard", {FakeArg(board)});
    if (board != nullptr)
        *board = BoardRecord{};
    return board != nullptr ? 1 : 0;
}
