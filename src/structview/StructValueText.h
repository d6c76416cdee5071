#pragma once

#include "structview/StructEvalRequest.h"
#include "structview/StructPatternFile.h"

#include <string>

namespace tlm {

// The value text of one member, read from the request's bytes at the member's `offset` (relative to
// the snapshot) under the request's value format. A member the bytes do not wholly reach shows
// `unavailableText`.
std::u16string FormatMemberValue(const ResolvedMember& member, const StructEvalRequest& request,
    const std::u16string& unavailableText);

} // namespace tlm
