#include "OscPacket.h"

#include <bit>
#include <cstring>
#include <string_view>

namespace {

// Bundles inside bundles deeper than this are refused: no sender needs them.
constexpr int kMaxBundleDepth = 8;
constexpr std::string_view kBundleTag = "#bundle";

// A window on the packet's bytes that never reads past its end; every read
// fails once one has.
class PacketReader {
public:
    PacketReader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool AtEnd() const { return at_ == size_; }
    std::size_t Left() const { return size_ - at_; }

    // A string ends with NUL and is padded with NULs to a multiple of 4 bytes.
    std::optional<std::string_view> String()
    {
        const auto* start = reinterpret_cast<const char*>(data_ + at_);
        const void* end = std::memchr(start, '\0', Left());
        if (end == nullptr)
            return std::nullopt;
        const std::size_t length = static_cast<const char*>(end) - start;
        if (!Skip((length + 4) & ~std::size_t{3}))
            return std::nullopt;
        return std::string_view(start, length);
    }

    std::optional<std::uint32_t> Word()
    {
        if (Left() < 4)
            return std::nullopt;
        const std::uint8_t* b = data_ + at_;
        at_ += 4;
        return std::uint32_t{b[0]} << 24 | std::uint32_t{b[1]} << 16 | std::uint32_t{b[2]} << 8 |
               std::uint32_t{b[3]};
    }

    std::optional<std::uint64_t> DoubleWord()
    {
        const std::optional<std::uint32_t> high = Word();
        const std::optional<std::uint32_t> low = high ? Word() : std::nullopt;
        if (!low)
            return std::nullopt;
        return std::uint64_t{*high} << 32 | *low;
    }

    bool Skip(std::size_t count)
    {
        if (count > Left())
            return false;
        at_ += count;
        return true;
    }

    // The next count bytes as a reader of their own.
    std::optional<PacketReader> Part(std::size_t count)
    {
        if (count > Left())
            return std::nullopt;
        PacketReader part(data_ + at_, count);
        at_ += count;
        return part;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

// Reads one argument of the type tag; false when the packet cannot hold it.
bool ReadArgument(char tag, PacketReader& reader, OscArgument& argument)
{
    argument = {};
    switch (tag) {
        case 'i':
            if (const auto word = reader.Word()) {
                argument = {OscArgument::kNumber,
                            static_cast<double>(static_cast<std::int32_t>(*word))};
                return true;
            }
            return false;
        case 'f':
            if (const auto word = reader.Word()) {
                argument = {OscArgument::kNumber, static_cast<double>(std::bit_cast<float>(*word))};
                return true;
            }
            return false;
        case 'h':
            if (const auto word = reader.DoubleWord()) {
                argument = {OscArgument::kNumber,
                            static_cast<double>(static_cast<std::int64_t>(*word))};
                return true;
            }
            return false;
        case 'd':
            if (const auto word = reader.DoubleWord()) {
                argument = {OscArgument::kNumber, std::bit_cast<double>(*word)};
                return true;
            }
            return false;
        case 'T':
            argument.kind = OscArgument::kTrue;
            return true;
        case 'F':
            argument.kind = OscArgument::kFalse;
            return true;
        case 'N':
        case 'I':
        case '[':
        case ']':
            return true;
        case 's':
        case 'S':
            return reader.String().has_value();
        case 'b':
            if (const auto length = reader.Word())
                return reader.Skip((std::size_t{*length} + 3) & ~std::size_t{3});
            return false;
        case 'c':
        case 'r':
        case 'm':
            return reader.Word().has_value();
        case 't':
            return reader.DoubleWord().has_value();
        default:
            return false;  // a type no sender may use: its size is unknown
    }
}

bool ReadMessage(std::string_view address, PacketReader& reader, std::vector<OscMessageIn>& out)
{
    OscMessageIn message{std::string(address), {}};
    // A message without type tags, as very old senders send, has no arguments.
    if (!reader.AtEnd()) {
        const std::optional<std::string_view> tags = reader.String();
        if (!tags || tags->empty() || tags->front() != ',')
            return false;
        for (const char tag : tags->substr(1)) {
            OscArgument argument;
            if (!ReadArgument(tag, reader, argument))
                return false;
            if (tag != '[' && tag != ']')
                message.arguments.push_back(argument);
        }
    }
    out.push_back(std::move(message));
    return reader.AtEnd();
}

bool ReadElement(PacketReader& reader, int depth, std::vector<OscMessageIn>& out)
{
    if (reader.Left() % 4 != 0)
        return false;
    const std::optional<std::string_view> head = reader.String();
    if (!head)
        return false;
    if (!head->empty() && head->front() == '/')
        return ReadMessage(*head, reader, out);
    if (*head != kBundleTag || depth >= kMaxBundleDepth || !reader.DoubleWord())
        return false;
    while (!reader.AtEnd()) {
        const std::optional<std::uint32_t> size = reader.Word();
        std::optional<PacketReader> element = size ? reader.Part(*size) : std::nullopt;
        if (!element || !ReadElement(*element, depth + 1, out))
            return false;
    }
    return true;
}

}  // namespace

std::optional<std::vector<OscMessageIn>> ReadOscPacket(const std::uint8_t* data, std::size_t size)
{
    PacketReader reader(data, size);
    std::vector<OscMessageIn> messages;
    if (size == 0 || !ReadElement(reader, 0, messages))
        return std::nullopt;
    return messages;
}
