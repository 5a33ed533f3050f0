// FEN text into a position, then the position's legality test and the
// description of every move word its first men could make.
#include <cstddef>
#include <cstdint>
#include <string>

#include "orvan.h"
#include "pgn/read/fen_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    sPosition position{};
    uint32_t firstMoveNumber = 0;
    ReadFen(&position, &firstMoveNumber, text.c_str());
    OvIsLegalPos(&position);
    for (uint32_t from = 0; from < 64; ++from) {
        if (position.board[from] == OV_EMPTY)
            continue;
        for (uint32_t to = 0; to < 64; to += 9)
            OvGetMoveInfo(&position, from | to << 8);
    }
    return 0;
}
