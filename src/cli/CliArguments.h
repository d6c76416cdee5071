#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// One option a command accepts: how many values follow it, and whether it may be given again.
struct CliOptionRule {
    std::string_view name; // with its dashes: "--offset"
    int valueCount = 0;
    bool repeatable = false;
};

struct CliOption {
    std::string name;
    std::vector<std::string> values;
};

// A command's words sorted into plain arguments and options, options kept in the order given.
struct CliArguments {
    std::vector<std::string> positionals;
    std::vector<CliOption> options;

    bool Has(std::string_view name) const;
    // The first value of the option, or nothing when it was not given.
    std::optional<std::string> Value(std::string_view name) const;
};

// Splits the words after the command name. "--name=value" is the same as "--name value". A word that
// follows an option as its value is taken as it stands, dashes and all. On failure `error` says which
// word was wrong.
std::optional<CliArguments> ParseCliArguments(std::span<const std::string> words, std::span<const CliOptionRule> rules,
    std::string& error);

} // namespace tlm
