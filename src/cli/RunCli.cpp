#include "cli/RunCli.h"

#include "cli/CliCommon.h"
#include "cli/CliHelp.h"
#include "cli/DumpCommand.h"
#include "cli/FindCommand.h"
#include "cli/InspectCommand.h"
#include "cli/PatchCommand.h"
#include "cli/StructCommand.h"

#include <algorithm>
#include <span>

namespace tlm {

namespace {

bool AsksForHelp(std::span<const std::string> words)
{
    // Any "--help" before a "--" asks for help, even where an option would have taken it as its value:
    // help is never what a user is surprised by.
    for (const std::string& word : words) {
        if (word == "--") {
            return false;
        }
        if (word == "--help" || word == "-h") {
            return true;
        }
    }
    return false;
}

void WriteOut(CliStreams& streams, std::string_view text)
{
    if (streams.writeOut) {
        streams.writeOut(text);
    }
}

} // namespace

int RunCli(const std::vector<std::string>& arguments, CliStreams& streams)
{
    if (arguments.empty()) {
        WriteOut(streams, CliOverviewHelp());
        return FailCli(streams, "", "a command is missing");
    }
    const std::string& command = arguments.front();
    if (command == "--help" || command == "-h" || command == "help") {
        WriteOut(streams, CliOverviewHelp());
        return CliSuccess;
    }
    const std::optional<std::string_view> help = CliCommandHelp(command);
    if (!help) {
        return FailCli(streams, "", "unknown command \"" + command + "\" (dump, find, inspect, struct or patch)");
    }
    const std::span<const std::string> words(arguments.begin() + 1, arguments.end());
    if (AsksForHelp(words)) {
        WriteOut(streams, *help);
        return CliSuccess;
    }
    if (command == "dump") {
        return RunDumpCommand(words, streams);
    }
    if (command == "find") {
        return RunFindCommand(words, streams);
    }
    if (command == "inspect") {
        return RunInspectCommand(words, streams);
    }
    if (command == "struct") {
        return RunStructCommand(words, streams);
    }
    return RunPatchCommand(words, streams);
}

} // namespace tlm
