#pragma once

#include <string>

namespace tlm {

// The folder part of a path, found lexically: both '\' and '/' separate, a drive ("C:") or a
// "\\server" prefix is kept as the root, and the last component goes with the separators before it.
// A bare file name has no parent and gives empty text.
std::u16string ParentPath(const std::u16string& path);

// `folder` and `name` with one separator between them.
std::u16string JoinPath(const std::u16string& folder, const std::u16string& name);

} // namespace tlm
