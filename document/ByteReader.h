#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Reads a file's bytes from memory. Once a read runs past the end the reader
// fails for good and every later read yields zeros, so a caller checks Failed()
// once after a run of reads.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    bool Read(void* out, std::size_t count)
    {
        if (failed_ || count > bytes_.size() - position_) {
            failed_ = true;
            std::memset(out, 0, count);
            return false;
        }
        std::memcpy(out, bytes_.data() + position_, count);
        position_ += count;
        return true;
    }

    std::uint8_t ReadByte()
    {
        std::uint8_t value = 0;
        Read(&value, 1);
        return value;
    }

    // Reads a value's bytes into memory as they stand in the file.
    template <typename T>
    T ReadRaw()
    {
        T value;
        Read(&value, sizeof value);
        return value;
    }

    bool Skip(std::size_t count)
    {
        if (failed_ || count > bytes_.size() - position_) {
            failed_ = true;
            return false;
        }
        position_ += count;
        return true;
    }

    bool Failed() const { return failed_; }
    std::size_t Position() const { return position_; }

private:
    std::string_view bytes_;
    std::size_t position_ = 0;
    bool failed_ = false;
};
