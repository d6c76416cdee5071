#pragma once

// Included by Windows code only.

#include <windows.h>

#include <utility>

namespace tlm {

// A system library loaded when first needed rather than with the program: Direct2D and DirectWrite
// bring in a large part of the graphics stack, which would otherwise be loaded before the window can
// appear. Released with its owner, after everything made through it.
class SystemLibrary {
public:
    explicit SystemLibrary(const wchar_t* name)
        : module(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32))
    {
    }
    SystemLibrary(const SystemLibrary&) = delete;
    SystemLibrary& operator=(const SystemLibrary&) = delete;
    ~SystemLibrary()
    {
        if (module) {
            FreeLibrary(module);
        }
    }

    // The exported function `name` as a pointer of type `Function`; null when it is missing.
    template <typename Function>
    Function* Find(const char* name) const
    {
        if (!module) {
            return nullptr;
        }
        // The cast through a generic function pointer is how exported functions are reached.
        return reinterpret_cast<Function*>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
    }

private:
    HMODULE module = nullptr;
};

} // namespace tlm
