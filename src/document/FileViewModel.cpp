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

ByteBlock FileViewModel::Read(std::uint64_t offset, std::uint64_t count) const
{
    ByteBlock block;
    block.offset = offset;
    if (!IsOpen() || count == 0 || offset >= size) {
        return block;
    }
    count = std::min(count, size - offset);
    // One read takes a 32-bit count; only its low half reaches the system, so only that much is sized.
    const auto request = static_cast<std::uint32_t>(count);
    block.bytes.resize(request);
    const std::optional<std::uint32_t> read = ReadFileAt(handle, offset, block.bytes.data(), request);
    if (!read) {
        block.bytes.clear();
        return block;
    }
    block.bytes.resize(*read);
    return block;
}

} // namespace tlm
