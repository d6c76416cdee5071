#include "document/FileFaults.h"

#include <array>
#include <atomic>

namespace tlm {

namespace {

struct Fault {
    std::atomic<std::uint32_t> error{0};
    std::atomic<std::uint32_t> skipCalls{0};
    std::atomic<std::uint32_t> failCalls{0};
    std::atomic<std::uint64_t> calls{0};
};

std::array<Fault, FileOperationCount> faults;

Fault& FaultOf(FileOperation operation)
{
    return faults[static_cast<std::uint32_t>(operation)];
}

} // namespace

void InjectFileFault(FileOperation operation, std::uint32_t error, std::uint32_t skipCalls, std::uint32_t failCalls)
{
    Fault& fault = FaultOf(operation);
    fault.skipCalls = skipCalls;
    fault.failCalls = failCalls;
    fault.error = error;
}

void ClearFileFaults()
{
    for (Fault& fault : faults) {
        fault.error = 0;
        fault.skipCalls = 0;
        fault.failCalls = 0;
    }
}

std::uint64_t FileOperationCalls(FileOperation operation)
{
    return FaultOf(operation).calls.load();
}

std::uint32_t TakeFileFault(FileOperation operation)
{
    Fault& fault = FaultOf(operation);
    ++fault.calls;
    if (fault.error == 0 || fault.failCalls == 0) {
        return 0;
    }
    if (fault.skipCalls > 0) {
        --fault.skipCalls;
        return 0;
    }
    if (fault.failCalls != UINT32_MAX) {
        --fault.failCalls;
    }
    return fault.error;
}

} // namespace tlm
