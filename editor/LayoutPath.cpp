#include "LayoutPath.h"

#include "document/IgnoringCase.h"

SplitPath SplitFileName(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return {{}, std::string(path)};
    return {std::string(path.substr(0, slash == 0 ? 1 : slash)),
            std::string(path.substr(slash + 1))};
}

std::string_view WithoutSuffix(std::string_view name, std::string_view suffix)
{
    if (name.size() > suffix.size() && EndsWithIgnoringCase(name, suffix))
        name.remove_suffix(suffix.size());
    return name;
}
