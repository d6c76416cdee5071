#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tlm {

// A path object for a path text; nothing when the text cannot name a file here (a lone surrogate on a
// system with UTF-8 file names).
std::optional<std::filesystem::path> PathFromText(std::u16string_view text);

// The whole content of a file; nothing when it cannot be opened or read.
std::optional<std::string> ReadWholeFile(const std::u16string& path);

// Name of a temporary file beside `target` for a replacing write: the target's name, a dot, sixteen
// hexadecimal digits mixed from the attempt, the clock and random bits, and ".tmp".
std::u16string TemporarySiblingPath(const std::u16string& target, std::uint32_t attempt);

// Writes `bytes` to a fresh temporary file beside `path`, flushes it to the disk and then puts it in
// the place of `path` in one step, so that a crash leaves either the old file or the new one, never a
// torn one. On failure the temporary file is removed and `path` is untouched.
bool ReplaceWholeFile(const std::u16string& path, std::string_view bytes);

} // namespace tlm
