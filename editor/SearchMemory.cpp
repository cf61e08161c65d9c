#include "SearchMemory.h"

std::string Search;
std::string Replace;
std::int32_t inName = 1;
std::int32_t inCommand = 1;
