#include "app/AcceleratorTable.h"

namespace tlm {

namespace {

// Virtual keys of letters are their upper-case ASCII codes.
constexpr std::array<AcceleratorKey, 3> Keys{{
    {'R', ToNumber(CommandId::EditReadOnly)},
    {'F', ToNumber(CommandId::ViewFind)},
    {'G', ToNumber(CommandId::ViewGoTo)},
}};

} // namespace

std::span<const AcceleratorKey> AcceleratorKeys()
{
    return Keys;
}

} // namespace tlm
