// PGN text into a game buffer: the scanner, the game reader, the FEN and move
// readers and the builder, then the game written back as PGN text and walked
// to its end. The first byte chooses the read flags, the rest is the text.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "orvan.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const OvGameBuffer game = OvAllocGameBuffer();
    if (size == 0 || game == 0)
        return 0;
    const uint32_t flags = data[0] & (OV_PGN_TAGS_ONLY | OV_PGN_SWAP_COLOURS);
    HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size - 1);
    if (block == nullptr)
        return 0;
    std::memcpy(GlobalLock(block), data + 1, size - 1);
    GlobalUnlock(block);
    if (OvMemReadPgnGame(game, block, flags, nullptr) == 0) {
        if (HGLOBAL text = OvCreatePgnGame(game, 0))
            GlobalFree(text);
        OvGotoMove(game, PGN_MAX_MOVES);
        OvPlayMoves(game, -PGN_MAX_MOVES);
    }
    GlobalFree(block);
    return 0;
}
