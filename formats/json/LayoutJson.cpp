#include "LayoutJson.h"

#include "document/ControlTables.h"
#include "document/IgnoringCase.h"
#include "document/TextField.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

// Insertion order keeps the fields in the order people read them.
using Json = nlohmann::ordered_json;

constexpr std::size_t kMaxTextBytes = 255;  // a text field keeps room for its NUL
constexpr std::size_t kMaxCount = 65535;    // pages and controls are counted in 16 bits

constexpr std::pair<const char*, char (OSCControl::*)[256]> kTextFields[] = {
    {"name", &OSCControl::name},
    {"command", &OSCControl::command},
};

constexpr std::pair<const char*, std::int16_t OSCControl::*> kShortFields[] = {
    {"deviceId", &OSCControl::deviceId},
    {"controlNumber", &OSCControl::controlNumber},
    {"x", &OSCControl::x},
    {"y", &OSCControl::y},
    {"width", &OSCControl::width},
    {"height", &OSCControl::height},
};

constexpr std::pair<const char*, std::int32_t OSCControl::*> kLongFields[] = {
    {"minValue", &OSCControl::minValue},   {"maxValue", &OSCControl::maxValue},
    {"reserved1", &OSCControl::reserved1}, {"reserved2", &OSCControl::reserved2},
    {"reserved3", &OSCControl::reserved3}, {"reserved4", &OSCControl::reserved4},
};

// ---- Writing

// Layout texts are bytes and JSON texts are Unicode. A byte that does not
// start a well-formed UTF-8 sequence is written as one U+FFFD and the next
// byte is looked at afresh, so a layout with any names still dumps, always the
// same way. Such a dump does not give the original bytes back.
std::size_t WellFormedLength(std::string_view bytes, std::size_t at)
{
    const auto byte = [&](std::size_t i) -> unsigned {
        return at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0x100;
    };
    const auto within = [](unsigned b, unsigned low, unsigned high) {
        return b >= low && b <= high;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return 1;
    // The range of the second byte depends on the lead; later bytes are 80..BF.
    unsigned low = 0x80;
    unsigned high = 0xBF;
    std::size_t length = 0;
    if (within(lead, 0xC2, 0xDF)) {
        length = 2;
    } else if (within(lead, 0xE0, 0xEF)) {
        length = 3;
        if (lead == 0xE0)
            low = 0xA0;  // no overlong forms
        if (lead == 0xED)
            high = 0x9F;  // no surrogates
    } else if (within(lead, 0xF0, 0xF4)) {
        length = 4;
        if (lead == 0xF0)
            low = 0x90;
        if (lead == 0xF4)
            high = 0x8F;  // nothing above U+10FFFF
    } else {
        return 0;
    }
    if (!within(byte(1), low, high))
        return 0;
    for (std::size_t i = 2; i < length; ++i) {
        if (!within(byte(i), 0x80, 0xBF))
            return 0;
    }
    return length;
}

std::string ValidUtf8(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = WellFormedLength(bytes, at);
        if (length == 0) {
            text += "\xEF\xBF\xBD";
            ++at;
        } else {
            text.append(bytes.substr(at, length));
            at += length;
        }
    }
    return text;
}

template <std::size_t N>
Json NameOrNumber(unsigned value, const char* const (&names)[N])
{
    if (value < N)
        return names[value];
    return value;
}

Json ControlJson(const OSCControl& control)
{
    Json json;
    for (const auto& [key, field] : kTextFields)
        json[key] = ValidUtf8(TextOf(control.*field));
    for (const auto& [key, field] : kShortFields)
        json[key] = control.*field;
    for (const auto& [key, field] : kLongFields)
        json[key] = control.*field;
    json["type"] = NameOrNumber(control.type, ControlTypes);
    json["color"] = NameOrNumber(control.color, ColorTypes);
    json["flags"] = control.flags;
    return json;
}

// ---- Reading

// Unwinds from wherever a value is found wrong; caught in ReadLayoutJson.
class BadValue : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[noreturn]] void Fail(const std::string& path, const std::string& what)
{
    throw BadValue(path + ": " + what);
}

std::string Index(const std::string& path, std::size_t i)
{
    return path + "[" + std::to_string(i) + "]";
}

std::string Member(const std::string& path, const std::string& key)
{
    return path.empty() ? key : path + "." + key;
}

// A value as an error line quotes it: short, and never cut inside a character.
std::string Shown(const Json& value)
{
    constexpr std::size_t kLongest = 40;
    std::string text = value.dump();
    if (text.size() <= kLongest)
        return text;
    std::size_t cut = kLongest - 3;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80)
        --cut;
    return text.substr(0, cut) + "...";
}

std::int64_t ReadInteger(const Json& value, std::int64_t low, std::int64_t high,
                         const std::string& path)
{
    const std::string range =
        "use a whole number from " + std::to_string(low) + " to " + std::to_string(high);
    if (!value.is_number_integer())
        Fail(path, Shown(value) + " is not a whole number; " + range);
    if (value.is_number_unsigned()) {
        if (value.get<std::uint64_t>() > static_cast<std::uint64_t>(high))
            Fail(path, Shown(value) + " does not fit; " + range);
        return static_cast<std::int64_t>(value.get<std::uint64_t>());
    }
    const std::int64_t number = value.get<std::int64_t>();
    if (number < low || number > high)
        Fail(path, Shown(value) + " does not fit; " + range);
    return number;
}

template <typename Int>
Int ReadField(const Json& value, const std::string& path)
{
    return static_cast<Int>(
        ReadInteger(value, std::numeric_limits<Int>::min(), std::numeric_limits<Int>::max(), path));
}

// A byte given by its name in names (any case) or by its number.
template <std::size_t N>
std::uint8_t ReadNamedByte(const Json& value, const char* const (&names)[N], const char* what,
                           const std::string& path)
{
    if (!value.is_string())
        return ReadField<std::uint8_t>(value, path);
    const std::string& name = value.get_ref<const std::string&>();
    for (std::size_t i = 0; i < N; ++i) {
        if (EqualsIgnoringCase(name, names[i]))
            return static_cast<std::uint8_t>(i);
    }
    std::string known;
    for (const char* option : names)
        known += "\"" + std::string(option) + "\", ";
    Fail(path, std::string("unknown ") + what + " " + Shown(value) + "; use " + known +
                   "or a number from 0 to 255");
}

template <std::size_t N>
void ReadText(const Json& value, char (&field)[N], const std::string& path)
{
    if (!value.is_string())
        Fail(path, "expected a text in double quotes, found " + Shown(value));
    const std::string& text = value.get_ref<const std::string&>();
    if (text.size() > kMaxTextBytes) {
        Fail(path, "the text is " + std::to_string(text.size()) + " bytes long; at most " +
                       std::to_string(kMaxTextBytes) + " bytes fit");
    }
    if (text.find('\0') != std::string::npos)
        Fail(path, "a text cannot hold the character \\u0000");
    CopyTextField(field, text);
}

void Expect(const Json& value, Json::value_t type, const char* what, const std::string& path)
{
    if (value.type() != type)
        Fail(path, std::string("expected ") + what + ", found " + Shown(value));
}

template <typename Handlers>
void ForEachMember(const Json& object, const std::string& path, Handlers&& handle)
{
    for (const auto& [key, value] : object.items()) {
        if (!handle(key, value, Member(path, key)))
            Fail(Member(path, key), "unknown field \"" + key + "\"");
    }
}

// Sets the field named key; false when a control has no such field.
bool ReadControlField(OSCControl& control, const std::string& key, const Json& value,
                      const std::string& path)
{
    for (const auto& [name, field] : kTextFields) {
        if (key == name) {
            ReadText(value, control.*field, path);
            return true;
        }
    }
    for (const auto& [name, field] : kShortFields) {
        if (key == name) {
            control.*field = ReadField<std::int16_t>(value, path);
            return true;
        }
    }
    for (const auto& [name, field] : kLongFields) {
        if (key == name) {
            control.*field = ReadField<std::int32_t>(value, path);
            return true;
        }
    }
    if (key == "type")
        control.type = ReadNamedByte(value, ControlTypes, "type", path);
    else if (key == "color")
        control.color = ReadNamedByte(value, ColorTypes, "colour", path);
    else if (key == "flags")
        control.flags = ReadField<std::uint8_t>(value, path);
    else
        return false;
    return true;
}

// A list of pages or controls must fit the layout file's 16-bit count.
void ExpectCountFits(const Json& list, const char* what, const std::string& path)
{
    if (list.size() > kMaxCount)
        Fail(path, std::to_string(list.size()) + " " + what +
                       " do not fit; a layout file holds "
                       "at most " +
                       std::to_string(kMaxCount));
}

std::unique_ptr<OSCControl> ReadControl(const Json& json, const std::string& path)
{
    Expect(json, Json::value_t::object, "an object with the control's fields", path);
    auto control = std::make_unique<OSCControl>();
    ForEachMember(json, path,
                  [&](const std::string& key, const Json& value, const std::string& at) {
                      return ReadControlField(*control, key, value, at);
                  });
    return control;
}

std::unique_ptr<OSCPage> ReadPage(const Json& json, const std::string& path)
{
    Expect(json, Json::value_t::object, "an object with \"name\" and \"controls\"", path);
    auto page = std::make_unique<OSCPage>();
    ForEachMember(json, path,
                  [&](const std::string& key, const Json& value, const std::string& at) {
                      if (key == "name") {
                          ReadText(value, page->name, at);
                      } else if (key == "controls") {
                          Expect(value, Json::value_t::array, "a list of controls", at);
                          ExpectCountFits(value, "controls", at);
                          for (std::size_t i = 0; i < value.size(); ++i)
                              page->controls.push_back(ReadControl(value[i], Index(at, i)));
                      } else {
                          return false;
                      }
                      return true;
                  });
    return page;
}

}  // namespace

std::string WriteLayoutJson(const OSCProject& project)
{
    Json root;
    root["device"] = NameOrNumber(project.device, DeviceNames);
    root["orientation"] = NameOrNumber(project.orientation, OrientationNames);
    Json pages = Json::array();
    for (const auto& page : project.pages) {
        Json controls = Json::array();
        for (const auto& control : page->controls)
            controls.push_back(ControlJson(*control));
        Json pageJson;
        pageJson["name"] = ValidUtf8(TextOf(page->name));
        pageJson["controls"] = std::move(controls);
        pages.push_back(std::move(pageJson));
    }
    root["pages"] = std::move(pages);
    return root.dump(2) + "\n";
}

bool ReadLayoutJson(std::string_view text, OSCProject& project, std::string& error)
{
    Json root;
    try {
        root = Json::parse(text);
    } catch (const Json::exception& e) {
        // A syntax error or a number too large for any type. Drop the library's
        // "[json.exception.parse_error.101] " prefix.
        const std::string what = e.what();
        const std::size_t end = what.find("] ");
        error = end == std::string::npos ? what : what.substr(end + 2);
        return false;
    }
    try {
        if (!root.is_object())
            Fail("layout", "expected an object with \"device\", \"orientation\" and \"pages\"");
        // Left out, they are those of a new project.
        std::uint8_t device = kIPad;
        std::uint8_t orientation = kHorizontal;
        std::vector<std::unique_ptr<OSCPage>> pages;
        bool hasPages = false;
        ForEachMember(
            root, "", [&](const std::string& key, const Json& value, const std::string& at) {
                if (key == "device") {
                    device = ReadNamedByte(value, DeviceNames, "device", at);
                } else if (key == "orientation") {
                    orientation = ReadNamedByte(value, OrientationNames, "orientation", at);
                } else if (key == "pages") {
                    Expect(value, Json::value_t::array, "a list of pages", at);
                    ExpectCountFits(value, "pages", at);
                    for (std::size_t i = 0; i < value.size(); ++i)
                        pages.push_back(ReadPage(value[i], Index(at, i)));
                    hasPages = true;
                } else {
                    return false;
                }
                return true;
            });
        if (!hasPages)
            Fail("layout", "\"pages\" is missing; a layout has at least one page");
        if (pages.empty())
            Fail("pages", "the list is empty; a layout has at least one page");
        project.device = device;
        project.orientation = orientation;
        project.pages = std::move(pages);
        project.currentPage = 0;
    } catch (const BadValue& e) {
        error = e.what();
        return false;
    }
    return true;
}
