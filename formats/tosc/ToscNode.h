#pragma once

#include "formats/ImportedFields.h"

#include <pugixml.hpp>

#include <array>
#include <cstring>
#include <string_view>

// A node's frame: its rectangle relative to the node that holds it.
struct ToscFrame {
    double x = 0;
    double y = 0;
    double w = 0;
    double h = 0;
};

// What the import reads of one <node> of a current TouchOSC file, found in one
// pass over its elements and one over its properties: large files hold tens of
// thousands of nodes of twenty properties each.
struct ToscNode {
    explicit ToscNode(const pugi::xml_node& node);

    // The node's element of that name, such as "values" or "messages".
    pugi::xml_node Part(const char* name) const;

    pugi::xml_node element;
    // Texts are "" rather than null when missing: they are copied into fields.
    std::string_view type = "";
    std::string_view name = "";
    std::string_view tabLabel = "";  // the tab that shows a pager's page
    ToscFrame frame;
    bool hidden = false;    // the app does not show it, nor what it holds
    bool momentary = true;  // of a button
    pugi::xml_node color;   // the colour's <value>; null when the node has none
    pugi::xml_node children;
};

// The text of the node's property named key; "" when it has none.
std::string_view PropertyText(const ToscNode& node, std::string_view key);

// A label's shown text: the default of its "text" value.
std::string_view ShownText(const ToscNode& node);

// The texts of element's children of the given names, read in one pass; "" for
// a name it lacks.
template <std::size_t N>
std::array<std::string_view, N> TextsOf(const pugi::xml_node& element,
                                        const std::array<const char*, N>& names)
{
    std::array<std::string_view, N> texts;
    texts.fill("");
    std::array<bool, N> found{};
    for (pugi::xml_node part = element.first_child(); part; part = part.next_sibling()) {
        const char* const name = part.name();
        for (std::size_t i = 0; i < N; ++i) {
            if (!found[i] && name[0] == names[i][0] && std::strcmp(name, names[i]) == 0) {
                texts[i] = part.text().get();
                found[i] = true;
                break;
            }
        }
    }
    return texts;
}

// The numbers that value's elements of the given names hold, such as a frame's
// x, y, w and h; 0 for a name it lacks.
template <std::size_t N>
std::array<double, N> PartsOf(const pugi::xml_node& value, const std::array<const char*, N>& names)
{
    const std::array<std::string_view, N> texts = TextsOf(value, names);
    std::array<double, N> numbers{};
    for (std::size_t i = 0; i < N; ++i)
        numbers[i] = NumberIn(texts[i]);
    return numbers;
}
