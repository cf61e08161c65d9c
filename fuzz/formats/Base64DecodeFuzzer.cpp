// The decoder must stay within GetDataLength on any wide text and any count,
// and what the encoder writes must decode to the bytes it came from.

#include "formats/touchosc/Base64.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Two bytes make one character, so characters far outside ASCII occur too;
    // an odd last byte stretches the count past the text's end.
    std::wstring text;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        text += static_cast<wchar_t>(data[i] | data[i + 1] << 8);
    const int count = static_cast<int>(text.size()) + (size % 2 != 0 ? data[size - 1] % 8 : 0);

    std::vector<unsigned char> decoded(
        static_cast<std::size_t>(Base64::GetDataLength(static_cast<int>(text.size()))));
    const int written = Base64::Decode(text, count, decoded.data());
    if (written < 0 || written > static_cast<int>(decoded.size()))
        std::abort();

    std::wstring code;
    const int length = Base64::Encode(data, static_cast<int>(size), code);
    if (length != Base64::GetCodeLength(static_cast<int>(size)) ||
        length != static_cast<int>(code.size()))
        std::abort();
    std::vector<unsigned char> back(static_cast<std::size_t>(Base64::GetDataLength(length)));
    const int backSize = Base64::Decode(code, length, back.data());
    if (backSize != static_cast<int>(size) ||
        !std::equal(back.begin(), back.begin() + backSize, data))
        std::abort();
    return 0;
}
