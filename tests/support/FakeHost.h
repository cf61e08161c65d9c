#pragma once

#include "host/VornBasics.h"

#include <algorithm>
#include <string>
#include <vector>

// A host object for tests: records errors and answers with set values.
class FakeHost : public VornBasics {
public:
    std::vector<std::string> errors;
    int sizeLimitMode = 0;
    std::string dataFolder;

    void ShowError(const char* text) override { errors.emplace_back(text); }
    int GetSizeLimitMode(int) override { return sizeLimitMode; }
    std::string GetDataFolder() override { return dataFolder; }
    int AskSaveChanges(void*, const char*) override { return 3; }
    int QueryTitle(int) override { return 0; }
};

// A host whose file order is big-endian: every number of a layout file written
// through it comes out byte-swapped, which shows that each field is converted
// exactly once on the way out and once on the way in.
class BigEndianHost : public FakeHost {
public:
    void FlipULong(std::uint32_t& v) override { Reverse(v); }
    void FlipLong(std::int32_t& v) override { Reverse(v); }
    void FlipUShort(std::uint16_t& v) override { Reverse(v); }
    void FlipShort(std::int16_t& v) override { Reverse(v); }

private:
    template <class Number>
    static void Reverse(Number& v)
    {
        auto* bytes = reinterpret_cast<unsigned char*>(&v);
        std::reverse(bytes, bytes + sizeof v);
    }
};
