// Takes a fuzz target's input off the front a piece at a time; an exhausted
// input gives zeros, so every target runs to its end on any input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

struct ByteReader {
    uint8_t const* data;
    size_t size;

    bool Done() const { return size == 0; }
    uint8_t Byte() {
        if (size == 0)
            return 0;
        --size;
        return *data++;
    }
    // The next `bytes` bytes as a little-endian number.
    uint64_t Bits(int bytes) {
        uint64_t v = 0;
        for (int i = 0; i < bytes; ++i)
            v |= static_cast<uint64_t>(Byte()) << (8 * i);
        return v;
    }
    // A run of bytes whose length is the next byte (bounded by what is left).
    std::string Bytes() {
        size_t n = Byte();
        n = n < size ? n : size;
        std::string out(reinterpret_cast<char const*>(data), n);
        data += n;
        size -= n;
        return out;
    }
};
