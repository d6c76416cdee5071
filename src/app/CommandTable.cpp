#include "app/CommandTable.h"

#include <utility>

namespace tlm {

void CommandTable::Register(std::uint32_t id, Command command)
{
    commands[id] = std::move(command);
}

const Command* CommandTable::Find(std::uint32_t id) const
{
    const auto found = commands.find(id);
    return found == commands.end() ? nullptr : &found->second;
}

bool CommandTable::IsEnabled(std::uint32_t id) const
{
    const Command* command = Find(id);
    if (command == nullptr) {
        return false;
    }
    return !command->canExecute || command->canExecute();
}

bool CommandTable::Execute(std::uint32_t id) const
{
    const Command* command = Find(id);
    if (command == nullptr || !command->execute) {
        return false;
    }
    if (command->canExecute && !command->canExecute()) {
        return false;
    }
    // A copy, so that an action that registers commands cannot pull the function from under itself.
    const std::function<void()> action = command->execute;
    action();
    return true;
}

} // namespace tlm
