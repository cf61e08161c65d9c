#include "document/OSCProject.h"
#include "export/Base64.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::wstring Encoded(const std::string& bytes)
{
    std::wstring code = L"left over";
    const int length = Base64::Encode(reinterpret_cast<const unsigned char*>(bytes.data()),
                                      static_cast<int>(bytes.size()), code);
    EXPECT_EQ(length, static_cast<int>(code.size()));
    return code;
}

std::vector<unsigned char> Decoded(const std::wstring& code, int count)
{
    std::vector<unsigned char> data(static_cast<std::size_t>(Base64::GetDataLength(count)) + 1);
    const int written = Base64::Decode(code, count, data.data());
    EXPECT_LE(written, Base64::GetDataLength(count));
    data.resize(static_cast<std::size_t>(written));
    return data;
}

std::vector<unsigned char> Bytes(const std::string& text)
{
    return {text.begin(), text.end()};
}

TEST(Base64, LengthsCountWholeQuartetsAndIgnorePadding)
{
    EXPECT_EQ(Base64::GetCodeLength(0), 0);
    EXPECT_EQ(Base64::GetCodeLength(1), 4);
    EXPECT_EQ(Base64::GetCodeLength(2), 4);
    EXPECT_EQ(Base64::GetCodeLength(3), 4);
    EXPECT_EQ(Base64::GetCodeLength(4), 8);
    EXPECT_EQ(Base64::GetCodeLength(189), 252);
    EXPECT_EQ(Base64::GetCodeLength(190), 256);

    EXPECT_EQ(Base64::GetDataLength(0), 0);
    EXPECT_EQ(Base64::GetDataLength(2), 2);
    EXPECT_EQ(Base64::GetDataLength(8), 6);  // even for "YWJjYQ==", which holds 4
}

TEST(Base64, EncodesPaddedToWholeQuartets)
{
    EXPECT_EQ(Encoded("Vol"), L"Vm9s");
    EXPECT_EQ(Encoded("a"), L"YQ==");
    EXPECT_EQ(Encoded("ab"), L"YWI=");
    EXPECT_EQ(Encoded(""), L"");
    EXPECT_EQ(Encoded(std::string("\xff\xfe\x00\x01", 4)), L"//4AAQ==");
    EXPECT_EQ(Encoded("Master Volume"), L"TWFzdGVyIFZvbHVtZQ==");
}

TEST(Base64, DecodesWhatItEncodes)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    for (std::size_t length = 0; length <= all.size(); length += 37) {
        const std::string bytes = all.substr(all.size() - length);
        const std::wstring code = Encoded(bytes);
        EXPECT_EQ(Decoded(code, static_cast<int>(code.size())), Bytes(bytes)) << length;
    }
}

TEST(Base64, DecodingStopsAtPaddingAndDropsAnUnpaddedTail)
{
    EXPECT_EQ(Decoded(L"YQ==", 4), Bytes("a"));
    EXPECT_EQ(Decoded(L"YWI=", 4), Bytes("ab"));
    EXPECT_EQ(Decoded(L"YQ", 2), Bytes(""));
    EXPECT_EQ(Decoded(L"Vm9sYQ", 6), Bytes("Vol"));
    // The first pad ends decoding, whatever follows.
    EXPECT_EQ(Decoded(L"YQ==Vm9s", 8), Bytes("a"));
    // A pad at the start of a quartet still writes the empty accumulator's first byte.
    EXPECT_EQ(Decoded(L"Vm9s=", 5), Bytes(std::string("Vol\0", 4)));
    // The count limits the characters read, and so does the text's own length.
    EXPECT_EQ(Decoded(L"Vm9sYWJj", 4), Bytes("Vol"));
    EXPECT_EQ(Decoded(L"Vm9s", 400), Bytes("Vol"));
}

TEST(Base64, CharactersOutsideTheAlphabetCountAsZero)
{
    // '*' takes the place of 'A': "Y*Q=" decodes as "YAQ=".
    EXPECT_EQ(Decoded(L"Y*Q=", 4), Decoded(L"YAQ=", 4));
    EXPECT_EQ(Decoded(L"Y*Q=", 4), (std::vector<unsigned char>{0x60, 0x04}));
    EXPECT_EQ(Decoded(L"\x263a\n \xffff", 4), (std::vector<unsigned char>{0, 0, 0}));
}

std::string Converted(const std::string& text)
{
    // Exactly the 257 bytes a caller must supply, so that ASan sees any overrun.
    std::vector<char> out(257, '\x7f');
    OSCProject::ConvertToBase64(text.c_str(), out.data());
    const auto end = std::find(out.begin(), out.end(), '\0');
    EXPECT_NE(end, out.end()) << "no terminator";
    return std::string(out.begin(), end);
}

TEST(Base64, ConvertedNamesAreCutAt256CharactersAndTerminated)
{
    EXPECT_EQ(Converted("Vol"), "Vm9s");
    EXPECT_EQ(Converted(""), "");

    const auto encodedStart = [](const std::string& text, std::size_t length) {
        std::string narrow;
        for (const wchar_t c : Encoded(text))
            narrow += static_cast<char>(c);
        EXPECT_GE(narrow.size(), length);
        return narrow.substr(0, length);
    };
    const std::string longest(189, 'x');  // 252 characters, all written
    const std::string cut(190, 'x');      // 256 characters, the last quartet padded
    const std::string longer(300, 'x');   // 400 characters
    EXPECT_EQ(Converted(longest), encodedStart(longest, 252));
    EXPECT_EQ(Converted(cut), encodedStart(cut, 256));
    EXPECT_EQ(Converted(longer), encodedStart(longer, 256));
}

}  // namespace
