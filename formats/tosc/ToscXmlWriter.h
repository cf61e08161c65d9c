#pragma once

#include "ToscNodeIds.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

class OSCProject;

// Where a property's value comes from: the table of the node's type, or the node.
enum class ToscField : std::uint8_t {
    kFixed,
    kColor,  // the control's colour
    kFrame,
    kName,
    kOrientation,
    kButtonType,
    kTabLabel,
};

// One property that the app writes on nodes of a type.
struct ToscProperty {
    char type;  // as the app tags it: b, i, f, s, c (colour) or r (rectangle)
    const char* key;
    ToscField field = ToscField::kFixed;
    const char* fixed = "";  // the value element's content, when the table fixes it
};

// A node's own values: those its type's table does not fix.
struct ToscNodeFields {
    std::string_view name;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    std::uint8_t color = 0;  // a colour index
    int orientation = 0;
    int buttonType = 0;
    std::string_view tabLabel;
};

// Writes a current TouchOSC file's XML node by node, shaped as the app writes
// it: no white space between elements, attributes in single quotes, texts in
// CDATA sections. Each node is opened, given its values, maybe a message and
// children, and closed.
class ToscXmlWriter {
public:
    ToscXmlWriter(std::string& xml, const OSCProject& project);

    void Begin();
    void End();

    // The node's start, its properties in the table's order, and the start of its values.
    void OpenNode(std::string_view type, std::span<const ToscProperty> properties,
                  const ToscNodeFields& fields);
    // One value with its default; the app locks a label's text to its default.
    void Value(std::string_view key, std::string_view initial, bool lockedDefaultCurrent = false);
    void EndValues();
    // The one OSC message of a control: its value x, scaled to low..high, sent
    // to address whenever it changes.
    void OscMessage(std::string_view address, std::int32_t low, std::int32_t high);
    void OpenChildren();
    void CloseChildren();
    void CloseNode();

private:
    void Number(long long number);
    void Property(const ToscProperty& property, const ToscNodeFields& fields);

    std::string& xml_;
    ToscNodeIds ids_;
};
