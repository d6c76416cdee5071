#pragma once

// Loading pattern text in tests, with the load's answer checked where the test expects one.
#include "structview/StructPatternLoader.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tlm::test {

inline StructPatternFile LoadPattern(std::u16string_view text)
{
    StructPatternFile patternFile;
    std::u16string error;
    EXPECT_TRUE(LoadStructPatternText(text, patternFile, error));
    EXPECT_EQ(error, u"");
    return patternFile;
}

inline std::u16string LoadPatternError(std::u16string_view text)
{
    StructPatternFile patternFile;
    std::u16string error;
    EXPECT_FALSE(LoadStructPatternText(text, patternFile, error));
    EXPECT_TRUE(patternFile.structs.empty());
    return error;
}

// The three-line form of a positioned error: the message, the quoted line and a caret.
inline std::u16string Positioned(int line, int column, std::u16string_view message, std::u16string_view sourceLine)
{
    auto decimal = [](int value) {
        std::u16string digits;
        do {
            digits.insert(digits.begin(), static_cast<char16_t>(u'0' + value % 10));
            value /= 10;
        } while (value != 0);
        return digits;
    };
    std::u16string text = u"Line " + decimal(line) + u", Col " + decimal(column) + u": " + std::u16string(message);
    text += u"\r\n" + std::u16string(sourceLine) + u"\r\n" + std::u16string(static_cast<std::size_t>(column - 1), u' ') + u"^";
    return text;
}

inline const ResolvedStruct* FindStruct(const StructPatternFile& patternFile, std::u16string_view name)
{
    for (const ResolvedStruct& resolved : patternFile.structs) {
        if (resolved.name == name)
            return &resolved;
    }
    return nullptr;
}

} // namespace tlm::test
