#pragma once

#include <cstddef>

// What a reader accepts of a file before refusing it, so that a hostile file
// can neither exhaust memory nor the stack. Tests lower them to reach them.
struct ImportLimits {
    std::size_t maxXmlBytes = std::size_t{256} << 20;  // the XML, once inflated
    int maxDepth = 64;                                 // elements inside each other
    std::size_t maxCount = 65535;                      // pages, and controls on a page
};

// "256 MB": how the limit on the XML's size is told to users.
inline std::size_t MegabytesOf(std::size_t bytes)
{
    return bytes >> 20;
}
