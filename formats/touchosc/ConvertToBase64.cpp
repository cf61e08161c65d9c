#include "Base64.h"
#include "document/OSCProject.h"

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// The longest encoding written, as the names' 256-byte fields allow.
constexpr std::size_t kMaxCodeBytes = 256;

}  // namespace

void OSCProject::ConvertToBase64(const char* text, char* out)
{
    std::wstring code;
    Base64::Encode(reinterpret_cast<const unsigned char*>(text),
                   static_cast<int>(std::strlen(text)), code);
    // The encoding is plain ASCII, so the conversion cannot fail; an encoding
    // longer than the limit is cut there and still terminated (out holds 257).
    const std::size_t written = std::wcstombs(out, code.c_str(), kMaxCodeBytes);
    out[written == static_cast<std::size_t>(-1) ? 0 : written] = '\0';
}
