// Movable memory blocks. A fixed block's handle is the address of its memory;
// a movable block's handle is the address of its record, and GlobalLock gives
// the memory. Every live handle is kept in a registry, so that a handle that
// was never issued or is already freed is refused rather than followed.
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "orvan.h"

namespace {

struct Block {
    uint32_t flags = 0;
    size_t size = 0;
    int32_t locks = 0;
    void* data = nullptr;
};

struct FreeDeleter {
    void operator()(void* memory) const { std::free(memory); }
};

class BlockRegistry {
public:
    HGLOBAL Allocate(uint32_t flags, size_t bytes)
    {
        std::unique_ptr<void, FreeDeleter> memory(std::malloc(bytes > 0 ? bytes : 1));
        if (!memory)
            return nullptr;
        if ((flags & GMEM_ZEROINIT) != 0)
            std::memset(memory.get(), 0, bytes);
        auto block = std::make_unique<Block>();
        block->flags = flags & GMEM_MOVEABLE;
        block->size = bytes;
        block->data = memory.release();
        HGLOBAL handle = HandleOf(*block);
        std::lock_guard guard(lock_);
        blocks_.emplace(handle, std::move(block));
        return handle;
    }

    HGLOBAL Resize(HGLOBAL handle, size_t bytes, uint32_t flags)
    {
        std::lock_guard guard(lock_);
        auto found = blocks_.find(handle);
        if (found == blocks_.end())
            return nullptr;
        Block& block = *found->second;
        void* grown = std::realloc(block.data, bytes > 0 ? bytes : 1);
        if (grown == nullptr)
            return nullptr;
        if ((flags & GMEM_ZEROINIT) != 0 && bytes > block.size)
            std::memset(static_cast<char*>(grown) + block.size, 0, bytes - block.size);
        block.data = grown;
        block.size = bytes;
        HGLOBAL newHandle = HandleOf(block);
        if (newHandle != handle) {  // a fixed block moved with its memory
            auto owned = std::move(found->second);
            blocks_.erase(found);
            blocks_.emplace(newHandle, std::move(owned));
        }
        return newHandle;
    }

    void* Lock(HGLOBAL handle)
    {
        std::lock_guard guard(lock_);
        Block* block = Find(handle);
        if (block == nullptr)
            return nullptr;
        if (block->flags & GMEM_MOVEABLE)
            ++block->locks;
        return block->data;
    }

    int32_t Unlock(HGLOBAL handle)
    {
        std::lock_guard guard(lock_);
        Block* block = Find(handle);
        if (block == nullptr || block->locks == 0)
            return 0;
        return --block->locks;
    }

    size_t Size(HGLOBAL handle)
    {
        std::lock_guard guard(lock_);
        Block* block = Find(handle);
        return block != nullptr ? block->size : 0;
    }

    HGLOBAL Free(HGLOBAL handle)
    {
        std::lock_guard guard(lock_);
        auto found = blocks_.find(handle);
        if (found == blocks_.end())
            return handle;
        std::free(found->second->data);
        blocks_.erase(found);
        return nullptr;
    }

private:
    static HGLOBAL HandleOf(Block& block)
    {
        return (block.flags & GMEM_MOVEABLE) ? static_cast<HGLOBAL>(&block) : block.data;
    }

    Block* Find(HGLOBAL handle)
    {
        auto found = blocks_.find(handle);
        return found != blocks_.end() ? found->second.get() : nullptr;
    }

    std::mutex lock_;
    std::unordered_map<HGLOBAL, std::unique_ptr<Block>> blocks_;
};

BlockRegistry& Registry()
{
    // Never destroyed: a host may free its blocks during its own teardown.
    static auto* registry = new BlockRegistry;
    return *registry;
}

}  // namespace

HGLOBAL GlobalAlloc(uint32_t flags, size_t bytes)
{
    return Registry().Allocate(flags, bytes);
}

HGLOBAL GlobalReAlloc(HGLOBAL block, size_t bytes, uint32_t flags)
{
    return block != nullptr ? Registry().Resize(block, bytes, flags) : nullptr;
}

void* GlobalLock(HGLOBAL block)
{
    return block != nullptr ? Registry().Lock(block) : nullptr;
}

int32_t GlobalUnlock(HGLOBAL block)
{
    return block != nullptr ? Registry().Unlock(block) : 0;
}

size_t GlobalSize(HGLOBAL block)
{
    return block != nullptr ? Registry().Size(block) : 0;
}

HGLOBAL GlobalFree(HGLOBAL block)
{
    return block != nullptr ? Registry().Free(block) : nullptr;
}
