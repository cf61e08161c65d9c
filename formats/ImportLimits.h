#pragma once

#include <cstddef>
#include <string>

// What a reader accepts of a file before refusing it, so that a hostile file
// can neither exhaust memory nor the stack. Tests lower them to reach them.
struct ImportLimits {
    std::size_t maxXmlBytes = std::size_t{256} << 20;  // the XML, once inflated
    int maxDepth = 64;                                 // elements inside each other
    std::size_t maxCount = 65535;                      // pages, and controls on a page
};

// "256 MB": how a limit on a size is told to users.
inline std::string SizeText(std::size_t bytes)
{
    constexpr std::size_t kMegabyte = std::size_t{1} << 20;
    return bytes % kMegabyte == 0 ? std::to_string(bytes / kMegabyte) + " MB"
                                  : std::to_string(bytes) + " bytes";
}
