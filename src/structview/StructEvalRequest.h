#pragma once

#include "structview/StructPatternFile.h"
#include "structview/StructValueFormat.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tlm {

// Everything one evaluation of the entry struct needs. It owns its bytes and shares the pattern, so
// it can travel to the analysis worker while the document and the loaded pattern move on.
struct StructEvalRequest {
    std::uint64_t baseOffset = 0;    // document offset at which the entry struct starts
    std::vector<std::uint8_t> bytes; // snapshot from baseOffset; may be shorter than the struct
    std::shared_ptr<const StructPatternFile> patternFile;
    std::u16string unavailableText;  // shown where the bytes do not reach a value
    StructValueFormat valueFormat;
};

} // namespace tlm
