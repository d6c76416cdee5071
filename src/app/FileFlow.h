#pragma once

#include "app/AppHost.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// The command line that starts this program on `path`: the executable and the path, each quoted,
// separated by one blank.
std::u16string NewInstanceCommandLine(std::u16string_view executable, std::u16string_view path);

// Starts another copy of this program on `path`. An empty path does nothing and returns false. When
// the executable cannot be found or the process cannot be started, shows `failureText` with
// `caption` and the stop icon and returns false.
bool OpenInNewInstance(AppHost& host, std::u16string_view path, std::u16string_view failureText,
    std::u16string_view caption);

// Files dropped on the window, in order. The first file opens here while no file is open and the
// earlier ones have failed; every other file goes to a process of its own. A drop thus never
// replaces the file on screen and never asks about unsaved changes.
void DropFiles(const std::vector<std::u16string>& paths, bool fileOpen,
    const std::function<bool(const std::u16string&)>& openHere,
    const std::function<void(const std::u16string&)>& openInNewInstance);

// Asks whether to save unsaved changes before the file goes. True when the caller may go on: no
// file, no changes, "No", or "Yes" with a successful `save`. False for "Cancel" or a failed save.
bool ConfirmSaveChanges(AppHost& host, bool fileOpen, bool modified, std::u16string_view question,
    std::u16string_view caption, const std::function<bool()>& save);

} // namespace tlm
