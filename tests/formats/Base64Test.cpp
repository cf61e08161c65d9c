#include "formats/touchosc/Base64.h"

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

std::string Decoded(const std::wstring& code, int count)
{
    std::vector<unsigned char> data(static_cast<std::size_t>(Base64::GetDataLength(count)) + 1);
    const int written = Base64::Decode(code, count, data.data());
    EXPECT_LE(written, Base64::GetDataLength(count));
    return {data.begin(), data.begin() + written};
}

// Even for "YWJjYQ==", which holds 4 bytes, 8 characters count as 6.
TEST(Base64, LengthsCountWholeQuartetsAndIgnorePadding)
{
    const int codeLengths[][2] = {{0, 0}, {1, 4}, {2, 4}, {3, 4}, {4, 8}, {189, 252}, {190, 256}};
    for (const auto& [bytes, chars] : codeLengths)
        EXPECT_EQ(Base64::GetCodeLength(bytes), chars) << bytes << " bytes";
    const int dataLengths[][2] = {{0, 0}, {2, 2}, {3, 3}, {4, 3}, {8, 6}};
    for (const auto& [chars, bytes] : dataLengths)
        EXPECT_EQ(Base64::GetDataLength(chars), bytes) << chars << " characters";
}

TEST(Base64, EncodingIsPaddedToWholeQuartetsAndDecodesBack)
{
    const std::pair<std::string, std::wstring> cases[] = {
        {"", L""},
        {"a", L"YQ=="},
        {"ab", L"YWI="},
        {"Vol", L"Vm9s"},
        {"\xff\xfe\0\x01"s, L"//4AAQ=="},
        {"Master Volume", L"TWFzdGVyIFZvbHVtZQ=="}};
    for (const auto& [bytes, code] : cases)
        EXPECT_EQ(Encoded(bytes), code) << bytes;
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

}  // namespace
