#pragma once

namespace tlm {

// Whether a code point joins the character before it in the inspector's UTF-8 row. This list is wider
// than the text column's: it also holds the marks of Hebrew, Arabic, the Indic scripts and Thai, the
// zero-width joiner and the emoji skin tones.
bool IsInspectorCombiningMark(char32_t codePoint);

} // namespace tlm
