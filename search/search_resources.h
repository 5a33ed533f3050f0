// What a search holds from its head to its end, each released on every path:
// the bulk operation on the file and the data buffer that receives the packed
// games (the game buffer is an OwnedGameBuffer).
#ifndef ORVAN_SEARCH_SEARCH_RESOURCES_H
#define ORVAN_SEARCH_SEARCH_RESOURCES_H

#include <cstdint>

#include "orvan.h"
#include "frame/owned_game_buffer.h"

// Bytes of the data buffer, and games asked for in one batch read.
inline constexpr int32_t SearchBufferBytes = 65536;
inline constexpr int32_t SearchBatchGames = 100;

class BulkOperation {
public:
    explicit BulkOperation(OvGameFile file) : file_(file) { OvStartBulkOperation(file_, OV_BULK_ANY); }
    ~BulkOperation() { OvEndBulkOperation(file_); }
    BulkOperation(const BulkOperation&) = delete;
    BulkOperation& operator=(const BulkOperation&) = delete;

private:
    OvGameFile file_;
};

// SearchBufferBytes of fixed memory; null when none is left.
class SearchDataBuffer {
public:
    SearchDataBuffer() : block_(GlobalAlloc(GMEM_FIXED, SearchBufferBytes)) {}
    ~SearchDataBuffer()
    {
        if (block_ != nullptr)
            GlobalFree(block_);
    }
    SearchDataBuffer(const SearchDataBuffer&) = delete;
    SearchDataBuffer& operator=(const SearchDataBuffer&) = delete;

    uint8_t* Get() const { return static_cast<uint8_t*>(block_); }  // a fixed block's handle is its memory

private:
    HGLOBAL block_;
};

#endif
