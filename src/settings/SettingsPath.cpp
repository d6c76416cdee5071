#include "settings/SettingsPath.h"

#include "settings/SettingsFile.h"
#include "document/WholeFile.h"

#include <filesystem>
#include <initializer_list>
#include <system_error>

namespace tlm {

namespace {

constexpr std::u16string_view PortableMarkerName = u"tolmo.portable";

// `base` followed by `parts`; nothing when a part cannot name a file here.
std::optional<std::filesystem::path> Join(std::u16string_view base, std::initializer_list<std::u16string_view> parts)
{
    auto path = PathFromText(base);
    if (!path)
        return std::nullopt;
    for (std::u16string_view part : parts) {
        const auto next = PathFromText(part);
        if (!next)
            return std::nullopt;
        *path /= *next;
    }
    return path;
}

// A relative $XDG_CONFIG_HOME is not valid under the XDG base directory rules and is ignored.
bool IsAbsolute(std::u16string_view folder)
{
    const auto path = PathFromText(folder);
    return path && path->is_absolute();
}

bool CreateFolderWithParents(const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    return !error && std::filesystem::is_directory(folder, error);
}

// The settings file inside `folder`, once the folder exists; otherwise the failure is noted.
std::optional<std::u16string> SettingsFileIn(std::u16string_view base, std::initializer_list<std::u16string_view> parts,
    std::u16string_view failureText, SettingsLocation& location)
{
    const auto folder = Join(base, parts);
    if (folder && CreateFolderWithParents(*folder))
        return (*folder / std::filesystem::path(SettingsFileName)).u16string();
    std::u16string named(base);
    for (std::u16string_view part : parts) {
        named.push_back(u'/');
        named.append(part);
    }
    location.droppedErrors.push_back(std::u16string(failureText) + (folder ? folder->u16string() : named));
    return std::nullopt;
}

bool PortableMarkerBeside(const std::optional<std::u16string>& executableFolder)
{
    if (!executableFolder)
        return false;
    const auto marker = Join(*executableFolder, {PortableMarkerName});
    std::error_code error;
    return marker && std::filesystem::exists(*marker, error);
}

std::u16string FileBesideOrBare(const std::optional<std::u16string>& folder)
{
    if (folder) {
        if (const auto file = Join(*folder, {SettingsFileName}))
            return file->u16string();
    }
    return std::u16string(SettingsFileName);
}

// The last two rules: beside the program, else in the current folder, else the bare name.
void BesideTheProgram(const std::optional<std::u16string>& executableFolder, const std::u16string& executableError,
    const std::optional<std::u16string>& currentFolder, SettingsLocation& location)
{
    if (executableFolder) {
        location.path = FileBesideOrBare(executableFolder);
        return;
    }
    location.droppedErrors.push_back(u"Failed to get executable directory: " + executableError);
    location.path = FileBesideOrBare(currentFolder);
}

} // namespace

SettingsLocation ResolveWindowsSettingsPath(const WindowsSettingsInputs& inputs)
{
    SettingsLocation location;
    if (!inputs.packageFamily.empty()) {
        constexpr std::u16string_view failure = u"Failed to create packaged settings directory: ";
        if (!inputs.localAppData) {
            location.droppedErrors.push_back(std::u16string(failure) + u"Packages/" + inputs.packageFamily);
        } else if (auto file = SettingsFileIn(*inputs.localAppData, {u"Packages", inputs.packageFamily, u"LocalState"},
                       failure, location)) {
            location.path = std::move(*file);
            return location;
        }
    }
    if (PortableMarkerBeside(inputs.executableFolder)) {
        location.path = FileBesideOrBare(inputs.executableFolder);
        return location;
    }
    if (inputs.localAppData) {
        if (auto file = SettingsFileIn(*inputs.localAppData, {u"Tolmo"},
                u"Failed to create local app data settings directory: ", location)) {
            location.path = std::move(*file);
            return location;
        }
    } else {
        location.droppedErrors.push_back(u"Failed to create local app data settings directory: Tolmo");
    }
    BesideTheProgram(inputs.executableFolder, inputs.executableFolderError, inputs.currentFolder, location);
    return location;
}

SettingsLocation ResolvePosixSettingsPath(const PosixSettingsInputs& inputs)
{
    SettingsLocation location;
    if (PortableMarkerBeside(inputs.executableFolder)) {
        location.path = FileBesideOrBare(inputs.executableFolder);
        return location;
    }
    std::optional<std::u16string> file;
    if (IsAbsolute(inputs.configHome)) {
        file = SettingsFileIn(inputs.configHome, {u"tolmo"}, u"Failed to create user settings directory: ", location);
    } else if (!inputs.home.empty()) {
        file = SettingsFileIn(inputs.home, {u".config", u"tolmo"}, u"Failed to create user settings directory: ",
            location);
    }
    if (file) {
        location.path = std::move(*file);
        return location;
    }
    BesideTheProgram(inputs.executableFolder, inputs.executableFolderError, inputs.currentFolder, location);
    return location;
}

} // namespace tlm
