#pragma once

#include <cstdint>

namespace tlm {

// A test hook in the platform file layer: every operation is counted, and a test can make a chosen one
// fail with a chosen error, to reach failure paths the operating system will not produce on demand.
// The program itself never arms it.
enum class FileOperation : std::uint32_t {
    OpenForReading,
    QueryLength,
    Read,
    OpenForWriting,
    CreateNew,
    Write,
    SetEnd,
    Flush,
    Replace,
    MoveOver,
    Remove,
    CurrentFolder,
};

inline constexpr std::uint32_t FileOperationCount = 12;

// From the next call on, lets `skipCalls` calls of `operation` through and then fails `failCalls`.
void InjectFileFault(FileOperation operation, std::uint32_t error, std::uint32_t skipCalls = 0,
    std::uint32_t failCalls = UINT32_MAX);
void ClearFileFaults();
std::uint64_t FileOperationCalls(FileOperation operation);

// Called by the platform layer before each operation: the error to fail with, or zero to go ahead.
std::uint32_t TakeFileFault(FileOperation operation);

} // namespace tlm
