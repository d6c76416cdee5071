#include "app/StatusText.h"

#include "encoding/EncodingCatalogue.h"

#include <cmath>

namespace tlm {

namespace {

// Offsets of files below 4 GiB fit in 8 digits; larger files always show 16 so the width stays put.
constexpr std::uint64_t WideOffsetFileSize = std::uint64_t{1} << 32;

std::u16string UpperHex(std::uint64_t value, std::size_t minimumDigits)
{
    std::u16string digits;
    do {
        digits.insert(digits.begin(), u"0123456789ABCDEF"[value & 0xF]);
        value >>= 4;
    } while (value != 0);
    if (digits.size() < minimumDigits)
        digits.insert(digits.begin(), minimumDigits - digits.size(), u'0');
    return digits;
}

std::u16string Decimal(long long value)
{
    const bool negative = value < 0;
    unsigned long long magnitude = negative ? 0ULL - static_cast<unsigned long long>(value)
                                            : static_cast<unsigned long long>(value);
    std::u16string digits;
    do {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + magnitude % 10));
        magnitude /= 10;
    } while (magnitude != 0);
    if (negative)
        digits.insert(digits.begin(), u'-');
    return digits;
}

std::u16string FileStatusText(const StatusTextInputs& inputs,
                              const std::function<std::u16string(std::string_view key)>& translate)
{
    const std::u16string separator = u"  ";
    std::u16string text = translate("status.offset") + u": 0x" +
                          UpperHex(inputs.caret, inputs.fileSize < WideOffsetFileSize ? 8 : 16);
    text += separator + translate("status.encoding") + u": " + EncodingDisplayName(inputs.encoding);
    if (inputs.editingEnabled)
        text += separator + translate("status.mode") + u": " +
                translate(inputs.insertMode ? "status.mode.insert" : "status.mode.overwrite");
    else
        text += separator + translate("status.readonly");
    if (inputs.modified)
        text += separator + translate("status.modified");
    const long long percent = std::llround(static_cast<double>(inputs.zoom) * 100.0);
    text += separator + translate("status.zoom") + u": " + Decimal(percent) + u"%";
    return text;
}

} // namespace

std::u16string BuildStatusText(const StatusTextInputs& inputs,
                               const std::function<std::u16string(std::string_view key)>& translate)
{
    if (inputs.overrideActive)
        return inputs.overrideText;
    if (inputs.saveActive)
        return inputs.saveText;
    if (inputs.searchActive)
        return inputs.searchText;
    if (!inputs.fileOpen)
        return translate("status.no_file");
    return FileStatusText(inputs, translate);
}

} // namespace tlm
