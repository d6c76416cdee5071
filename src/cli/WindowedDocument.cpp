#include "cli/WindowedDocument.h"

#include <algorithm>

namespace tlm {

WindowedDocument::WindowedDocument(const FileViewModel& source)
    : file(source)
{
}

bool WindowedDocument::IsOpen() const
{
    return file.IsOpen();
}

std::uint64_t WindowedDocument::GetSize() const
{
    return file.GetSize();
}

std::u16string WindowedDocument::GetPath() const
{
    return file.GetPath();
}

ByteBlock WindowedDocument::Read(std::uint64_t offset, std::uint64_t count) const
{
    const std::uint64_t size = file.GetSize();
    if (offset >= size) {
        return ByteBlock{offset, {}};
    }
    count = std::min(count, size - offset);
    const std::uint64_t windowEnd = windowStart + window.size();
    if (offset >= windowStart && offset + count <= windowEnd) {
        const auto begin = window.begin() + static_cast<std::ptrdiff_t>(offset - windowStart);
        return ByteBlock{offset, std::vector<std::uint8_t>(begin, begin + static_cast<std::ptrdiff_t>(count))};
    }
    return file.Read(offset, count);
}

bool WindowedDocument::Load(std::uint64_t first, std::uint64_t count)
{
    const std::uint64_t size = file.GetSize();
    first = std::min(first, size);
    count = std::min(count, size - first);
    windowStart = first;
    window.resize(static_cast<std::size_t>(count));
    std::uint64_t done = 0;
    while (done < count) {
        // ReadInto takes at most 32 bits of count at a time; windows are far smaller anyway.
        const std::uint32_t got = file.ReadInto(first + done, count - done, window.data() + done);
        if (got == 0) {
            window.resize(static_cast<std::size_t>(done));
            return false;
        }
        done += got;
    }
    return true;
}

} // namespace tlm
