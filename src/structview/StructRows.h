#pragma once

#include "structview/StructEvalRequest.h"
#include "structview/StructPatternFile.h"
#include "structview/StructRow.h"

#include <cstddef>
#include <vector>

namespace tlm {

// A result never holds more member rows than this; a cut result ends in one more row of "...".
inline constexpr std::size_t MaxStructRows = 256;

// The rows of the entry struct at the request's offset. Struct fields of the entry struct expand one
// level into indented rows. No pattern, or no struct of the entry's name, gives no rows.
std::vector<StructRow> BuildStructRows(const StructEvalRequest& request);

// Whether the layout ends in a flexible array, directly or through its last struct field, so that the
// caller reads more than the struct's size.
bool EndsInFlexibleArray(const StructPatternFile& patternFile, const ResolvedStruct& resolvedStruct);

} // namespace tlm
