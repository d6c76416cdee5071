#include "document/FileViewModel.h"

#include <algorithm>
#include <utility>

namespace tlm {

FileViewModel::~FileViewModel()
{
    Close();
}

FileViewModel::FileViewModel(FileViewModel&& other) noexcept
    : handle(std::exchange(other.handle, InvalidFileHandle))
    , size(std::exchange(other.size, 0))
    , path(std::exchange(other.path, {}))
{
}

FileViewModel& FileViewModel::operator=(FileViewModel&& other) noexcept
{
    if (this != &other) {
        Close();
        handle = std::exchange(other.handle, InvalidFileHandle);
        size = std::exchange(other.size, 0);
        path = std::exchange(other.path, {});
    }
    return *this;
}

bool FileViewModel::IsOpen() const
{
    return IsValidFileHandle(handle);
}

std::uint64_t FileViewModel::GetSize() const
{
    return size;
}

std::u16string FileViewModel::GetPath() const
{
    return path;
}

bool FileViewModel::Open(const std::u16string& newPath)
{
    Close();
    handle = OpenFileForReading(newPath);
    if (!IsValidFileHandle(handle)) {
        handle = InvalidFileHandle;
        return false;
    }
    const std::optional<std::uint64_t> length = QueryFileLength(handle);
    if (!length) {
        Close();
        return false;
    }
    size = *length;
    path = newPath;
    return true;
}

void FileViewModel::Close()
{
    if (IsValidFileHandle(handle)) {
        CloseFile(handle);
    }
    handle = InvalidFileHandle;
    size = 0;
    path.clear();
}

std::uint32_t FileViewModel::ReadInto(std::uint64_t offset, std::uint64_t count, std::uint8_t* destination) const
{
    if (!IsOpen() || count == 0 || offset >= size) {
        return 0;
    }
    // One read takes a 32-bit count; only its low half reaches the system.
    const auto request = static_cast<std::uint32_t>(std::min(count, size - offset));
    return ReadFileAt(handle, offset, destination, request).value_or(0);
}

ByteBlock FileViewModel::Read(std::uint64_t offset, std::uint64_t count) const
{
    ByteBlock block;
    block.offset = offset;
    if (!IsOpen() || count == 0 || offset >= size) {
        return block;
    }
    block.bytes.resize(static_cast<std::uint32_t>(std::min(count, size - offset)));
    block.bytes.resize(ReadInto(offset, count, block.bytes.data()));
    return block;
}

} // namespace tlm
