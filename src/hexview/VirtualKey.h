#pragma once

#include <cstdint>

namespace tlm {

// The platform's virtual-key numbers of the keys the hex view knows.
namespace VirtualKey {
inline constexpr std::uint32_t Back = 0x08;
inline constexpr std::uint32_t Escape = 0x1B;
inline constexpr std::uint32_t PageUp = 0x21;
inline constexpr std::uint32_t PageDown = 0x22;
inline constexpr std::uint32_t End = 0x23;
inline constexpr std::uint32_t Home = 0x24;
inline constexpr std::uint32_t Left = 0x25;
inline constexpr std::uint32_t Up = 0x26;
inline constexpr std::uint32_t Right = 0x27;
inline constexpr std::uint32_t Down = 0x28;
inline constexpr std::uint32_t Insert = 0x2D;
inline constexpr std::uint32_t Delete = 0x2E;
inline constexpr std::uint32_t C = 0x43;
} // namespace VirtualKey

} // namespace tlm
