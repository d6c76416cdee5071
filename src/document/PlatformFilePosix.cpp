#include "document/PlatformFile.h"

#include "document/FileFaults.h"
#include "encoding/Utf8.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tlm {

namespace {

std::string NativePath(const std::u16string& path)
{
    return Utf16ToUtf8(path);
}

// Counts the call and fails it when a test asked for that.
bool Injected(FileOperation operation)
{
    if (const std::uint32_t error = TakeFileFault(operation); error != 0) {
        errno = static_cast<int>(error);
        return true;
    }
    return false;
}

// Keeps descriptors 0 to 2 for the standard streams, so that zero never stands for an open file.
FileHandle AboveStandardStreams(int descriptor)
{
    if (descriptor < 0) {
        return InvalidFileHandle;
    }
    if (descriptor > 2) {
        return descriptor;
    }
    const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, 3);
    const int error = errno;
    close(descriptor);
    errno = error;
    return moved < 0 ? InvalidFileHandle : moved;
}

int Descriptor(FileHandle handle)
{
    return static_cast<int>(handle);
}

// Opens only regular files, and never waits on a pipe or device while doing so.
FileHandle OpenRegularFile(const std::u16string& path, int access)
{
    const int descriptor = open(NativePath(path).c_str(), access | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) {
        return InvalidFileHandle;
    }
    struct stat status {};
    const bool known = fstat(descriptor, &status) == 0;
    if (!known || !S_ISREG(status.st_mode)) {
        const int error = !known ? errno : S_ISDIR(status.st_mode) ? EISDIR : EACCES;
        close(descriptor);
        errno = error;
        return InvalidFileHandle;
    }
    fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    return AboveStandardStreams(descriptor);
}

std::u16string FolderOf(const std::u16string& path)
{
    const std::size_t slash = path.find_last_of(u'/');
    if (slash == std::u16string::npos) {
        return u".";
    }
    return slash == 0 ? u"/" : path.substr(0, slash);
}

// Makes a rename durable. Best effort: the rename has already happened when this runs.
void SyncFolderOf(const std::u16string& path)
{
    const int descriptor = open(NativePath(FolderOf(path)).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

} // namespace

FileHandle OpenFileForReading(const std::u16string& path)
{
    if (Injected(FileOperation::OpenForReading)) {
        return InvalidFileHandle;
    }
    return OpenRegularFile(path, O_RDONLY);
}

FileHandle OpenFileForWriting(const std::u16string& path)
{
    if (Injected(FileOperation::OpenForWriting)) {
        return InvalidFileHandle;
    }
    return OpenRegularFile(path, O_WRONLY);
}

FileHandle CreateNewFile(const std::u16string& path)
{
    if (Injected(FileOperation::CreateNew)) {
        return InvalidFileHandle;
    }
    return AboveStandardStreams(open(NativePath(path).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
}

void CloseFile(FileHandle handle)
{
    if (IsValidFileHandle(handle)) {
        close(Descriptor(handle));
    }
}

std::optional<std::uint64_t> QueryFileLength(FileHandle handle)
{
    if (Injected(FileOperation::QueryLength)) {
        return std::nullopt;
    }
    struct stat status {};
    if (fstat(Descriptor(handle), &status) != 0 || status.st_size < 0) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(status.st_size);
}

std::optional<std::uint32_t> ReadFileAt(FileHandle handle, std::uint64_t offset, void* buffer, std::uint32_t count)
{
    if (Injected(FileOperation::Read)) {
        return std::nullopt;
    }
    if (offset > static_cast<std::uint64_t>(INT64_MAX)) {
        errno = EINVAL;
        return std::nullopt;
    }
    ssize_t result = 0;
    do {
        result = pread(Descriptor(handle), buffer, count, static_cast<off_t>(offset));
    } while (result < 0 && errno == EINTR);
    if (result < 0) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(result);
}

std::optional<std::uint32_t> WriteFileAt(FileHandle handle, std::uint64_t offset, const void* bytes, std::uint32_t count)
{
    if (Injected(FileOperation::Write)) {
        return std::nullopt;
    }
    if (offset > static_cast<std::uint64_t>(INT64_MAX)) {
        errno = EINVAL;
        return std::nullopt;
    }
    // A regular file takes the whole count unless the disk is full; the loop covers the kernel's cap
    // on one call and interruptions.
    const auto* from = static_cast<const std::uint8_t*>(bytes);
    std::uint32_t written = 0;
    while (written < count) {
        const ssize_t result = pwrite(Descriptor(handle), from + written, count - written,
            static_cast<off_t>(offset + written));
        if (result < 0 && errno == EINTR) {
            continue;
        }
        if (result < 0) {
            return std::nullopt;
        }
        if (result == 0) {
            break;
        }
        written += static_cast<std::uint32_t>(result);
    }
    return written;
}

bool SetFileEnd(FileHandle handle, std::uint64_t length)
{
    if (Injected(FileOperation::SetEnd)) {
        return false;
    }
    if (length > static_cast<std::uint64_t>(INT64_MAX)) {
        errno = EINVAL;
        return false;
    }
    return ftruncate(Descriptor(handle), static_cast<off_t>(length)) == 0;
}

bool FlushFile(FileHandle handle)
{
    if (Injected(FileOperation::Flush)) {
        return false;
    }
    return fsync(Descriptor(handle)) == 0;
}

bool ReplaceFileWith(const std::u16string& target, const std::u16string& replacement)
{
    if (Injected(FileOperation::Replace)) {
        return false;
    }
    // Like the Windows replace, the target must exist, and its permission bits carry over.
    struct stat status {};
    if (stat(NativePath(target).c_str(), &status) != 0) {
        return false;
    }
    if (chmod(NativePath(replacement).c_str(), status.st_mode & 07777) != 0) {
        return false;
    }
    if (rename(NativePath(replacement).c_str(), NativePath(target).c_str()) != 0) {
        return false;
    }
    SyncFolderOf(target);
    return true;
}

bool MoveFileOver(const std::u16string& source, const std::u16string& target)
{
    if (Injected(FileOperation::MoveOver)) {
        return false;
    }
    if (rename(NativePath(source).c_str(), NativePath(target).c_str()) != 0) {
        return false;
    }
    SyncFolderOf(target);
    return true;
}

bool RemoveFile(const std::u16string& path)
{
    if (Injected(FileOperation::Remove)) {
        return false;
    }
    return unlink(NativePath(path).c_str()) == 0;
}

std::optional<std::u16string> CurrentFolder()
{
    if (Injected(FileOperation::CurrentFolder)) {
        return std::nullopt;
    }
    std::vector<char> buffer(4096);
    while (getcwd(buffer.data(), buffer.size()) == nullptr) {
        if (errno != ERANGE || buffer.size() > (1u << 20)) {
            return std::nullopt;
        }
        buffer.resize(buffer.size() * 2);
    }
    std::optional<std::u16string> folder = Utf8ToUtf16(std::string_view(buffer.data()));
    if (!folder) {
        errno = EILSEQ;
    }
    return folder;
}

std::uint32_t CurrentProcessId()
{
    return static_cast<std::uint32_t>(getpid());
}

std::uint32_t LastSystemError()
{
    return static_cast<std::uint32_t>(errno);
}

void SetLastSystemError(std::uint32_t code)
{
    errno = static_cast<int>(code);
}

std::u16string FormatSystemError(std::uint32_t code)
{
    if (code == 0) {
        return {};
    }
    const char* text = std::strerror(static_cast<int>(code));
    std::u16string message = Utf8ToUtf16(std::string_view(text ? text : "")).value_or(std::u16string());
    while (!message.empty() && (message.back() == u'\r' || message.back() == u'\n' || message.back() == u' ')) {
        message.pop_back();
    }
    if (message.empty()) {
        const std::string number = std::to_string(code);
        message = u"System error: " + std::u16string(number.begin(), number.end());
    }
    return message;
}

bool IsFileExistsError(std::uint32_t code)
{
    return code == static_cast<std::uint32_t>(EEXIST);
}

std::uint32_t FileExistsError()
{
    return static_cast<std::uint32_t>(EEXIST);
}

std::uint32_t PathNotFoundError()
{
    return static_cast<std::uint32_t>(ENOENT);
}

std::uint32_t EndOfFileError()
{
#if defined(ENODATA)
    return static_cast<std::uint32_t>(ENODATA);
#else
    return static_cast<std::uint32_t>(EIO);
#endif
}

} // namespace tlm
