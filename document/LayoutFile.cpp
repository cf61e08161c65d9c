#include "LayoutFile.h"

#include "ByteReader.h"
#include "ByteWriter.h"
#include "host/VornBasics.h"

#include <cstring>

int ReadLayoutFile(std::string_view bytes, OSCProject& project, VornBasics* host,
                   std::size_t* stoppedAt)
{
    if (bytes.size() < 4 || std::memcmp(bytes.data(), "KLYF", 4) != 0) {
        if (stoppedAt)
            *stoppedAt = 0;
        return kNotLayoutFile;
    }
    ByteReader file(bytes);
    file.Skip(4);
    std::uint32_t length = file.ReadRaw<std::uint32_t>();
    host->FlipULong(length);
    int remaining = static_cast<int>(length);
    const int result = project.Read(file, host, remaining);
    if (stoppedAt)
        *stoppedAt = file.Position();
    return result;
}

std::string WriteLayoutFile(OSCProject& project, VornBasics* host)
{
    constexpr std::size_t kFileHeaderBytes = 8;
    ByteWriter file;
    file.Reserve(static_cast<std::size_t>(project.GetSize()) + kFileHeaderBytes);
    project.Write(file, host);
    return file.TakeBytes();
}
