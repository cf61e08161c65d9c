#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Collects the bytes of a file in memory, so that saving costs one write.
class ByteWriter {
public:
    void Write(const void* data, std::size_t count)
    {
        bytes_.append(static_cast<const char*>(data), count);
    }
    void Reserve(std::size_t count) { bytes_.reserve(count); }
    void WriteByte(std::uint8_t value) { bytes_.push_back(static_cast<char>(value)); }

    // Writes a value's bytes as they stand in memory.
    template <typename T>
    void WriteRaw(const T& value)
    {
        Write(&value, sizeof value);
    }

    const std::string& Bytes() const { return bytes_; }
    std::string TakeBytes() { return std::move(bytes_); }

private:
    std::string bytes_;
};
