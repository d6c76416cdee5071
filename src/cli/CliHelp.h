#pragma once

#include <optional>
#include <string_view>

namespace tlm {

// The program's overview, for "tolmo-cli --help" and "tolmo-cli" alone.
std::string_view CliOverviewHelp();

// One command's help, for "tolmo-cli COMMAND --help"; nothing for an unknown command.
std::optional<std::string_view> CliCommandHelp(std::string_view command);

} // namespace tlm
