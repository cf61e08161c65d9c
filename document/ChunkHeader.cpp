#include "ChunkHeader.h"

#include "ByteReader.h"
#include "host/VornBasics.h"

#include <cstring>

bool ReadChunkHeader(ByteReader& file, VornBasics* host, const char* tag, int& length)
{
    char read[4];
    file.Read(read, sizeof read);
    if (std::memcmp(read, tag, sizeof read) != 0) {
        host->ShowError(kLayoutReadError);
        return false;
    }
    std::uint32_t bodyLength = file.ReadRaw<std::uint32_t>();
    host->FlipULong(bodyLength);
    length = static_cast<int>(bodyLength);
    return true;
}
