#include "document/PlatformFile.h"

#include "document/FileFaults.h"

#include <windows.h>

#include <string>
#include <vector>

namespace tlm {

namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

const wchar_t* WidePath(const std::u16string& path)
{
    return reinterpret_cast<const wchar_t*>(path.c_str());
}

HANDLE Native(FileHandle handle)
{
    return reinterpret_cast<HANDLE>(handle);
}

FileHandle FromNative(HANDLE handle)
{
    return reinterpret_cast<FileHandle>(handle);
}

// Counts the call and fails it when a test asked for that.
bool Injected(FileOperation operation)
{
    if (const std::uint32_t error = TakeFileFault(operation); error != 0) {
        SetLastError(error);
        return true;
    }
    return false;
}

bool SeekTo(FileHandle handle, std::uint64_t offset)
{
    LARGE_INTEGER distance{};
    distance.QuadPart = static_cast<LONGLONG>(offset);
    return SetFilePointerEx(Native(handle), distance, nullptr, FILE_BEGIN) != 0;
}

} // namespace

FileHandle OpenFileForReading(const std::u16string& path)
{
    if (Injected(FileOperation::OpenForReading)) {
        return InvalidFileHandle;
    }
    HANDLE file = CreateFileW(WidePath(path), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    // Devices, pipes and consoles have no size to show and may block a read forever: only files on a
    // disk are documents.
    if (file != INVALID_HANDLE_VALUE && GetFileType(file) != FILE_TYPE_DISK) {
        CloseHandle(file);
        SetLastError(ERROR_INVALID_FUNCTION);
        return InvalidFileHandle;
    }
    return FromNative(file);
}

FileHandle OpenFileForWriting(const std::u16string& path)
{
    if (Injected(FileOperation::OpenForWriting)) {
        return InvalidFileHandle;
    }
    return FromNative(CreateFileW(WidePath(path), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
        FILE_ATTRIBUTE_NORMAL, nullptr));
}

FileHandle CreateNewFile(const std::u16string& path)
{
    if (Injected(FileOperation::CreateNew)) {
        return InvalidFileHandle;
    }
    return FromNative(CreateFileW(WidePath(path), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void CloseFile(FileHandle handle)
{
    if (IsValidFileHandle(handle)) {
        CloseHandle(Native(handle));
    }
}

std::optional<std::uint64_t> QueryFileLength(FileHandle handle)
{
    if (Injected(FileOperation::QueryLength)) {
        return std::nullopt;
    }
    LARGE_INTEGER length{};
    if (!GetFileSizeEx(Native(handle), &length) || length.QuadPart < 0) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(length.QuadPart);
}

std::optional<std::uint32_t> ReadFileAt(FileHandle handle, std::uint64_t offset, void* buffer, std::uint32_t count)
{
    if (Injected(FileOperation::Read)) {
        return std::nullopt;
    }
    if (!SeekTo(handle, offset)) {
        return std::nullopt;
    }
    DWORD read = 0;
    if (!::ReadFile(Native(handle), buffer, count, &read, nullptr)) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(read);
}

std::optional<std::uint32_t> WriteFileAt(FileHandle handle, std::uint64_t offset, const void* bytes, std::uint32_t count)
{
    if (Injected(FileOperation::Write)) {
        return std::nullopt;
    }
    if (!SeekTo(handle, offset)) {
        return std::nullopt;
    }
    DWORD written = 0;
    if (!::WriteFile(Native(handle), bytes, count, &written, nullptr)) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(written);
}

bool SetFileEnd(FileHandle handle, std::uint64_t length)
{
    if (Injected(FileOperation::SetEnd)) {
        return false;
    }
    return SeekTo(handle, length) && SetEndOfFile(Native(handle)) != 0;
}

bool FlushFile(FileHandle handle)
{
    if (Injected(FileOperation::Flush)) {
        return false;
    }
    return FlushFileBuffers(Native(handle)) != 0;
}

bool ReplaceFileWith(const std::u16string& target, const std::u16string& replacement)
{
    if (Injected(FileOperation::Replace)) {
        return false;
    }
    return ::ReplaceFileW(WidePath(target), WidePath(replacement), nullptr, REPLACEFILE_WRITE_THROUGH, nullptr, nullptr) != 0;
}

bool MoveFileOver(const std::u16string& source, const std::u16string& target)
{
    if (Injected(FileOperation::MoveOver)) {
        return false;
    }
    return ::MoveFileExW(WidePath(source), WidePath(target),
               MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH)
        != 0;
}

bool RemoveFile(const std::u16string& path)
{
    if (Injected(FileOperation::Remove)) {
        return false;
    }
    return ::DeleteFileW(WidePath(path)) != 0;
}

std::optional<std::u16string> CurrentFolder()
{
    if (Injected(FileOperation::CurrentFolder)) {
        return std::nullopt;
    }
    const DWORD needed = ::GetCurrentDirectoryW(0, nullptr);
    if (needed == 0) {
        return std::nullopt;
    }
    std::vector<wchar_t> buffer(needed);
    const DWORD length = ::GetCurrentDirectoryW(needed, buffer.data());
    if (length == 0 || length >= needed) {
        return std::nullopt;
    }
    return std::u16string(reinterpret_cast<const char16_t*>(buffer.data()), length);
}

std::uint32_t CurrentProcessId()
{
    return static_cast<std::uint32_t>(::GetCurrentProcessId());
}

std::uint32_t LastSystemError()
{
    return static_cast<std::uint32_t>(::GetLastError());
}

void SetLastSystemError(std::uint32_t code)
{
    ::SetLastError(code);
}

std::u16string FormatWin32Error(std::uint32_t code)
{
    if (code == 0) {
        return {};
    }
    wchar_t* buffer = nullptr;
    const DWORD length = ::FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
        reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::u16string message;
    if (length != 0 && buffer != nullptr) {
        message.assign(reinterpret_cast<const char16_t*>(buffer), length);
    }
    if (buffer != nullptr) {
        ::LocalFree(buffer);
    }
    while (!message.empty() && (message.back() == u'\r' || message.back() == u'\n' || message.back() == u' ')) {
        message.pop_back();
    }
    if (message.empty()) {
        const std::string number = std::to_string(code);
        message = u"Win32 error: " + std::u16string(number.begin(), number.end());
    }
    return message;
}

std::u16string FormatSystemError(std::uint32_t code)
{
    return FormatWin32Error(code);
}

bool IsFileExistsError(std::uint32_t code)
{
    return code == ERROR_FILE_EXISTS || code == ERROR_ALREADY_EXISTS;
}

std::uint32_t FileExistsError()
{
    return ERROR_FILE_EXISTS;
}

std::uint32_t PathNotFoundError()
{
    return ERROR_PATH_NOT_FOUND;
}

std::uint32_t EndOfFileError()
{
    return ERROR_HANDLE_EOF;
}

} // namespace tlm
