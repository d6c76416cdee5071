#include "settings/SettingsPath.h"

#include "settings/ExecutableFolder.h"

#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

#include <cwchar>
#include <vector>

namespace tlm {

namespace {

// Declared by appmodel.h, which not every SDK ships; looked up at run time so that the program also
// starts where the function does not exist.
using GetCurrentPackageFamilyNameFunction = LONG(WINAPI*)(UINT32*, PWSTR);

std::u16string Text(const wchar_t* text)
{
    return std::u16string(text, text + wcslen(text));
}

// The package family name, or empty when the program does not run from a package.
std::u16string PackageFamily()
{
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    if (!kernel)
        return {};
    const auto function = reinterpret_cast<GetCurrentPackageFamilyNameFunction>(
        reinterpret_cast<void*>(GetProcAddress(kernel, "GetCurrentPackageFamilyName")));
    if (!function)
        return {};
    UINT32 length = 0;
    if (function(&length, nullptr) != ERROR_INSUFFICIENT_BUFFER || length == 0)
        return {};
    std::vector<wchar_t> buffer(length);
    if (function(&length, buffer.data()) != ERROR_SUCCESS)
        return {};
    return Text(buffer.data());
}

std::optional<std::u16string> LocalAppData()
{
    PWSTR folder = nullptr;
    std::optional<std::u16string> result;
    if (SUCCEEDED(SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &folder)) && folder)
        result = Text(folder);
    CoTaskMemFree(folder);
    return result;
}

} // namespace

std::u16string ResolveSettingsPath()
{
    WindowsSettingsInputs inputs;
    inputs.packageFamily = PackageFamily();
    inputs.localAppData = LocalAppData();
    inputs.executableFolder = ExecutableFolder(inputs.executableFolderError);
    inputs.currentFolder = CurrentFolder();
    return ResolveWindowsSettingsPath(inputs).path;
}

} // namespace tlm
