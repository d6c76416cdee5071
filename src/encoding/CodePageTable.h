#pragma once

#include <cstdint>

namespace tlm {

// Conversion tables of one single- or double-byte code page, generated from the page's published data.
struct CodePageTable {
    std::uint32_t codePage = 0;
    std::uint8_t defaultByte = 0;      // written for a character without bytes
    char16_t defaultUnicode = 0;       // read for bytes without a character
    const char16_t* singleBytes = nullptr;       // 256 entries
    const std::uint8_t* leadRows = nullptr;      // 256 entries: row in pairs plus one, 0 for no lead byte
    const char16_t (*pairs)[256] = nullptr;      // per lead byte, every trail byte
    const std::uint8_t* encodeRows = nullptr;    // 256 entries: block of a unit's high byte
    const std::uint16_t (*encodeBlocks)[256] = nullptr; // bytes of a unit, the lead byte high

    bool IsLeadByte(std::uint8_t byte) const { return leadRows[byte] != 0; }
    char16_t DecodeSingle(std::uint8_t byte) const { return singleBytes[byte]; }
    char16_t DecodePair(std::uint8_t lead, std::uint8_t trail) const { return pairs[leadRows[lead] - 1][trail]; }
    // One byte (below 0x100) or a pair (lead byte high), best fits included.
    std::uint16_t Encode(char16_t unit) const { return encodeBlocks[encodeRows[unit >> 8]][unit & 0xFF]; }
    // What the bytes of Encode read back as.
    char16_t DecodeValue(std::uint16_t value) const
    {
        if (value > 0xFF) {
            const auto lead = static_cast<std::uint8_t>(value >> 8);
            return IsLeadByte(lead) ? DecodePair(lead, static_cast<std::uint8_t>(value & 0xFF)) : defaultUnicode;
        }
        return DecodeSingle(static_cast<std::uint8_t>(value));
    }
};

// The table of 874, 932, 936, 949, 950, 1258 or 51949; nothing for any other page.
const CodePageTable* FindCodePageTable(std::uint32_t codePage);

} // namespace tlm
