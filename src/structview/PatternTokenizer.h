#pragma once

#include "structview/PatternToken.h"

#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// Splits pattern text into tokens ending in one End token. On a lexical failure the answer is empty
// and `error` holds the text (positioned, except for an unterminated block comment).
std::vector<PatternToken> TokenizeDefinition(std::u16string_view text, std::u16string& error);

} // namespace tlm
