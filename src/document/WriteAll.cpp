#include "document/WriteAll.h"

#include <algorithm>

namespace tlm {

bool WriteAll(FileHandle handle, std::uint64_t offset, const std::uint8_t* bytes, std::uint64_t count)
{
    while (count > 0) {
        const auto request = static_cast<std::uint32_t>(std::min<std::uint64_t>(count, 0xFFFFFFFFu));
        const std::optional<std::uint32_t> written = WriteFileAt(handle, offset, bytes, request);
        if (!written || *written != request) {
            return false;
        }
        offset += request;
        bytes += request;
        count -= request;
    }
    return true;
}

} // namespace tlm
