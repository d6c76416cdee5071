#include "structview/StructValueText.h"

#include "structview/DecimalText.h"

#include <cstring>
#include <locale>
#include <span>
#include <sstream>
#include <string_view>

namespace tlm {

namespace {

using ByteSpan = std::span<const std::uint8_t>;

constexpr std::size_t LimitedHexBytes = 16;
constexpr std::size_t AsciiCharacters = 64;
constexpr char16_t HexDigits[] = u"0123456789ABCDEF";

std::u16string Widen(std::string_view text)
{
    return std::u16string(text.begin(), text.end());
}

void AppendHexByte(std::u16string& text, std::uint8_t byte)
{
    text.push_back(HexDigits[byte >> 4]);
    text.push_back(HexDigits[byte & 0x0F]);
}

std::u16string HexBytes(ByteSpan bytes)
{
    std::u16string text;
    text.reserve(bytes.size() * 3);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i != 0)
            text.push_back(u' ');
        AppendHexByte(text, bytes[i]);
    }
    return text;
}

std::u16string LimitedHexForm(ByteSpan bytes)
{
    if (bytes.empty())
        return u"0 bytes";
    if (bytes.size() <= LimitedHexBytes)
        return HexBytes(bytes);
    return HexBytes(bytes.first(LimitedHexBytes)) + u" ...";
}

bool IsPrintableAscii(std::uint8_t byte)
{
    return byte >= 32 && byte <= 126;
}

// A C string: up to the first NUL, cut with "..." at a byte that is not printable or after 64 characters.
std::u16string AsciiForm(ByteSpan bytes)
{
    if (bytes.empty())
        return u"0 bytes";
    std::u16string text = u"\"";
    bool cut = false;
    std::size_t collected = 0;
    for (std::uint8_t byte : bytes) {
        if (byte == 0)
            break;
        if (!IsPrintableAscii(byte) || collected == AsciiCharacters) {
            cut = true;
            break;
        }
        text.push_back(static_cast<char16_t>(byte));
        ++collected;
    }
    if (cut)
        text += u"...";
    text.push_back(u'"');
    return text;
}

bool IsOneByteCharacterType(const std::u16string& normalizedTypeName)
{
    return normalizedTypeName == u"char" || normalizedTypeName == u"signed char" || normalizedTypeName == u"unsigned char"
        || normalizedTypeName == u"int8_t" || normalizedTypeName == u"uint8_t";
}

std::u16string ByteArrayForm(const ResolvedMember& member, ByteSpan bytes, const StructValueFormat& format)
{
    if (format.byteArrayFormat == 1 && IsOneByteCharacterType(member.normalizedTypeName))
        return AsciiForm(bytes);
    return LimitedHexForm(bytes);
}

// Bytes of one to eight as an unsigned number in the chosen byte order.
std::uint64_t AssembleUnsigned(ByteSpan bytes, bool bigEndian)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::uint8_t byte = bigEndian ? bytes[i] : bytes[bytes.size() - 1 - i];
        value = (value << 8) | byte;
    }
    return value;
}

std::u16string PaddedHex(std::uint64_t value, std::size_t digits)
{
    std::u16string text(digits, u'0');
    for (std::size_t i = 0; i < digits && value != 0; ++i) {
        text[digits - 1 - i] = HexDigits[value & 0x0F];
        value >>= 4;
    }
    return u"0x" + text;
}

std::u16string IntegerForm(ByteSpan bytes, bool bigEndian, bool decimal)
{
    if (bytes.empty())
        return {};
    // Wider than any native integer: the bytes as stored, whatever the byte order says.
    if (bytes.size() > 8)
        return u"0x" + HexBytes(bytes);
    const std::uint64_t value = AssembleUnsigned(bytes, bigEndian);
    if (decimal)
        return DecimalText(value);
    return PaddedHex(value, bytes.size() * 2);
}

// Default stream formatting: up to six significant digits, whatever the global locale.
template <typename Number>
std::u16string NumberText(Number number)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << number;
    return Widen(stream.str());
}

// The number always reads the bytes little-endian; the hexadecimal beside it follows the setting.
std::u16string FloatingForm(ByteSpan bytes, bool bigEndian)
{
    const std::uint64_t bits = AssembleUnsigned(bytes, false);
    std::u16string number;
    if (bytes.size() == sizeof(float)) {
        const auto narrowBits = static_cast<std::uint32_t>(bits);
        float value = 0;
        std::memcpy(&value, &narrowBits, sizeof value);
        number = NumberText(value);
    } else {
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        number = NumberText(value);
    }
    return number + u" (" + IntegerForm(bytes, bigEndian, false) + u")";
}

std::u16string ScalarForm(const ResolvedMember& member, ByteSpan bytes, const StructValueFormat& format)
{
    const bool bigEndian = format.endian == 1;
    if (member.kind == ResolvedValueKind::Float && bytes.size() == 4)
        return FloatingForm(bytes, bigEndian);
    if (member.kind == ResolvedValueKind::Double && bytes.size() == 8)
        return FloatingForm(bytes, bigEndian);
    return IntegerForm(bytes, bigEndian, format.numericBase == 1);
}

// How many bytes the value covers: a flexible array takes whatever the snapshot holds after it.
std::uint64_t NeededByteCount(const ResolvedMember& member, std::uint64_t available)
{
    if (!member.isFlexibleArray)
        return member.totalSize;
    return member.offset < available ? available - member.offset : 0;
}

} // namespace

std::u16string FormatMemberValue(const ResolvedMember& member, const StructEvalRequest& request,
    const std::u16string& unavailableText)
{
    const std::uint64_t available = request.bytes.size();
    const std::uint64_t count = NeededByteCount(member, available);
    if (member.offset > available || count > available - member.offset)
        return unavailableText;
    const ByteSpan bytes(request.bytes.data() + member.offset, static_cast<std::size_t>(count));
    if (member.isPadding)
        return HexBytes(bytes);
    if (member.isFlexibleArray)
        return ByteArrayForm(member, bytes, request.valueFormat);
    if (member.elementCount < 2 && member.kind != ResolvedValueKind::Aggregate)
        return ScalarForm(member, bytes, request.valueFormat);
    return ByteArrayForm(member, bytes, request.valueFormat);
}

} // namespace tlm
