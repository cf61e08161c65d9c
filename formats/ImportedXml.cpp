#include "ImportedXml.h"

namespace {

// pugixml walks the tree itself, without recursion, and stops where told.
class DepthCheck : public pugi::xml_tree_walker {
public:
    explicit DepthCheck(int limit) : limit_(limit) {}

    bool for_each(pugi::xml_node& node) override
    {
        deeper_ = node.type() == pugi::node_element && depth() >= limit_;
        return !deeper_;
    }

    bool Deeper() const { return deeper_; }

private:
    int limit_;
    bool deeper_ = false;
};

bool NestsDeeperThan(pugi::xml_document& document, int limit)
{
    DepthCheck check(limit);
    document.traverse(check);
    return check.Deeper();
}

}  // namespace

bool ParseXml(std::string& xml, pugi::xml_document& document, const std::string& what,
              std::string& error, unsigned options)
{
    // In place: the text is not copied a second time.
    const pugi::xml_parse_result result =
        document.load_buffer_inplace(xml.data(), xml.size(), options, pugi::encoding_utf8);
    if (!result) {
        error = what + " is not well-formed XML: " + result.description() + " at byte " +
                std::to_string(result.offset);
        return false;
    }
    return true;
}

std::string TooDeep(const std::string& what, const ImportLimits& limits)
{
    return what + " nests elements deeper than " + std::to_string(limits.maxDepth) + " levels";
}

bool ParseImportedXml(std::string& xml, pugi::xml_document& document, const std::string& what,
                      const ImportLimits& limits, std::string& error)
{
    if (!ParseXml(xml, document, what, error, pugi::parse_default))
        return false;
    if (NestsDeeperThan(document, limits.maxDepth)) {
        error = TooDeep(what, limits);
        return false;
    }
    return true;
}
