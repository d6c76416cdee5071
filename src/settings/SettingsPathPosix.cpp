#include "settings/SettingsPath.h"

#include "settings/ExecutableFolder.h"
#include "settings/LenientUtf8.h"

#include <cstdlib>

namespace tlm {

namespace {

std::u16string Variable(const char* name)
{
    const char* value = std::getenv(name);
    return value ? Utf8ToUtf16Lenient(value) : std::u16string();
}

} // namespace

std::u16string ResolveSettingsPath()
{
    PosixSettingsInputs inputs;
    inputs.executableFolder = ExecutableFolder(inputs.executableFolderError);
    inputs.configHome = Variable("XDG_CONFIG_HOME");
    inputs.home = Variable("HOME");
    inputs.currentFolder = CurrentFolder();
    return ResolvePosixSettingsPath(inputs).path;
}

} // namespace tlm
