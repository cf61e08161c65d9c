#pragma once

#include "ModuleExport.h"
#include "WindowHandle.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <string>

// The host object: everything the module asks of the application that loads it.
class VornBasics {
public:
    virtual ~VornBasics() = default;

    // Shows one line of error text to the user.
    virtual void ShowError(const char* text) = 0;

    // 0 or 1: which row of the minimum control sizes applies. The argument is
    // the host's own selector; the editor always passes -1.
    virtual int GetSizeLimitMode(int selector) = 0;

    // The folder where the module may keep temporary files.
    virtual std::string GetDataFolder() = 0;

    // Asks whether to save the layout at path before closing: 2, 3 or 4.
    virtual int AskSaveChanges(void* editor, const char* path) = 0;

    // Asked before the editor sets its own title; non-zero means the host
    // has taken care of it.
    virtual int QueryTitle(int selector) = 0;

    // Converts between host order and the layout file's order, little-endian.
    // Each conversion is its own inverse.
    virtual void FlipULong(std::uint32_t& value) { value = toLittleEndian(value); }
    virtual void FlipLong(std::int32_t& value) { value = toLittleEndian(value); }
    virtual void FlipUShort(std::uint16_t& value) { value = toLittleEndian(value); }
    virtual void FlipShort(std::int16_t& value) { value = toLittleEndian(value); }

    // The window that receives test-mode values and status texts; may be null.
    WindowHandle hostWindow = nullptr;

private:
    template <typename T>
    static T toLittleEndian(T value)
    {
        if constexpr (std::endian::native == std::endian::little) {
            return value;
        } else {
            auto bytes = std::bit_cast<std::array<std::uint8_t, sizeof(T)>>(value);
            std::reverse(bytes.begin(), bytes.end());
            return std::bit_cast<T>(bytes);
        }
    }
};

// Made by the host for each editor: the editor passes its parent window and
// the host's own selectors 4, 0, null, null. The host defines it and exports it
// from its executable, where the module finds it when it is loaded.
extern "C" VORNOSC_EXPORT VornBasics* AllocVornBasics(WindowHandle parent, int kind, int flags,
                                                      void* reserved1, void* reserved2);
