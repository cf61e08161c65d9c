#include "ToscInflate.h"

#include <zlib.h>

#include <climits>

namespace {

bool StartsAsXml(std::string_view bytes)
{
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    return bytes.starts_with("\xEF\xBB\xBF<") ||
           (first != std::string_view::npos && bytes[first] == '<');
}

}  // namespace

bool ToscXml(std::string_view bytes, std::string& xml, const ImportLimits& limits,
             std::string& error)
{
    const std::string tooLarge =
        "the TouchOSC file holds more than " + SizeText(limits.maxXmlBytes) + " of XML";
    if (StartsAsXml(bytes)) {
        if (bytes.size() > limits.maxXmlBytes) {
            error = tooLarge;
            return false;
        }
        xml.assign(bytes);
        return true;
    }
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) {
        error = "cannot inflate: zlib would not start";
        return false;
    }
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    int status = Z_OK;
    char buffer[65536];
    std::size_t left = bytes.size();
    // Input that ends before the stream does leaves zlib without progress to
    // make: Z_BUF_ERROR, which ends the loop as any error does.
    while (status == Z_OK) {
        if (stream.avail_in == 0) {
            const std::size_t chunk = left < UINT_MAX ? left : UINT_MAX;
            stream.avail_in = static_cast<uInt>(chunk);
            left -= chunk;
        }
        stream.next_out = reinterpret_cast<Bytef*>(buffer);
        stream.avail_out = sizeof buffer;
        status = inflate(&stream, Z_NO_FLUSH);
        const std::size_t produced = sizeof buffer - stream.avail_out;
        if (xml.size() + produced > limits.maxXmlBytes) {
            inflateEnd(&stream);
            error = tooLarge;
            return false;
        }
        xml.append(buffer, produced);
    }
    const bool started = stream.total_in > 2;
    inflateEnd(&stream);
    if (status == Z_STREAM_END)
        return true;
    if (!started)
        error = "not a TouchOSC file: it is neither zlib data nor XML";
    else
        error = std::string("the TouchOSC file is damaged: its zlib data ") +
                (status == Z_DATA_ERROR ? "is corrupt" : "ends too soon");
    return false;
}
