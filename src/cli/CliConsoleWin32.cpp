#include "cli/CliConsole.h"

#include <windows.h>

#include <cstdlib>

namespace tlm {

namespace {

UINT previousOutputCodePage = 0;

// The console outlives the program; it gets back the code page it had.
void RestoreOutputCodePage()
{
    SetConsoleOutputCP(previousOutputCodePage);
}

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
    previousOutputCodePage = GetConsoleOutputCP();
    if (previousOutputCodePage != 0 && previousOutputCodePage != CP_UTF8 && SetConsoleOutputCP(CP_UTF8)) {
        std::atexit(RestoreOutputCodePage);
    }
    CliStreams streams;
    streams.writeOut = [](std::string_view text) { WriteAllTo(STD_OUTPUT_HANDLE, text); };
    streams.writeError = [](std::string_view text) { WriteAllTo(STD_ERROR_HANDLE, text); };
    streams.outIsTerminal = IsConsole(GetStdHandle(STD_OUTPUT_HANDLE));
    streams.errorIsTerminal = IsConsole(GetStdHandle(STD_ERROR_HANDLE));
    return streams;
}

} // namespace tlm
