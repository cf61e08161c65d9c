#include "ToscNode.h"

#include <cstring>

namespace {

bool Named(const pugi::xml_node& element, const char* name)
{
    return std::strcmp(element.name(), name) == 0;
}

// The key and the value element of a property.
struct Property {
    std::string_view key;
    pugi::xml_node value;
};

Property PropertyOf(const pugi::xml_node& property)
{
    // As the app writes them: the key, then the value.
    const pugi::xml_node key = property.first_child();
    const pugi::xml_node value = key.next_sibling();
    if (Named(key, "key") && Named(value, "value"))
        return {key.text().get(), value};
    Property found;
    for (pugi::xml_node part = property.first_child(); part; part = part.next_sibling()) {
        if (Named(part, "key"))
            found.key = part.text().get();
        else if (Named(part, "value"))
            found.value = part;
    }
    return found;
}

// Each <property> of the node; read leniently, anything else there that holds
// a key and a value counts as one too.
template <typename Visit>
void EachProperty(const pugi::xml_node& properties, Visit visit)
{
    for (pugi::xml_node property = properties.first_child(); property;
         property = property.next_sibling())
        visit(PropertyOf(property));
}

}  // namespace

ToscNode::ToscNode(const pugi::xml_node& node) : element(node)
{
    type = node.attribute("type").value();
    // The app writes the properties first and the children last; values and
    // messages, between them, are looked for only where needed.
    const pugi::xml_node first = node.first_child();
    const pugi::xml_node properties = Named(first, "properties") ? first : node.child("properties");
    const pugi::xml_node last = node.last_child();
    children = Named(last, "children") ? last : node.child("children");
    EachProperty(properties, [&](const Property& property) {
        const std::string_view key = property.key;
        const pugi::xml_node value = property.value;
        if (key == "name")
            name = value.text().get();
        else if (key == "frame") {
            const auto [x, y, w, h] = PartsOf(value, std::array{"x", "y", "w", "h"});
            frame = {x, y, w, h};
        } else if (key == "visible")
            hidden = std::string_view(value.text().get()) == "0";
        else if (key == "buttonType")
            momentary = NumberIn(value.text().get()) == 0;
        else if (key == "color")
            color = value;
        else if (key == "tabLabel")
            tabLabel = value.text().get();
    });
}

std::string_view PropertyText(const ToscNode& node, std::string_view key)
{
    std::string_view text = "";
    bool found = false;
    EachProperty(node.element.child("properties"), [&](const Property& property) {
        if (property.key == key && !found) {
            text = property.value.text().get();
            found = true;
        }
    });
    return text;
}

pugi::xml_node ToscNode::Part(const char* name) const
{
    // Where the app writes them: just before the children, messages after values.
    for (pugi::xml_node part = children ? children.previous_sibling() : element.last_child();
         part && !Named(part, "properties"); part = part.previous_sibling()) {
        if (Named(part, name))
            return part;
    }
    return element.child(name);
}

std::string_view ShownText(const ToscNode& node)
{
    for (const pugi::xml_node value : node.Part("values").children("value")) {
        if (std::string_view(value.child("key").text().get()) == "text")
            return value.child("default").text().get();
    }
    return "";
}
