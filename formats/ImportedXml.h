#pragma once

#include "ImportLimits.h"

#include <pugixml.hpp>
#include <string>

// Parses the XML of another app's file. No entity is expanded but the five of
// XML itself and character references; no DTD, external entity or other file is
// ever read. Refuses XML that does not parse or that nests elements deeper than
// the limit, with error saying so about what (the name the user knows the text by).
bool ParseImportedXml(std::string& xml, pugi::xml_document& document, const std::string& what,
                      const ImportLimits& limits, std::string& error);

// The same without the check of nesting, for a reader that walks only some
// elements and checks how deep those sit as it walks them.
bool ParseXml(std::string& xml, pugi::xml_document& document, const std::string& what,
              std::string& error, unsigned options);

// "... nests elements deeper than 64 levels", of what.
std::string TooDeep(const std::string& what, const ImportLimits& limits);

// The attribute's text; "" when it is missing.
inline std::string_view AttributeText(const pugi::xml_node& node, const char* name)
{
    return node.attribute(name).value();
}
