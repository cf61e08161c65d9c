#include "ToscXmlWriter.h"

#include "XmlCharacterData.h"
#include "document/ControlTables.h"

#include <charconv>

namespace {

// The named colours as the app's red, green, blue and alpha, by colour index.
// Indexes without a name, as a damaged file may hold, are written as gray.
constexpr std::string_view kColors[kNamedColorCount] = {
    "<r>1</r><g>0</g><b>0</b><a>1</a>",        // red
    "<r>0</r><g>1</g><b>0</b><a>1</a>",        // green
    "<r>0</r><g>0</g><b>1</b><a>1</a>",        // blue
    "<r>1</r><g>1</g><b>0</b><a>1</a>",        // yellow
    "<r>0.5</r><g>0</g><b>0.5</b><a>1</a>",    // purple
    "<r>0.5</r><g>0.5</g><b>0.5</b><a>1</a>",  // gray
    "<r>1</r><g>0.5</g><b>0</b><a>1</a>",      // orange
    "<r>0.5</r><g>0.25</g><b>0</b><a>1</a>",   // brown
    "<r>1</r><g>0.08</g><b>0.58</b><a>1</a>",  // pink
};

}  // namespace

ToscXmlWriter::ToscXmlWriter(std::string& xml, const OSCProject& project) : xml_(xml), ids_(project)
{
}

void ToscXmlWriter::Begin()
{
    xml_ += "<?xml version='1.0' encoding='UTF-8'?><lexml version='4'>";
}

void ToscXmlWriter::End()
{
    xml_ += "</lexml>";
}

void ToscXmlWriter::Number(long long number)
{
    char digits[24];
    const auto written = std::to_chars(digits, digits + sizeof digits, number);
    xml_.append(digits, written.ptr);
}

void ToscXmlWriter::Property(const ToscProperty& property, const ToscNodeFields& fields)
{
    xml_ += "<property type='";
    xml_ += property.type;
    xml_ += "'><key><![CDATA[";
    xml_ += property.key;
    xml_ += "]]></key><value>";
    switch (property.field) {
        case ToscField::kFixed:
            xml_ += property.fixed;
            break;
        case ToscField::kColor:
            xml_ += kColors[fields.color < kNamedColorCount ? fields.color : kGray];
            break;
        case ToscField::kFrame:
            xml_ += "<x>";
            Number(fields.x);
            xml_ += "</x><y>";
            Number(fields.y);
            xml_ += "</y><w>";
            Number(fields.width);
            xml_ += "</w><h>";
            Number(fields.height);
            xml_ += "</h>";
            break;
        case ToscField::kName:
            AppendCharacterData(xml_, fields.name);
            break;
        case ToscField::kOrientation:
            Number(fields.orientation);
            break;
        case ToscField::kButtonType:
            Number(fields.buttonType);
            break;
        case ToscField::kTabLabel:
            AppendCharacterData(xml_, fields.tabLabel);
            break;
    }
    xml_ += "</value></property>";
}

void ToscXmlWriter::OpenNode(std::string_view type, std::span<const ToscProperty> properties,
                             const ToscNodeFields& fields)
{
    xml_ += "<node ID='";
    ids_.AppendNext(xml_);
    xml_ += "' type='";
    xml_ += type;
    xml_ += "'><properties>";
    for (const ToscProperty& property : properties)
        Property(property, fields);
    xml_ += "</properties><values>";
}

void ToscXmlWriter::Value(std::string_view key, std::string_view initial, bool lockedDefaultCurrent)
{
    xml_ += "<value><key><![CDATA[";
    xml_ += key;
    xml_ += "]]></key><locked>0</locked><lockedDefaultCurrent>";
    xml_ += lockedDefaultCurrent ? '1' : '0';
    xml_ += "</lockedDefaultCurrent><default>";
    AppendCharacterData(xml_, initial);
    xml_ += "</default><defaultPull>0</defaultPull></value>";
}

void ToscXmlWriter::EndValues()
{
    xml_ += "</values>";
}

void ToscXmlWriter::OscMessage(std::string_view address, std::int32_t low, std::int32_t high)
{
    xml_ +=
        "<messages><osc><enabled>1</enabled><send>1</send><receive>1</receive>"
        "<feedback>0</feedback><connections>00001</connections><triggers><trigger>"
        "<var><![CDATA[x]]></var><condition>ANY</condition></trigger></triggers><path>"
        "<partial><type>CONSTANT</type><conversion>FLOAT</conversion><value>";
    AppendCharacterData(xml_, address);
    xml_ +=
        "</value><scaleMin>0</scaleMin><scaleMax>1</scaleMax></partial></path><arguments>"
        "<partial><type>VALUE</type><conversion>FLOAT</conversion><value><![CDATA[x]]></value>"
        "<scaleMin>";
    Number(low);
    xml_ += "</scaleMin><scaleMax>";
    Number(high);
    xml_ += "</scaleMax></partial></arguments></osc></messages>";
}

void ToscXmlWriter::OpenChildren()
{
    xml_ += "<children>";
}

void ToscXmlWriter::CloseChildren()
{
    xml_ += "</children>";
}

void ToscXmlWriter::CloseNode()
{
    xml_ += "</node>";
}
