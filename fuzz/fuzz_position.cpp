// Arbitrary 70-byte records and move words: the legality test, the move
// description (which must give the record back unchanged), the move text (which
// must stay inside its 10 bytes) and playing the move.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "orvan.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < sizeof(sPosition) + 4)
        return 0;
    sPosition position;
    std::memcpy(&position, data, sizeof position);
    const sPosition before = position;
    OvIsLegalPos(&position);
    for (size_t at = sizeof position; at + 4 <= size; at += 4) {
        const uint32_t move = data[at] | data[at + 1] << 8;
        const uint32_t mode = data[at + 2];
        const uint32_t infoSeed = data[at + 3];
        const int32_t info = OvGetMoveInfo(&position, move);
        if (std::memcmp(&position, &before, sizeof position) != 0)
            std::abort();
        NotationTable table;
        std::memcpy(table.symbols, data + at - 16, sizeof table.symbols);
        char text[OV_MOVE_TEXT_SIZE + 1];
        text[OV_MOVE_TEXT_SIZE] = '\x7f';
        const int32_t length = OvMoveToText(move, (infoSeed & 1) ? infoSeed : info, text, mode,
                                            (mode & 8) ? &table : nullptr);
        if (length < 0 || length >= OV_MOVE_TEXT_SIZE || text[length] != 0 || text[OV_MOVE_TEXT_SIZE] != '\x7f')
            std::abort();
    }
    sPosition played = position;
    OvPlayMove(&played, data[sizeof position] | data[sizeof position + 1] << 8);
    OvIsLegalPos(&played);
    return 0;
}
