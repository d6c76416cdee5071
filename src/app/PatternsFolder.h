#pragma once

#include <functional>
#include <optional>
#include <string>

namespace tlm {

// The folder the struct view's file dialog starts in: "patterns" beside the program, or, when the
// program runs from a build tree without that copy, the "patterns" folder of a folder above it (the
// source tree the build was made from). Nothing when the program's folder is unknown; the program's own
// "patterns" when no candidate exists.
std::optional<std::u16string> FindPatternsFolder(const std::optional<std::u16string>& executableFolder,
    const std::function<bool(const std::u16string& folder)>& folderExists);

} // namespace tlm
