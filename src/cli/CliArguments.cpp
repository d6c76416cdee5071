#include "cli/CliArguments.h"

namespace tlm {

namespace {

const CliOptionSpec* FindSpec(std::span<const CliOptionSpec> specs, std::string_view name)
{
    for (const CliOptionSpec& spec : specs) {
        if (spec.name == name) {
            return &spec;
        }
    }
    return nullptr;
}

bool LooksLikeOption(std::string_view word)
{
    return word.size() >= 2 && word[0] == '-' && word != "-";
}

} // namespace

bool CliArguments::Has(std::string_view name) const
{
    for (const CliOption& option : options) {
        if (option.name == name) {
            return true;
        }
    }
    return false;
}

std::optional<std::string> CliArguments::Value(std::string_view name) const
{
    for (const CliOption& option : options) {
        if (option.name == name && !option.values.empty()) {
            return option.values.front();
        }
    }
    return std::nullopt;
}

std::optional<CliArguments> ParseCliArguments(std::span<const std::string> words, std::span<const CliOptionSpec> specs,
    std::string& error)
{
    CliArguments arguments;
    bool optionsEnded = false;
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::string& word = words[index];
        if (optionsEnded || !LooksLikeOption(word)) {
            arguments.positionals.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const CliOptionSpec* spec = FindSpec(specs, name);
        if (spec == nullptr) {
            error = "unknown option " + name;
            return std::nullopt;
        }
        if (!spec->repeatable && arguments.Has(name)) {
            error = name + " is given more than once";
            return std::nullopt;
        }
        CliOption option{name, {}};
        if (equals != std::string::npos) {
            if (spec->valueCount != 1) {
                error = name + " does not take a value after \"=\"";
                return std::nullopt;
            }
            option.values.push_back(word.substr(equals + 1));
        } else {
            for (int taken = 0; taken < spec->valueCount; ++taken) {
                if (index + 1 >= words.size()) {
                    error = name + (spec->valueCount == 1 ? " needs a value" : " needs " + std::to_string(spec->valueCount) + " values");
                    return std::nullopt;
                }
                option.values.push_back(words[++index]);
            }
        }
        arguments.options.push_back(std::move(option));
    }
    return arguments;
}

} // namespace tlm
