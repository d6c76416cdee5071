#include "app/FileFlow.h"

namespace tlm {

namespace {

void ShowStop(AppHost& host, std::u16string_view text, std::u16string_view caption)
{
    if (host.messageBox) {
        host.messageBox(std::u16string(text), std::u16string(caption), MessageBoxKind::Stop);
    }
}

} // namespace

std::u16string NewInstanceCommandLine(std::u16string_view executable, std::u16string_view path)
{
    std::u16string line;
    line.reserve(executable.size() + path.size() + 5);
    line += u'"';
    line += executable;
    line += u"\" \"";
    line += path;
    line += u'"';
    return line;
}

bool OpenInNewInstance(AppHost& host, std::u16string_view path, std::u16string_view failureText,
    std::u16string_view caption)
{
    if (path.empty()) {
        return false;
    }
    std::optional<std::u16string> executable;
    if (host.executablePath) {
        executable = host.executablePath();
    }
    if (!executable || executable->empty()) {
        ShowStop(host, failureText, caption);
        return false;
    }
    const bool started =
        host.createProcess && host.createProcess(*executable, NewInstanceCommandLine(*executable, path));
    if (!started) {
        ShowStop(host, failureText, caption);
    }
    return started;
}

void DropFiles(const std::vector<std::u16string>& paths, bool fileOpen,
    const std::function<bool(const std::u16string&)>& openHere,
    const std::function<void(const std::u16string&)>& openInNewInstance)
{
    for (const std::u16string& path : paths) {
        if (fileOpen) {
            openInNewInstance(path);
        } else if (openHere(path)) {
            fileOpen = true;
        }
    }
}

bool ConfirmSaveChanges(AppHost& host, bool fileOpen, bool modified, std::u16string_view question,
    std::u16string_view caption, const std::function<bool()>& save)
{
    if (!fileOpen || !modified) {
        return true;
    }
    const MessageBoxResult answer = host.messageBox
        ? host.messageBox(std::u16string(question), std::u16string(caption), MessageBoxKind::YesNoCancelExclamation)
        : MessageBoxResult::Cancel;
    switch (answer) {
    case MessageBoxResult::Yes:
        return save();
    case MessageBoxResult::No:
        return true;
    default:
        return false;
    }
}

} // namespace tlm
