#include "cli/CliConsole.h"
#include "cli/RunCli.h"

int main(int argc, char** argv)
{
    std::vector<std::string> arguments;
    for (int index = 1; index < argc; ++index) {
        arguments.emplace_back(argv[index]);
    }
    tlm::CliStreams streams = tlm::ProcessStreams();
    return tlm::RunCli(arguments, streams);
}
