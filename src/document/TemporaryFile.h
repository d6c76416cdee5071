#pragma once

#include "document/PlatformFile.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tlm {

// A new file beside a save target; its owner closes the handle.
struct TemporaryFile {
    std::u16string path;
    FileHandle handle = InvalidFileHandle;
};

// "Tolmo-" + a 64-bit number in sixteen upper-case hexadecimal digits + "-" + `attempt` in at least two
// + ".tmp". The number mixes random-device bits, the clock, the process id and the attempt.
std::u16string MakeTemporaryFileName(std::uint32_t attempt);

// Creates a fresh file with such a name in the folder of `target` (the current folder for a bare name),
// trying up to 64 names. On failure the system's last error tells why.
std::optional<TemporaryFile> CreateUniqueTemporaryFile(const std::u16string& target);

} // namespace tlm
