// A table of live objects named by 32-bit handles: the slot in the low bits,
// a per-slot generation above it, so that a handle of a closed object (even of
// a reused slot) is refused. 0 is never a handle. Lookups take no lock.
#ifndef OVGAME_HANDLE_TABLE_H
#define OVGAME_HANDLE_TABLE_H

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace ovg {

template <class T, int SlotBits>
class HandleTable {
public:
    static constexpr uint32_t SlotCount = 1u << SlotBits;
    static constexpr uint32_t SlotMask = SlotCount - 1;

    HandleTable() = default;
    HandleTable(const HandleTable&) = delete;
    HandleTable& operator=(const HandleTable&) = delete;
    ~HandleTable() { RemoveAll(); }

    // Takes ownership of `item`, stores its handle in item->handle and gives
    // it; 0 when all slots are taken.
    uint32_t Add(std::unique_ptr<T> item)
    {
        std::lock_guard lock(mutex_);
        for (uint32_t tried = 1; tried < SlotCount; ++tried) {
            next_ = next_ % (SlotCount - 1) + 1;  // slots 1 to SlotCount - 1
            const uint32_t slot = next_;
            if (items_[slot].load(std::memory_order_relaxed) != nullptr)
                continue;
            generations_[slot] = generations_[slot] + 1 == (1u << (32 - SlotBits)) ? 1 : generations_[slot] + 1;
            const uint32_t handle = (generations_[slot] << SlotBits) | slot;
            item->handle = handle;
            handles_[slot].store(handle, std::memory_order_relaxed);
            items_[slot].store(item.release(), std::memory_order_release);
            return handle;
        }
        return 0;
    }

    // The live object of `handle`, or null.
    T* Find(uint32_t handle) const
    {
        const uint32_t slot = handle & SlotMask;
        if (slot == 0)
            return nullptr;
        T* item = items_[slot].load(std::memory_order_acquire);
        if (item == nullptr || handles_[slot].load(std::memory_order_relaxed) != handle)
            return nullptr;
        return item;
    }

    // The live object in `slot`, or null.
    T* FindSlot(uint32_t slot) const
    {
        return slot == 0 || slot > SlotMask ? nullptr : items_[slot].load(std::memory_order_acquire);
    }

    // Takes the object of `handle` out of the table; null if not live.
    std::unique_ptr<T> Remove(uint32_t handle)
    {
        std::lock_guard lock(mutex_);
        T* item = Find(handle);
        if (item == nullptr)
            return nullptr;
        const uint32_t slot = handle & SlotMask;
        handles_[slot].store(0, std::memory_order_relaxed);
        items_[slot].store(nullptr, std::memory_order_release);
        return std::unique_ptr<T>(item);
    }

    // Takes every live object out of the table.
    std::vector<std::unique_ptr<T>> RemoveAll()
    {
        std::lock_guard lock(mutex_);
        std::vector<std::unique_ptr<T>> all;
        for (uint32_t slot = 1; slot < SlotCount; ++slot) {
            T* item = items_[slot].exchange(nullptr, std::memory_order_acq_rel);
            handles_[slot].store(0, std::memory_order_relaxed);
            if (item != nullptr)
                all.emplace_back(item);
        }
        return all;
    }

private:
    std::mutex mutex_;
    uint32_t next_ = 0;
    std::array<std::atomic<T*>, SlotCount> items_{};
    std::array<std::atomic<uint32_t>, SlotCount> handles_{};
    std::array<uint32_t, SlotCount> generations_{};
};

}  // namespace ovg

#endif
