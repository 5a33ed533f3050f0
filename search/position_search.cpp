// The position search: every game of a file tested for a position by the
// game store's pattern test.
#include "chess/position.h"
#include "search/batch_loop.h"
#include "search/search_drivers.h"

int32_t OvSearchPosGames(OvGameFile file, const sPosition* position, int32_t includeDeleted, SearchCallback callback,
                         intptr_t user)
{
    if (callback == nullptr || position == nullptr)
        return 0;
    // Only what can be so counts: castling with king and rook at home, an en
    // passant square where a capture is possible.
    sPosition wanted = *position;
    SanitizeCastling(&wanted);
    SanitizeEnPassant(&wanted, 1);

    const BulkOperation bulk(file);
    const OwnedGameBuffer gameBuffer;
    const OvGameBuffer game = gameBuffer.Get();
    SearchReport report(callback, user);
    const int32_t count = OvGetGamesCount(file);
    report.Start(count);
    {
        const SearchDataBuffer buffer;
        if (game != 0 && buffer.Get() != nullptr && count >= 0) {
            ArmPositionPattern(game, wanted);
            SearchInBatches(file, game, buffer.Get(), report, [&](const uint8_t* packed, int32_t) {
                return UnpackGame(game, packed, 2) > 0 &&
                       (includeDeleted != 0 || IGGameGetStatus(game, OvgStatusDeleted) == 0);
            });
        }
    }
    report.End();
    return 0;
}
