#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tlm {

// What the Windows rules ask of the system, gathered so that the rules can run anywhere.
struct WindowsSettingsInputs {
    std::u16string packageFamily;                 // empty when the program is not installed as a package
    std::optional<std::u16string> localAppData;   // the user's local application data folder
    std::optional<std::u16string> executableFolder;
    std::u16string executableFolderError;         // the system's reason when the folder is unknown
    std::optional<std::u16string> currentFolder;
};

// What the POSIX rules ask of the system.
struct PosixSettingsInputs {
    std::optional<std::u16string> executableFolder;
    std::u16string executableFolderError;
    std::u16string configHome; // $XDG_CONFIG_HOME, taken only when it is an absolute path
    std::u16string home;       // $HOME
    std::optional<std::u16string> currentFolder;
};

struct SettingsLocation {
    std::u16string path;
    // Texts composed for the failures met on the way; nothing shows them.
    std::vector<std::u16string> droppedErrors;
};

// The first that applies: a packaged program's own folder (local application data, "Packages", the
// family, "LocalState"); "tolmo.settings.json" beside the program when a "tolmo.portable" file is there;
// local application data, "Tolmo"; beside the program; the current folder; the bare file name. The
// folders of the first and third are created with their parents, and a failure moves on.
SettingsLocation ResolveWindowsSettingsPath(const WindowsSettingsInputs& inputs);

// The same order of thought without packages: portable beside the program; $XDG_CONFIG_HOME/tolmo or
// ~/.config/tolmo, created with its parents; beside the program; the current folder; the bare name.
SettingsLocation ResolvePosixSettingsPath(const PosixSettingsInputs& inputs);

// The settings file of this program on this system.
std::u16string ResolveSettingsPath();

} // namespace tlm
