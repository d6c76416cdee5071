#include "app/PatternsFolder.h"

#include "document/ParentPath.h"

namespace tlm {

namespace {

// A build tree sits a few levels below the source tree; further up is somebody else's folder.
constexpr int LevelsAbove = 5;

} // namespace

std::optional<std::u16string> FindPatternsFolder(const std::optional<std::u16string>& executableFolder,
    const std::function<bool(const std::u16string& folder)>& folderExists)
{
    if (!executableFolder || executableFolder->empty()) {
        return std::nullopt;
    }
    const std::u16string beside = JoinPath(*executableFolder, u"patterns");
    if (!folderExists) {
        return beside;
    }
    std::u16string base = *executableFolder;
    for (int level = 0; level <= LevelsAbove && !base.empty(); ++level) {
        const std::u16string candidate = JoinPath(base, u"patterns");
        if (folderExists(candidate)) {
            return candidate;
        }
        const std::u16string parent = ParentPath(base);
        if (parent == base) {
            break;
        }
        base = parent;
    }
    return beside;
}

} // namespace tlm
