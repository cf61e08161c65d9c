#include "ToscDeflate.h"

#include <zlib.h>

#include <climits>

bool WriteDeflated(std::string_view xml, std::FILE* out)
{
    z_stream stream{};
    if (deflateInit(&stream, Z_DEFAULT_COMPRESSION) != Z_OK)
        return false;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(xml.data()));
    std::size_t left = xml.size();
    unsigned char buffer[65536];
    int status = Z_OK;
    bool written = true;
    while (status == Z_OK && written) {
        if (stream.avail_in == 0) {
            const std::size_t chunk = left < UINT_MAX ? left : UINT_MAX;
            stream.avail_in = static_cast<uInt>(chunk);
            left -= chunk;
        }
        stream.next_out = buffer;
        stream.avail_out = sizeof buffer;
        status = deflate(&stream, left == 0 ? Z_FINISH : Z_NO_FLUSH);
        const std::size_t produced = sizeof buffer - stream.avail_out;
        written = std::fwrite(buffer, 1, produced, out) == produced;
    }
    deflateEnd(&stream);
    return written && status == Z_STREAM_END;
}
