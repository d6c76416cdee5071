#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tlm {

// The handful of file services the document core needs, implemented once per platform
// (PlatformFileWin32.cpp, PlatformFilePosix.cpp). Paths are UTF-16; error codes are the platform's own
// (GetLastError values on Windows, errno values elsewhere).

// A platform file handle as a plain number: a HANDLE on Windows, a descriptor elsewhere.
using FileHandle = std::intptr_t;
inline constexpr FileHandle InvalidFileHandle = -1;

// Zero never names a file the program opened, so it counts as invalid too.
inline bool IsValidFileHandle(FileHandle handle)
{
    return handle != InvalidFileHandle && handle != 0;
}

#if defined(_WIN32)
inline constexpr char16_t PreferredPathSeparator = u'\\';
#else
inline constexpr char16_t PreferredPathSeparator = u'/';
#endif

// An existing file for reading only; others may read, write, rename and delete it meanwhile.
FileHandle OpenFileForReading(const std::u16string& path);
// An existing file for writing; others may only read it meanwhile.
FileHandle OpenFileForWriting(const std::u16string& path);
// A new file for writing; fails when the name exists (the error then satisfies IsFileExistsError).
FileHandle CreateNewFile(const std::u16string& path);
void CloseFile(FileHandle handle);

std::optional<std::uint64_t> QueryFileLength(FileHandle handle);
// One read of up to `count` bytes at an absolute offset; the number read, fewer at the end of the file.
std::optional<std::uint32_t> ReadFileAt(FileHandle handle, std::uint64_t offset, void* buffer, std::uint32_t count);
// Writes `count` bytes at an absolute offset; the number written.
std::optional<std::uint32_t> WriteFileAt(FileHandle handle, std::uint64_t offset, const void* bytes, std::uint32_t count);
// Makes `length` the end of the file, cutting or extending it.
bool SetFileEnd(FileHandle handle, std::uint64_t length);
bool FlushFile(FileHandle handle);

// Puts `replacement` in the place of the existing `target`, in one step and through to the disk.
bool ReplaceFileWith(const std::u16string& target, const std::u16string& replacement);
// Renames `source` to `target`, replacing it; may copy when a rename is impossible.
bool MoveFileOver(const std::u16string& source, const std::u16string& target);
bool RemoveFile(const std::u16string& path);

std::optional<std::u16string> CurrentFolder();
std::uint32_t CurrentProcessId();

std::uint32_t LastSystemError();
void SetLastSystemError(std::uint32_t code);
// The system's text for an error code without trailing line breaks; empty for zero.
std::u16string FormatSystemError(std::uint32_t code);
bool IsFileExistsError(std::uint32_t code);
std::uint32_t FileExistsError();
std::uint32_t PathNotFoundError();
// What a read that came back short without failing is reported as.
std::uint32_t EndOfFileError();

#if defined(_WIN32)
std::u16string FormatWin32Error(std::uint32_t code);
#endif

} // namespace tlm
