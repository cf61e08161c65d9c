#include "document/OSCProject.h"
#include "export/Base64.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace std::string_literals;

namespace {

std::wstring Encoded(const std::string& bytes)
{
    std::wstring code = L"left over";
    const int length = Base64::Encode(reinterpret_cast<const unsigned char*>(bytes.data()),
                                      static_cast<int>(bytes.size()), code);
    EXPECT_EQ(length, static_cast<int>(code.size()));
    return code;
}

std::wstring Wide(const std::string& text)
{
    return {text.begin(), text.end()};
}

std::string Decoded(const std::wstring& code, int count)
{
    std::vector<unsigned char> data(static_cast<std::size_t>(Base64::GetDataLength(count)) + 1);
    const int written = Base64::Decode(code, count, data.data());
    EXPECT_LE(written, Base64::GetDataLength(count));
    return {data.begin(), data.begin() + written};
}

TEST(Base64, LengthsCountWholeQuartetsAndIgnorePadding)
{
    const int codeLengths[][2] = {{0, 0}, {1, 4}, {2, 4}, {3, 4}, {4, 8}, {189, 252}, {190, 256}};
    for (const auto& [bytes, chars] : codeLengths)
        EXPECT_EQ(Base64::GetCodeLength(bytes), chars) << bytes << " bytes";
    // Even for "YWJjYQ==", which holds 4 bytes, 8 characters count as 6.
    const int dataLengths[][2] = {{0, 0}, {2, 2}, {3, 3}, {4, 3}, {8, 6}};
    for (const auto& [chars, bytes] : dataLengths)
        EXPECT_EQ(Base64::GetDataLength(chars), bytes) << chars << " characters";
}

TEST(Base64, EncodingIsPaddedToWholeQuartetsAndDecodesBack)
{
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"a", "YQ=="},
        {"ab", "YWI="},
        {"Vol", "Vm9s"},
        {"\xff\xfe\0\x01"s, "//4AAQ=="},
        {"Master Volume", "TWFzdGVyIFZvbHVtZQ=="},
    };
    for (const auto& [bytes, code] : cases)
        EXPECT_EQ(Encoded(bytes), Wide(code)) << bytes;
    std::string all;
    for (int byte = 255; byte >= 0; --byte)
        all += static_cast<char>(byte);
    for (std::size_t length = 0; length <= all.size(); length += 37) {
        const std::wstring code = Encoded(all.substr(0, length));
        EXPECT_EQ(Decoded(code, static_cast<int>(code.size())), all.substr(0, length)) << length;
    }
}

// The first '=' ends decoding; a pad at the start of a quartet still writes the
// empty accumulator's first byte; characters outside the alphabet count as 0.
TEST(Base64, DecodingIsLenient)
{
    const std::tuple<std::wstring, int, std::string> cases[] = {
        {L"YQ", 2, ""},           {L"Vm9sYQ", 6, "Vol"},
        {L"YQ==Vm9s", 8, "a"},    {L"Vm9s=", 5, "Vol\0"s},
        {L"Vm9sYWJj", 4, "Vol"},  {L"Vm9s", 400, "Vol"},
        {L"Y*Q=", 4, "\x60\x04"}, {L"\x263a\n \xffff", 4, "\0\0\0"s},
    };
    for (const auto& [code, count, bytes] : cases) {
        SCOPED_TRACE(std::string(code.begin(), code.end()));
        EXPECT_EQ(Decoded(code, count), bytes);
    }
}

TEST(Base64, ConvertedNamesAreCutAt256CharactersAndTerminated)
{
    const std::pair<std::string, std::size_t> cases[] = {{"", 0},
                                                         {"Vol", 4},
                                                         {std::string(189, 'x'), 252},
                                                         {std::string(190, 'x'), 256},
                                                         {std::string(300, 'x'), 256}};
    for (const auto& [text, length] : cases) {
        SCOPED_TRACE(text.size());
        const std::wstring code = Encoded(text);
        // Exactly the 257 bytes a caller must supply, so that ASan sees any overrun.
        std::vector<char> out(257, '\x7f');
        OSCProject::ConvertToBase64(text.c_str(), out.data());
        EXPECT_EQ(std::string(out.data()), std::string(code.begin(), code.end()).substr(0, length));
    }
}

}  // namespace
