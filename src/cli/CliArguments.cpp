#include "cli/CliArguments.h"

namespace tlm {

namespace {

const CliOptionRule* FindRule(std::span<const CliOptionRule> rules, std::string_view name)
{
    for (const CliOptionRule& rule : rules) {
        if (rule.name == name) {
            return &rule;
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

std::optional<CliArguments> ParseCliArguments(std::span<const std::string> words, std::span<const CliOptionRule> rules,
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
        const CliOptionRule* rule = FindRule(rules, name);
        if (rule == nullptr) {
            error = "unknown option " + name;
            return std::nullopt;
        }
        if (!rule->repeatable && arguments.Has(name)) {
            error = name + " is given more than once";
            return std::nullopt;
        }
        CliOption option{name, {}};
        if (equals != std::string::npos) {
            if (rule->valueCount != 1) {
                error = name + " does not take a value after \"=\"";
                return std::nullopt;
            }
            option.values.push_back(word.substr(equals + 1));
        } else {
            for (int taken = 0; taken < rule->valueCount; ++taken) {
                if (index + 1 >= words.size()) {
                    error = name + (rule->valueCount == 1 ? " needs a value" : " needs " + std::to_string(rule->valueCount) + " values");
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
