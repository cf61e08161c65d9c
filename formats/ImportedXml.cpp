#include "ImportedXml.h"

namespace {

// Walks the tree without recursion, so that the walk itself needs no stack.
bool NestsDeeperThan(const pugi::xml_document& document, int limit)
{
    int depth = 0;
    pugi::xml_node node = document.first_child();
    while (node) {
        if (node.type() == pugi::node_element && depth >= limit)
            return true;
        if (node.first_child()) {
            node = node.first_child();
            ++depth;
            continue;
        }
        while (node && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        if (node)
            node = node.next_sibling();
    }
    return false;
}

}  // namespace

bool ParseImportedXml(std::string& xml, pugi::xml_document& document, const std::string& what,
                      const ImportLimits& limits, std::string& error)
{
    // In place: the text is not copied a second time.
    const pugi::xml_parse_result result = document.load_buffer_inplace(
        xml.data(), xml.size(), pugi::parse_default, pugi::encoding_utf8);
    if (!result) {
        error = what + " is not well-formed XML: " + result.description() + " at byte " +
                std::to_string(result.offset);
        return false;
    }
    if (NestsDeeperThan(document, limits.maxDepth)) {
        error = what + " nests elements deeper than " + std::to_string(limits.maxDepth) + " levels";
        return false;
    }
    return true;
}
