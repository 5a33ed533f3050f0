// A game buffer from OvAllocGameBuffer that is freed when it goes out of scope.
#ifndef ORVAN_FRAME_OWNED_GAME_BUFFER_H
#define ORVAN_FRAME_OWNED_GAME_BUFFER_H

#include "orvan.h"

class OwnedGameBuffer {
public:
    // OvAllocGameBuffer shows its own box when it fails; Get() is then 0.
    OwnedGameBuffer() : game_(OvAllocGameBuffer()) {}
    ~OwnedGameBuffer()
    {
        if (game_ != 0)
            OvFreeGameBuffer(game_);
    }
    OwnedGameBuffer(const OwnedGameBuffer&) = delete;
    OwnedGameBuffer& operator=(const OwnedGameBuffer&) = delete;

    OvGameBuffer Get() const { return game_; }

private:
    OvGameBuffer game_;
};

#endif
