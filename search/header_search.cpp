// The header search: every game's header tested against a prepared query.
#include "search/batch_loop.h"
#include "search/header_match.h"
#include "search/query.h"
#include "search/search_drivers.h"

int32_t SearchHeaders(OvGameFile file, const sQuery& query, SearchCallback callback, intptr_t user)
{
    sQuery prepared;
    int32_t groupCount = 0;
    int32_t conditionCount = 0;
    PrepareQuery(&prepared, &query, &groupCount, &conditionCount);
    const MatchPlan plan = PlanMatch(prepared, groupCount, conditionCount);

    const BulkOperation bulk(file);
    const OwnedGameBuffer gameBuffer;
    const OvGameBuffer game = gameBuffer.Get();
    SearchReport report(callback, user);
    {
        const SearchDataBuffer buffer;
        if (game != 0 && buffer.Get() != nullptr) {
            const int32_t count = OvGetGamesCount(file);
            report.Start(count);
            if (count >= 0)
                SearchInBatches(file, game, buffer.Get(), report, [&](const uint8_t* packed, int32_t number) {
                    GetGameHeader(game, packed, 0, 1);
                    IGGamePutSourceLoadnumber(game, number);
                    return MatchPlanned(game, plan) != 0;
                });
        }
    }
    report.End();
    return 0;
}
