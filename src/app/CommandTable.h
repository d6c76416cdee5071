#pragma once

#include "app/CommandId.h"

#include <cstdint>
#include <map>

namespace tlm {

// Every user action by number. Entering a number again replaces its name and both functions; the
// table never shrinks.
class CommandTable {
public:
    void Register(std::uint32_t id, Command command);

    // False for a number not in the table; true when the command has no rule; else its rule.
    bool IsEnabled(std::uint32_t id) const;
    // Runs the action. False for a number not in the table, a command its rule refuses, and a command
    // without an action.
    bool Execute(std::uint32_t id) const;

    const Command* Find(std::uint32_t id) const;
    std::size_t Size() const { return commands.size(); }

private:
    std::map<std::uint32_t, Command> commands;
};

} // namespace tlm
