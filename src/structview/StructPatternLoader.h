#pragma once

#include "structview/StructPatternFile.h"

#include <string>
#include <string_view>

namespace tlm {

// Reads a .tlpat file and lays out every struct in it. Answers false with one error text, and leaves
// `patternFile` untouched, on the first failure of reading, decoding, tokenising, parsing or layout.
bool LoadStructPatternFile(const std::u16string& path, StructPatternFile& patternFile, std::u16string& error);

// The same from the file's bytes: an optional UTF-8 byte-order mark, then strict UTF-8.
bool LoadStructPatternBytes(std::string_view bytes, StructPatternFile& patternFile, std::u16string& error);

// The same from decoded text.
bool LoadStructPatternText(std::u16string_view text, StructPatternFile& patternFile, std::u16string& error);

} // namespace tlm
