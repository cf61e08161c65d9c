#include "OscAddress.h"

std::string OscAddressOf(const std::vector<std::string>& components)
{
    std::string address = "/TRVX/";
    for (std::size_t i = 0; i < components.size(); ++i) {
        if (i > 0)
            address += '/';
        address += components[i];
    }
    return address;
}
