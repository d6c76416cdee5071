#pragma once

#include "document/PlatformFile.h"

#include <cstdint>

namespace tlm {

// Writes all `count` bytes at `offset`, at most 0xFFFFFFFF a call; false when a write fails or falls
// short. Nothing to write succeeds at once.
bool WriteAll(FileHandle handle, std::uint64_t offset, const std::uint8_t* bytes, std::uint64_t count);

} // namespace tlm
