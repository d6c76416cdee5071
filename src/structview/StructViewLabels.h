#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tlm {

// The texts the struct view shows, read by key in the user's language.
struct StructViewLabels {
    std::u16string title;
    std::u16string headerDefinition;
    std::u16string columnName;
    std::u16string columnSize;
    std::u16string columnOffset;
    std::u16string columnType; // loaded with the others, never drawn
    std::u16string columnValue;
    std::u16string emptyMessage;
    std::u16string openButton;
    std::u16string reloadButton;
    std::u16string closeButton;
    std::u16string infoButton;
    std::u16string errorPrefix;
    std::u16string byteArray;
    std::u16string byteArrayHex;
    std::u16string byteArrayAscii;
    std::u16string endian;
    std::u16string endianLittle;
    std::u16string endianBig;
    std::u16string numericBase;
    std::u16string numericBaseHex;
    std::u16string numericBaseDec;

    friend bool operator==(const StructViewLabels&, const StructViewLabels&) = default;
};

// Reads every label through `translate`, a lookup of a key such as "structview.title".
StructViewLabels LoadStructViewLabels(const std::function<std::u16string(std::string_view key)>& translate);

} // namespace tlm
