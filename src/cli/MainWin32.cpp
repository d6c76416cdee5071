#include "cli/CliConsole.h"
#include "cli/RunCli.h"
#include "encoding/Utf8.h"

#include <string_view>

// wmain: the arguments arrive as UTF-16 whatever the console's code page, so names and query text in
// any script reach the program whole.
int wmain(int argc, wchar_t** argv)
{
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    std::vector<std::string> arguments;
    for (int index = 1; index < argc; ++index) {
        const std::u16string_view word(reinterpret_cast<const char16_t*>(argv[index]));
        arguments.push_back(tlm::Utf16ToUtf8(word));
    }
    tlm::CliStreams streams = tlm::ProcessStreams();
    return tlm::RunCli(arguments, streams);
}
