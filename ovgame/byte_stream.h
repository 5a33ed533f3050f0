// Byte writer and bounded byte reader with variable-length integers.
#ifndef OVGAME_BYTE_STREAM_H
#define OVGAME_BYTE_STREAM_H

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace ovg {

class ByteWriter {
public:
    explicit ByteWriter(std::vector<uint8_t>& out) : out_(out) {}
    void Byte(uint8_t value) { out_.push_back(value); }
    void Varint(uint64_t value)
    {
        while (value >= 0x80) {
            out_.push_back(uint8_t(value | 0x80));
            value >>= 7;
        }
        out_.push_back(uint8_t(value));
    }
    void Signed(int32_t value) { Varint((uint32_t(value) << 1) ^ uint32_t(value >> 31)); }
    void U16(uint16_t value)
    {
        Byte(uint8_t(value));
        Byte(uint8_t(value >> 8));
    }
    void Bytes(const void* data, size_t size)
    {
        const auto* p = static_cast<const uint8_t*>(data);
        out_.insert(out_.end(), p, p + size);
    }
    size_t Size() const { return out_.size(); }
    uint8_t& At(size_t offset) { return out_[offset]; }

private:
    std::vector<uint8_t>& out_;
};

// Reads within [data, data + size); any read past the end sets the failed
// state and gives 0, so that a damaged record is told, never overrun.
class ByteReader {
public:
    ByteReader(const uint8_t* data, size_t size) : data_(data), size_(size) {}
    bool Failed() const { return failed_; }
    bool AtEnd() const { return at_ >= size_; }
    size_t Offset() const { return at_; }
    const uint8_t* Here() const { return data_ + at_; }
    uint8_t Byte()
    {
        if (at_ >= size_) {
            failed_ = true;
            return 0;
        }
        return data_[at_++];
    }
    uint8_t Peek() const { return at_ < size_ ? data_[at_] : 0; }
    uint64_t Varint()
    {
        uint64_t value = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            const uint8_t b = Byte();
            value |= uint64_t(b & 0x7F) << shift;
            if ((b & 0x80) == 0 || failed_)
                return failed_ ? 0 : value;
        }
        failed_ = true;
        return 0;
    }
    uint32_t Varint32()
    {
        // Most numbers of a record take one byte.
        if (at_ < size_ && data_[at_] < 0x80)
            return data_[at_++];
        const uint64_t value = Varint();
        if (value > UINT32_MAX)
            failed_ = true;
        return failed_ ? 0 : uint32_t(value);
    }
    int32_t Signed()
    {
        const uint32_t v = Varint32();
        return int32_t((v >> 1) ^ (0u - (v & 1)));
    }
    uint16_t U16()
    {
        const uint16_t low = Byte();
        return uint16_t(low | (Byte() << 8));
    }
    // A view of the next `size` bytes, empty and failed when they are not there.
    std::string_view Bytes(size_t size)
    {
        if (size > size_ - at_ || at_ > size_) {
            failed_ = true;
            return {};
        }
        std::string_view view(reinterpret_cast<const char*>(data_ + at_), size);
        at_ += size;
        return view;
    }
    void Skip(size_t size) { Bytes(size); }

private:
    const uint8_t* data_;
    size_t size_;
    size_t at_ = 0;
    bool failed_ = false;
};

}  // namespace ovg

#endif
