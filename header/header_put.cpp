// OvPutHeaderInfo: the text fields that the host may set.
#include "header/code_pages.h"
#include "orvan.h"
#include "siblings/game_driver.h"

namespace {

// Room for a stored header text: 255 characters and the terminator.
constexpr int32_t StoredTextSize = 256;

}  // namespace

extern "C" ORVAN_API int32_t OvPutHeaderInfo(OvGameBuffer game, int32_t field, const char* text)
{
    char oem[StoredTextSize];
    AnsiToOemCopy(oem, text, sizeof oem);
    int32_t stored = 0;
    switch (field) {
    case HdrPlace: stored = IGGamePutPlace(game, oem); break;
    case HdrSite: stored = IGGamePutSite(game, oem); break;
    case HdrAnnotator: stored = IGGamePutAnnotator(game, oem); break;
    case HdrWhite: stored = IGGamePutPlayer(game, 0, oem); break;
    case HdrBlack: stored = IGGamePutPlayer(game, 1, oem); break;
    case HdrWhiteCountry: stored = IGGamePutCountry(game, 0, oem); break;
    case HdrBlackCountry: stored = IGGamePutCountry(game, 1, oem); break;
    case HdrWhiteTitle: stored = IGGamePutTitle(game, 0, oem); break;
    case HdrBlackTitle: stored = IGGamePutTitle(game, 1, oem); break;
    case HdrKeycode: stored = IGGamePutKeycode(game, oem); break;
    case HdrRemark: stored = IGGamePutRemark(game, oem); break;
    default: return 0;
    }
    return stored != 0 ? 1 : 0;
}
