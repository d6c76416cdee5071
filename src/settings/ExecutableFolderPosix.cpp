#include "settings/ExecutableFolder.h"

#include "settings/LenientUtf8.h"

#include <filesystem>
#include <system_error>

namespace tlm {

namespace {

std::u16string Text(const std::filesystem::path& path)
{
    return Utf8ToUtf16Lenient(path.native());
}

} // namespace

std::optional<std::u16string> ExecutableFolder(std::u16string& error)
{
    std::error_code code;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", code);
    if (code || !program.has_parent_path()) {
        error = Utf8ToUtf16Lenient(code ? code.message() : std::string("the program's path has no folder"));
        return std::nullopt;
    }
    return Text(program.parent_path());
}

} // namespace tlm
