#include "cli/CliConsole.h"

#include <cerrno>
#include <unistd.h>

namespace tlm {

namespace {

void WriteAllTo(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace

CliStreams ProcessStreams()
{
    CliStreams streams;
    streams.writeOut = [](std::string_view text) { WriteAllTo(STDOUT_FILENO, text); };
    streams.writeError = [](std::string_view text) { WriteAllTo(STDERR_FILENO, text); };
    streams.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
    streams.errorIsTerminal = ::isatty(STDERR_FILENO) == 1;
    return streams;
}

} // namespace tlm
