#pragma once

// Included by Windows code only.

#include <windows.h>

namespace tlm {

// Owns one reference to a COM object.
template <typename T>
class ComRef {
public:
    ComRef() = default;
    ComRef(const ComRef&) = delete;
    ComRef& operator=(const ComRef&) = delete;
    ~ComRef() { Reset(); }

    void Reset()
    {
        if (object != nullptr) {
            object->Release();
            object = nullptr;
        }
    }
    // The slot a creating call fills; whatever was held is released first.
    T** Put()
    {
        Reset();
        return &object;
    }
    T* Get() const { return object; }
    T* operator->() const { return object; }
    explicit operator bool() const { return object != nullptr; }

    template <typename U>
    bool QueryInto(ComRef<U>& other) const
    {
        return object != nullptr
            && SUCCEEDED(object->QueryInterface(__uuidof(U), reinterpret_cast<void**>(other.Put())));
    }

private:
    T* object = nullptr;
};

} // namespace tlm
