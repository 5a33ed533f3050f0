// Arbitrary query records: the emptiness test, the preparation (texts folded,
// numbers and dates read) and the test of the prepared query against a game
// with every header field set. Condition texts need not be terminated.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "orvan.h"
#include "search/header_match.h"
#include "search/query.h"

namespace {

constexpr char GameText[] =
    "[Event \"Open 1997\"]\n[Site \"Bern\"]\n[Date \"1997.05.12\"]\n[Round \"4\"]\n"
    "[White \"Adams, M\"]\n[Black \"Zoller, K\"]\n[Result \"1/2-1/2\"]\n[WhiteElo \"2610\"]\n"
    "[BlackElo \"2405\"]\n[ECO \"B90\"]\n[Annotator \"Kern\"]\n\n"
    "1. e4 c5 2. Nf3 d6 3. d4 cxd4 4. Nxd4 Nf6 5. Nc3 a6 1/2-1/2\n";

OvGameBuffer LoadGame()
{
    const OvGameBuffer game = OvAllocGameBuffer();
    HGLOBAL block = GlobalAlloc(GMEM_FIXED, sizeof GameText);
    std::memcpy(block, GameText, sizeof GameText);
    OvMemReadPgnGame(game, block, 0, nullptr);
    GlobalFree(block);
    OvPutHeaderInfo(game, HdrWhiteCountry, "ENG");
    OvPutHeaderInfo(game, HdrBlackTitle, "IM");
    return game;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const OvGameBuffer game = LoadGame();
    sQuery query{};
    std::memcpy(&query, data, std::min(size, sizeof query));
    OvIsEmptyQuery(&query);
    sQuery prepared;
    int32_t groupCount = 0;
    int32_t conditionCount = 0;
    PrepareQuery(&prepared, &query, &groupCount, &conditionCount);
    if (groupCount < 0 || groupCount > OV_QUERY_GROUPS || conditionCount < 0 || conditionCount > OV_QUERY_ROWS)
        __builtin_trap();
    MatchGame(game, prepared, groupCount, conditionCount);
    return 0;
}
