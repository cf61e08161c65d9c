#pragma once

#include <string>
#include <vector>

// The OSC address of a value reported in test mode: "/TRVX/" and the components joined with
// "/", so {"ID3", "SetVal", "Ctl7"} is "/TRVX/ID3/SetVal/Ctl7".
std::string OscAddressOf(const std::vector<std::string>& components);
