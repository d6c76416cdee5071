#pragma once

#include <cstdint>

namespace tlm {

// The program's private window messages. Fixed numbers: the hex view, the workers and the analysis
// windows post them to the main window.
enum class AppMessage : std::uint32_t {
    ViewChanged = 0x8001,
    ReadOnlyBlocked = 0x8002,
    ZoomChanged = 0x8003,
    InspectorResult = 0x800A,
    InspectorClosed = 0x800B,
    StructViewClosed = 0x800C,
    StructOpenPattern = 0x800D,
    StructResult = 0x800E,
    StructClearPattern = 0x800F,
    StructReloadPattern = 0x8010,
    StructValueFormat = 0x8011,
};

// Whether a window message number is one of the values above; the numbers between them are not.
constexpr bool IsAppMessage(std::uint32_t message)
{
    switch (static_cast<AppMessage>(message)) {
    case AppMessage::ViewChanged:
    case AppMessage::ReadOnlyBlocked:
    case AppMessage::ZoomChanged:
    case AppMessage::InspectorResult:
    case AppMessage::InspectorClosed:
    case AppMessage::StructViewClosed:
    case AppMessage::StructOpenPattern:
    case AppMessage::StructResult:
    case AppMessage::StructClearPattern:
    case AppMessage::StructReloadPattern:
    case AppMessage::StructValueFormat:
        return true;
    }
    return false;
}

} // namespace tlm
