#include "cli/CliConsole.h"

#include <windows.h>

namespace tlm {

namespace {

bool IsConsole(HANDLE handle)
{
    DWORD mode = 0;
    return handle != nullptr && handle != INVALID_HANDLE_VALUE && GetFileType(handle) == FILE_TYPE_CHAR
        && GetConsoleMode(handle, &mode) != 0;
}

void WriteAllTo(DWORD which, std::string_view text)
{
    const HANDLE handle = GetStdHandle(which);
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) {
        return;
    }
    while (!text.empty()) {
        const DWORD chunk = static_cast<DWORD>(text.size() > 0x40000000 ? 0x40000000 : text.size());
        DWORD written = 0;
        if (!WriteFile(handle, text.data(), chunk, &written, nullptr) || written == 0) {
            return;
        }
        text.remove_prefix(written);
    }
}

} // namespace

CliStreams ProcessStreams()
{
    // The text is UTF-8 whatever the console's code page was; the bytes go through WriteFile as they
    // are, so nothing turns "\n" into "\r\n" in a file or a pipe either.
    SetConsoleOutputCP(CP_UTF8);
    CliStreams streams;
    streams.writeOut = [](std::string_view text) { WriteAllTo(STD_OUTPUT_HANDLE, text); };
    streams.writeError = [](std::string_view text) { WriteAllTo(STD_ERROR_HANDLE, text); };
    streams.outIsTerminal = IsConsole(GetStdHandle(STD_OUTPUT_HANDLE));
    streams.errorIsTerminal = IsConsole(GetStdHandle(STD_ERROR_HANDLE));
    return streams;
}

} // namespace tlm
